// SPDX-License-Identifier: MIT
/*
 * A stand-in for libandroid-properties.so.1: a few fixed properties behind property_get, among them
 * some that the real library would not have but whose callers must survive.
 */

#include <stddef.h>
#include <string.h>

#define BUFFER_SIZE 96 /* what callers of property_get promise */
#define LENGTH_OF_TEXT (-2)
#define TEN "0123456789"

int property_get(const char *name, char *value, const char *default_value);
int missing_function(void);

static const struct property {
    const char *name;
    const char *text;
    int returned;
} properties[] = {
    {"ro.product.model", "Cradle One", LENGTH_OF_TEXT},
    {"ro.build.id", " spaced; text ", LENGTH_OF_TEXT},
    {"ro.empty", "", LENGTH_OF_TEXT},
    {"ro.short", "1", LENGTH_OF_TEXT},
    {"ro.dollar", "${HOME}", LENGTH_OF_TEXT},
    {"ro.longest", TEN TEN TEN TEN TEN TEN TEN TEN TEN "01234", LENGTH_OF_TEXT},
    {"ro.negative", "text", -1},
    {"ro.zero", "text", 0},
    {"ro.long.count", "text", BUFFER_SIZE - 1},
};

/* Binding everything at once would fail for want of this function. */
int never_called(void);
int never_called(void)
{
    return missing_function();
}

int property_get(const char *name, char *value, const char *default_value)
{
    const struct property *found = NULL;
    for (size_t i = 0; i < sizeof properties / sizeof properties[0]; i++) {
        if (strcmp(properties[i].name, name) == 0)
            found = &properties[i];
    }
    const char *text = found ? found->text : default_value ? default_value : "no default";
    memset(value, 'x', BUFFER_SIZE);
    strcpy(value, text);
    return found && found->returned != LENGTH_OF_TEXT ? found->returned : (int)strlen(text);
}

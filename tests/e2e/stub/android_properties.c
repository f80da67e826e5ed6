/*
 * A stand-in for libandroid-properties.so.1: a few fixed properties behind property_get.
 */

#include <string.h>

#define VALUE_LENGTH 91 /* of the longest value that Android allows */

int property_get(const char *name, char *value, const char *default_value);

static const char *const properties[][2] = {
    {"ro.product.model", "Cradle One"},
    {"ro.build.id", " spaced; text "},
    {"ro.empty", ""},
    {"ro.dollar", "${HOME}"},
    {"ro.longest",
     "0123456789012345678901234567890123456789012345678901234567890123456789012345678901234567890"},
};

int property_get(const char *name, char *value, const char *default_value)
{
    const char *text = default_value ? default_value : "";
    for (size_t i = 0; i < sizeof properties / sizeof properties[0]; i++) {
        if (strcmp(properties[i][0], name) == 0)
            text = properties[i][1];
    }
    size_t length = strlen(text);
    if (length > VALUE_LENGTH)
        length = VALUE_LENGTH;
    memcpy(value, text, length);
    value[length] = '\0';
    return (int)length;
}

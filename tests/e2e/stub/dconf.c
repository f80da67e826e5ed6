// SPDX-License-Identifier: MIT
/*
 * A stand-in for libdconf.so.1 and the GLib below it: every key is the string "from the stub". What
 * the variable DCONF_STUB names is missing: the "client", the "type" of the value or its "text".
 */

#include <stddef.h>
#include <stdint.h>
#include <stdlib.h>
#include <string.h>

static char object[1];

static int has(const char *part)
{
    const char *missing = getenv("DCONF_STUB");
    return missing == NULL || strcmp(missing, part) != 0;
}

void *dconf_client_new(void);
void *dconf_client_new(void)
{
    return has("client") ? object : NULL;
}

void *dconf_client_read(void *client, const char *key);
void *dconf_client_read(void *client, const char *key)
{
    return client != NULL && key != NULL ? object : NULL;
}

const char *g_variant_get_type_string(void *value);
const char *g_variant_get_type_string(void *value)
{
    return value == object && has("type") ? "s" : NULL;
}

const char *g_variant_get_string(void *value, size_t *length);
const char *g_variant_get_string(void *value, size_t *length)
{
    return value == object && length == NULL && has("text") ? "from the stub" : NULL;
}

void g_object_unref(void *client);
void g_object_unref(void *client)
{
    if (client != object)
        abort();
}

void g_variant_unref(void *value);
void g_variant_unref(void *value)
{
    if (value != object)
        abort();
}

/* Looked for, but never called. */
#define NUMBER(type, name) \
    type name(void);       \
    type name(void)        \
    {                      \
        return 0;          \
    }

NUMBER(int, g_variant_get_boolean)
NUMBER(unsigned char, g_variant_get_byte)
NUMBER(int16_t, g_variant_get_int16)
NUMBER(uint16_t, g_variant_get_uint16)
NUMBER(int32_t, g_variant_get_int32)
NUMBER(uint32_t, g_variant_get_uint32)
NUMBER(int64_t, g_variant_get_int64)
NUMBER(uint64_t, g_variant_get_uint64)
NUMBER(double, g_variant_get_double)

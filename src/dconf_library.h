// SPDX-License-Identifier: MIT
// The functions of the dconf client library and of the GLib below it, bound when first needed.
//
// Opening these libraries takes several times as long as a whole run without them, so only a run
// that reads a "dconf" template does.
#pragma once

#include <dconf.h>

namespace Cradle::Parser {

struct DconfLibrary {
  decltype(dconf_client_new)* clientNew;
  decltype(dconf_client_read)* clientRead;
  decltype(g_object_unref)* objectUnref;
  decltype(g_variant_unref)* variantUnref;
  decltype(g_variant_get_type_string)* typeString;
  decltype(g_variant_get_boolean)* getBoolean;
  decltype(g_variant_get_byte)* getByte;
  decltype(g_variant_get_int16)* getInt16;
  decltype(g_variant_get_uint16)* getUint16;
  decltype(g_variant_get_int32)* getInt32;
  decltype(g_variant_get_uint32)* getUint32;
  decltype(g_variant_get_int64)* getInt64;
  decltype(g_variant_get_uint64)* getUint64;
  decltype(g_variant_get_double)* getDouble;
  decltype(g_variant_get_string)* getString;
};

// The bound functions, or null when the library or any of the functions is missing.
const DconfLibrary* dconfLibrary();

}  // namespace Cradle::Parser

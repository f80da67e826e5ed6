// SPDX-License-Identifier: MIT
#include "dconf_library.h"

#include <optional>

#include "base/shared_library.h"

namespace Cradle::Parser {
namespace {

std::optional<DconfLibrary> bindAll() {
  const SharedLibrary library(kDconfLibrary);
  DconfLibrary dconf{};
  const bool complete = library.bind(dconf.clientNew, "dconf_client_new") &&
                        library.bind(dconf.clientRead, "dconf_client_read") &&
                        library.bind(dconf.objectUnref, "g_object_unref") &&
                        library.bind(dconf.variantUnref, "g_variant_unref") &&
                        library.bind(dconf.typeString, "g_variant_get_type_string") &&
                        library.bind(dconf.getBoolean, "g_variant_get_boolean") &&
                        library.bind(dconf.getByte, "g_variant_get_byte") &&
                        library.bind(dconf.getInt16, "g_variant_get_int16") &&
                        library.bind(dconf.getUint16, "g_variant_get_uint16") &&
                        library.bind(dconf.getInt32, "g_variant_get_int32") &&
                        library.bind(dconf.getUint32, "g_variant_get_uint32") &&
                        library.bind(dconf.getInt64, "g_variant_get_int64") &&
                        library.bind(dconf.getUint64, "g_variant_get_uint64") &&
                        library.bind(dconf.getDouble, "g_variant_get_double") &&
                        library.bind(dconf.getString, "g_variant_get_string");
  return complete ? std::optional(dconf) : std::nullopt;
}

}  // namespace

const DconfLibrary* dconfLibrary() {
  static const std::optional<DconfLibrary> library = bindAll();
  return library ? &*library : nullptr;
}

}  // namespace Cradle::Parser

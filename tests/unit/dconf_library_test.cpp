// SPDX-License-Identifier: MIT
#include "dconf_library.h"

#include <glib-object.h>
#include <gtest/gtest.h>

namespace Cradle::Parser {
namespace {

TEST(DconfLibrary, BindsEveryFunctionByItsName) {
  const DconfLibrary* const library = dconfLibrary();
  ASSERT_NE(library, nullptr);
  EXPECT_NE(library->clientNew, nullptr);
  EXPECT_NE(library->clientRead, nullptr);
  EXPECT_EQ(library->objectUnref, &g_object_unref);
  EXPECT_EQ(library->variantUnref, &g_variant_unref);
  EXPECT_EQ(library->typeString, &g_variant_get_type_string);
  EXPECT_EQ(library->getBoolean, &g_variant_get_boolean);
  EXPECT_EQ(library->getByte, &g_variant_get_byte);
  EXPECT_EQ(library->getInt16, &g_variant_get_int16);
  EXPECT_EQ(library->getUint16, &g_variant_get_uint16);
  EXPECT_EQ(library->getInt32, &g_variant_get_int32);
  EXPECT_EQ(library->getUint32, &g_variant_get_uint32);
  EXPECT_EQ(library->getInt64, &g_variant_get_int64);
  EXPECT_EQ(library->getUint64, &g_variant_get_uint64);
  EXPECT_EQ(library->getDouble, &g_variant_get_double);
  EXPECT_EQ(library->getString, &g_variant_get_string);
}

}  // namespace
}  // namespace Cradle::Parser

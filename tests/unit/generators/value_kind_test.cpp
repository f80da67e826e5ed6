// SPDX-License-Identifier: MIT
#include "generators/value_kind.h"

#include <string>

#include <gtest/gtest.h>

#include "support/log_capture.h"

namespace Cradle::Generators {
namespace {

using Testing::LogCapture;

TEST(ValueKinds, AreInTheOrderOfTheirValues) {
  for (std::size_t i = 0; i < valueKinds().size(); ++i) {
    EXPECT_EQ(valueKinds()[i].kind, static_cast<ValueKind>(i));
    EXPECT_EQ(&valueKindRow(static_cast<ValueKind>(i)), &valueKinds()[i]);
  }
  EXPECT_EQ(valueKinds().back().kind, ValueKind::Lines);
}

TEST(ValueKinds, AreDescribedInSentences) {
  for (const ValueKindRow& row : valueKinds()) {
    EXPECT_TRUE(row.description.ends_with('.')) << row.description;
  }
}

TEST(ValueKinds, KnowWhichOfThemAreLists) {
  std::string lists;
  for (const ValueKindRow& row : valueKinds()) {
    lists += row.isList ? "L" : ".";
  }
  EXPECT_EQ(lists, ".L......LL.....L");
}

struct Text {
  ValueKind kind;
  const char* text;
  bool accepted;
};

constexpr Text kTexts[] = {
    {ValueKind::Text, "", true},
    {ValueKind::Text, "any", true},
    {ValueKind::List, "any", true},
    {ValueKind::Boolean, "true", true},
    {ValueKind::Boolean, "false", true},
    {ValueKind::Boolean, "True", false},
    {ValueKind::Boolean, "1", false},
    {ValueKind::Boolean, "", false},
    {ValueKind::Integer, "-2147483648", true},
    {ValueKind::Integer, "0x1F", true},
    {ValueKind::Integer, " 7", true},
    {ValueKind::Integer, "2147483648", false},
    {ValueKind::Integer, "7 ", false},
    {ValueKind::Integer, "", false},
    {ValueKind::LongInteger, "2147483648", true},
    {ValueKind::LongInteger, "9223372036854775808", false},
    {ValueKind::Real, "1.5e3", true},
    {ValueKind::Real, "1,5", false},
    {ValueKind::Path, "relative", true},
    {ValueKind::DeviceName, "binder", true},
    {ValueKind::DeviceList, "video*", true},
    {ValueKind::MountList, "tmpfs dev/shm tmpfs nosuid 0 0", true},
    {ValueKind::MountList, "tmpfs", false},
    {ValueKind::UserName, "1000", true},
    {ValueKind::Word, "bridge", true},
    {ValueKind::Version, "3.2", true},
    {ValueKind::Version, "196610", true},
    {ValueKind::Version, "3.2.1", false},
    {ValueKind::Version, "-1", false},
    {ValueKind::LocaleName, "pt_BR", true},
    {ValueKind::LocaleName, "pt-BR", true},
    {ValueKind::LocaleName, "pt", false},
    {ValueKind::LogLevel, "warning", true},
    {ValueKind::LogLevel, "V", true},
    {ValueKind::LogLevel, "none", false},
    {ValueKind::LogLevel, "", false},
    {ValueKind::Lines, "a=b", true},
};

TEST(ValueKinds, AcceptWhatIsReadAsItIsMeant) {
  const LogCapture log;
  for (const Text& row : kTexts) {
    EXPECT_EQ(valueKindRow(row.kind).accepts(row.text), row.accepted)
        << static_cast<int>(row.kind) << ": " << row.text;
  }
  EXPECT_EQ(log.text(), "");
}

}  // namespace
}  // namespace Cradle::Generators

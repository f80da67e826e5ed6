// SPDX-License-Identifier: MIT
#include "base/shared_library.h"

#include <gtest/gtest.h>

namespace Cradle {
namespace {

constexpr OptionalLibrary kMathLibrary{.soname = "libm.so.6"};
constexpr OptionalLibrary kMissingLibrary{.soname = "libcradle-no-such-library.so.1"};

// The C library's mathematical functions, which every process of this program can load.
class MathLibrary : public ::testing::Test {
 protected:
  SharedLibrary library_{kMathLibrary};
};

using Cosine = double(double);
using Length = unsigned long(const char*);

TEST_F(MathLibrary, IsOpen) {
  EXPECT_TRUE(library_.isOpen());
}

TEST_F(MathLibrary, HasAFunction) {
  Cosine* const cosine = library_.find<Cosine>("cos");
  ASSERT_NE(cosine, nullptr);
  EXPECT_EQ(cosine(0.0), 1.0);
}

TEST_F(MathLibrary, HasTheFunctionsOfTheLibraryItDependsOn) {
  Length* const length = library_.find<Length>("strlen");
  ASSERT_NE(length, nullptr);
  EXPECT_EQ(length("four"), 4U);
}

TEST_F(MathLibrary, BindsAFunctionToASlot) {
  Cosine* slot = nullptr;
  EXPECT_TRUE(library_.bind(slot, "cos"));
  ASSERT_NE(slot, nullptr);
  EXPECT_EQ(slot(0.0), 1.0);
}

TEST_F(MathLibrary, LendsItsFunctionsForLongerThanItLives) {
  Cosine* const cosine = SharedLibrary(kMathLibrary).find<Cosine>("cos");
  ASSERT_NE(cosine, nullptr);
  EXPECT_EQ(cosine(0.0), 1.0);
}

// Failures

double anyFunction(double number) {
  return number;
}

TEST_F(MathLibrary, HasNoFunctionOfAnUnknownName) {
  EXPECT_EQ(library_.find<Cosine>("cradle_no_such_function"), nullptr);
}

TEST_F(MathLibrary, EmptiesTheSlotOfAnUnknownName) {
  Cosine* slot = anyFunction;
  EXPECT_FALSE(library_.bind(slot, "cradle_no_such_function"));
  EXPECT_EQ(slot, nullptr);
}

TEST(MissingLibrary, IsNotOpenAndHasNoFunction) {
  const SharedLibrary missing(kMissingLibrary);
  EXPECT_FALSE(missing.isOpen());
  EXPECT_EQ(missing.find<Cosine>("cos"), nullptr);
  Cosine* slot = anyFunction;
  EXPECT_FALSE(missing.bind(slot, "cos"));
  EXPECT_EQ(slot, nullptr);
}

}  // namespace
}  // namespace Cradle

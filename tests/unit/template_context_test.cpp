// SPDX-License-Identifier: MIT
#include "template_context.h"

#include <gtest/gtest.h>

namespace Cradle::Parser {
namespace {

TEST(TemplateContext, HasNoTemplateUntilOneIsAdded) {
  const TemplateContext context(kNoUser);
  EXPECT_EQ(context.find("HOME"), nullptr);
  EXPECT_EQ(context.find(""), nullptr);
}

TEST(TemplateContext, FindsATemplateByItsExactName) {
  TemplateContext context(kNoUser);
  context.addTemplate("HOME", "/home/u");
  ASSERT_NE(context.find("HOME"), nullptr);
  EXPECT_EQ(*context.find("HOME"), "/home/u");
  for (const char* const other : {"home", "HOM", "HOMES", " HOME", ""}) {
    EXPECT_EQ(context.find(other), nullptr) << other;
  }
}

TEST(TemplateContext, KeepsTheFirstValueOfATemplate) {
  TemplateContext context(kNoUser);
  context.addTemplate("INSTANCE", "first");
  context.addTemplate("INSTANCE", "second");
  ASSERT_NE(context.find("INSTANCE"), nullptr);
  EXPECT_EQ(*context.find("INSTANCE"), "first");
}

TEST(TemplateContext, KeepsAnEmptyValueToo) {
  TemplateContext context(kNoUser);
  context.addTemplate("USER", "");
  context.addTemplate("USER", "u");
  ASSERT_NE(context.find("USER"), nullptr);
  EXPECT_EQ(*context.find("USER"), "");
}

TEST(TemplateContext, KnowsItsDconfUser) {
  EXPECT_EQ(kNoUser, -1);
  for (const std::int32_t user : {kNoUser, 0, 1000, -2}) {
    EXPECT_EQ(TemplateContext(user).dconfUser(), user);
  }
}

}  // namespace
}  // namespace Cradle::Parser

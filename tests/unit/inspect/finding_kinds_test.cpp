// SPDX-License-Identifier: MIT
#include "inspect/finding_kinds.h"

#include <set>
#include <string>

#include <gtest/gtest.h>

#include "support/golden_session.h"
#include "support/inspect_program.h"

namespace Cradle::Inspect {
namespace {

using Testing::InspectProgram;

TEST(FindingKinds, AreNamedInSmallLettersAndOnce) {
  std::set<std::string_view> names;
  for (const FindingKind& kind : findingKinds()) {
    EXPECT_EQ(kind.name.find_first_not_of("abcdefghijklmnopqrstuvwxyz-"), std::string_view::npos);
    EXPECT_TRUE(names.insert(kind.name).second) << kind.name;
    EXPECT_EQ(&kindOf(kind.id), &kind);
  }
}

TEST(FindingKinds, SayWhatIsWrongAndWhatToDoInSentences) {
  for (const FindingKind& kind : findingKinds()) {
    EXPECT_TRUE(kind.sentence.ends_with('.')) << kind.name;
    EXPECT_TRUE(kind.advice.ends_with('.')) << kind.name;
  }
}

TEST(FindingKinds, AreListedAsInTheGoldenSession) {
  const std::string list = InspectProgram::runAlone({"program", "findings"}).text;
  EXPECT_NE(list.find(findingKinds().back().name), std::string::npos);
  EXPECT_NE(Testing::goldenSession().find("$ findings\n" + list), std::string::npos);
}

TEST(FindingKinds, ComeBySeverity) {
  for (std::size_t i = 1; i < findingKinds().size(); ++i) {
    EXPECT_LE(findingKinds()[i - 1].severity, findingKinds()[i].severity);
  }
}

}  // namespace
}  // namespace Cradle::Inspect

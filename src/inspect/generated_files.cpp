// SPDX-License-Identifier: MIT
#include "inspect/generated_files.h"

#include "generators/generated_group.h"

namespace Cradle::Inspect {

std::vector<std::uint32_t> generatedFiles(const Journal& journal) {
  namespace Facts = Generators::GeneratedGroup;
  std::vector<std::uint32_t> files;
  const History* const history = journal.find(Facts::kName, Facts::kUser);
  if (history != nullptr) {
    for (const Assignment& assignment : *history) {
      if (files.empty() || files.back() != assignment.place.file) {
        files.push_back(assignment.place.file);
      }
    }
  }
  return files;
}

}  // namespace Cradle::Inspect

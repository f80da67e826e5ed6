// SPDX-License-Identifier: MIT
// SimpleIni, with names that are told apart by case, as everywhere else here, and with its fastest
// way to take the text: as it is.

#define SI_NO_CONVERSION
#include <SimpleIni.h>

#include "common/failure.h"
#include "loading/loaders.h"

namespace Cradle::Bench {
namespace {

class SimpleIniFile : public KeyedFile {
 public:
  explicit SimpleIniFile(const std::string& path) {
    require(file_.LoadFile(path.c_str()) == SI_OK, "SimpleIni failed");
  }

 private:
  std::optional<std::string> value(const Entry& entry) const override {
    const char* const text = file_.GetValue(entry.group.c_str(), entry.key.c_str());
    return text != nullptr ? std::optional<std::string>(text) : std::nullopt;
  }

  CSimpleIniCaseA file_;
};

}  // namespace

std::unique_ptr<LoadedFile> loadWithSimpleIni(const std::string& path) {
  return std::make_unique<SimpleIniFile>(path);
}

}  // namespace Cradle::Bench

// SPDX-License-Identifier: MIT
#include "support/json_text.h"

#include <nlohmann/json.hpp>

namespace Cradle::Testing {
namespace {

nlohmann::ordered_json at(const std::string& document, const std::string& pointer) {
  using Json = nlohmann::ordered_json;
  return Json::parse(document).at(Json::json_pointer(pointer));
}

}  // namespace

std::string jsonAt(const std::string& document, const std::string& pointer) {
  return at(document, pointer).dump();
}

std::size_t jsonSizeAt(const std::string& document, const std::string& pointer) {
  return at(document, pointer).size();
}

}  // namespace Cradle::Testing

// SPDX-License-Identifier: MIT
#include "inspect/json.h"

#include <utility>

#include <nlohmann/json.hpp>

namespace Cradle::Inspect {
namespace {

using Document = nlohmann::ordered_json;

Document toDocument(const JsonObject& object);

Document toDocument(const JsonList& list);

template <typename Scalar>
Document toDocument(const Scalar& scalar) {
  return scalar;
}

Document toDocument(const Json& json) {
  return std::visit([](const auto& value) { return toDocument(value); }, json);
}

Document toDocument(const JsonList& list) {
  Document::array_t elements;
  for (const Json& json : list) {
    elements.push_back(toDocument(json));
  }
  return elements;
}

// As a vector: as a map it would look for every name among those before.
Document toDocument(const JsonObject& object) {
  Document::object_t members;
  for (const auto& [name, value] : object) {
    members.Container::emplace_back(name, toDocument(value));
  }
  return members;
}

}  // namespace

JsonObject&& JsonObject::with(std::string_view name, Json value) && {
  push_back({name, std::move(value)});
  return std::move(*this);
}

std::string dump(const JsonObject& document) {
  constexpr int kIndent = 2;
  return toDocument(document).dump(kIndent, ' ', false, Document::error_handler_t::replace) + '\n';
}

}  // namespace Cradle::Inspect

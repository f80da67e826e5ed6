// SPDX-License-Identifier: MIT
// JSON for programs: a document is put together of values and handed to a library that writes it.
//
// A text is kept as it is given: a std::string by the document itself, a std::string_view by whom
// it comes from, as the names of members are. Texts that are no UTF-8 have U+FFFD in the place of
// each wrong byte.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace Cradle::Inspect {

struct Json;
struct JsonMember;
using JsonList = std::vector<Json>;

// Written in the order of its members, of which no two may have one name.
struct JsonObject : std::vector<JsonMember> {
  // Has one more member: JsonObject().with("a", true).with("b", nullptr)
  JsonObject&& with(std::string_view name, Json value) &&;
};

struct Json : std::variant<std::nullptr_t, bool, std::size_t, std::string_view, std::string,
                           JsonList, JsonObject> {
  using variant::variant;
};

struct JsonMember {
  std::string_view name;
  Json value;
};

// The values as a list, or what a function makes of each.
template <typename Values, typename Function = std::identity>
JsonList jsonList(const Values& values, const Function& toElement = {}) {
  JsonList list;
  for (const auto& value : values) {
    list.emplace_back(toElement(value));
  }
  return list;
}

// The document as text, with a line feed at its end.
std::string dump(const JsonObject& document);

}  // namespace Cradle::Inspect

// SPDX-License-Identifier: MIT
// One value of a configuration key: plain text, or text with references to other values.
//
// A reference is a (group, key) pair with the offset in the literal text at which the referenced
// value belongs, counted in the literal text alone. What a reference names is looked up only when
// the value is read, so that it sees the final, layered configuration. Copying is deep.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "export.h"

namespace Cradle::Parser {

// The group and the key of a value.
using ValueName = std::pair<std::string, std::string>;

class CRADLE_CONFIG_API ConfigValue {
 public:
  enum Kind : std::uint32_t { PlainText = 0, TextWithReferences = 1 };

  ConfigValue() = default;
  explicit ConfigValue(std::string text) : text_(std::move(text)) {}
  ConfigValue(const ConfigValue& other);
  ConfigValue& operator=(const ConfigValue& other);
  ConfigValue(ConfigValue&&) noexcept = default;
  ConfigValue& operator=(ConfigValue&&) noexcept = default;
  ~ConfigValue() = default;

  Kind kind() const { return references_ ? TextWithReferences : PlainText; }

  // Plain text of length 0.
  bool isEmpty() const { return !references_ && text_.empty(); }

  // The literal text, every reference cut out.
  const std::string& text() const { return text_; }
  void setText(std::string text) { text_ = std::move(text); }

  // The referenced values in the order of their addition; none for plain text.
  std::span<const ValueName> references() const;
  void addReference(std::string group, std::string key, std::size_t offset);

  // The literal text with texts[i] inserted for reference i. Where the counts differ, a warning is
  // logged and the literal text returned. An offset beyond the text is a programming error.
  std::string render(std::span<const std::string> texts) const;

 private:
  struct References {
    std::vector<ValueName> names;
    std::vector<std::size_t> offsets;  // one per name
  };

  std::string text_;
  std::unique_ptr<References> references_;  // null for plain text
};

}  // namespace Cradle::Parser

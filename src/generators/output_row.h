// SPDX-License-Identifier: MIT
// The rows of an output table: one row per line that a generator writes.
//
// A row names the comment that heads it, the key that it writes, the configuration value that it is
// made of, the format of the text and the condition under which it is written at all. Where the
// condition is not met, neither the comment nor the line appears. What a row cannot say is a small
// function named in its place in the order.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "config_writer.h"
#include "generators/config_reader.h"
#include "generators/locale.h"
#include "generators/run.h"

namespace Cradle::Generators {

struct OutputRow;

// What the rows of one output draw on and write to.
struct OutputContext {
  const Run& run;
  const std::vector<std::string>& directories;
  Parser::ConfigWriter& writer;
  ConfigReader config = ConfigReader(run.parser);
  std::optional<Locale> locale = std::nullopt;  // read when the first row asks for it
};

// How the value becomes text.
struct Format {
  std::string_view name;  // as the documentation of keys calls the type of the source
  // The text, or nothing when the value is wrong, which has been logged.
  std::optional<std::string> (*text)(OutputContext& context, const OutputRow& row);
};

// When the row is written.
struct Condition {
  std::string_view name;  // as the documentation of keys words it
  bool (*holds)(const OutputContext& context, const OutputRow& row);
};

// Another value that decides about the row, and the text that it must have.
struct Requirement {
  ConfigKey source = {};
  std::string_view text = {};
};

struct OutputRow {
  std::string_view comment = {};  // none when empty
  std::string_view key = {};      // a row without key writes its comment alone
  ConfigKey source = {};
  const Format* format = nullptr;
  const Condition* condition = nullptr;  // always, when null
  Requirement when = {};                 // for conditions and formats that compare
  std::string_view text = {};            // the fixed text, or that of an absent value
  std::string_view prefix = {};          // before and behind the text
  std::string_view suffix = {};
  // Writes the row's lines in place of key and format. False ends the run with status 1; the cause
  // has been logged.
  bool (*lines)(OutputContext& context, const OutputRow& row) = nullptr;
};

// Writes the rows in order. False at the first one that is wrong; what stands before it stays.
bool writeRows(OutputContext& context, std::span<const OutputRow> rows);

// Writes every element of a list as a line of its own, if the key is there, between the two
// comments.
void writeStoredBlock(OutputContext& context, const ConfigKey& source, std::string_view comment,
                      std::string_view endComment);

}  // namespace Cradle::Generators

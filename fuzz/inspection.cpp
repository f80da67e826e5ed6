// SPDX-License-Identifier: MIT
// The inspecting program, from a tree of files to what it tells of it, in a private host. The input
// is the files of the host, as in common/file_tree.h, with "arguments" as for the whole program.
//
// Properties: "check" finds something that ends every run where, and only where, a run cannot read
// the configuration; "show" has the values that a run has; a finding stands at a line that is
// there; as text there are as many findings as in JSON, and no terminal takes any of it for a
// command; a second look tells the same, and so does "explain" of each key.

#include <algorithm>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "common/check.h"
#include "common/lines.h"
#include "common/private_host.h"
#include "common/program_runs.h"
#include "common/target.h"
#include "generators/run_facts.h"
#include "generators/user_database.h"
#include "inspect/key_table.h"
#include "inspect/printable.h"
#include "inspect/program.h"
#include "support/log_capture.h"

namespace Cradle::Fuzz {
namespace {

using CommandLine::Settings;
using Inspect::Answer;
using Parser::ConfigParser;
using Parser::LoadResult;
using Json = nlohmann::json;  // compared without regard to the order of members
using Strings = std::vector<std::string>;

constexpr std::size_t kMostExplained = 8;

// As the program writes a text that need not be UTF-8.
Json jsonOf(const std::string& text) {
  return Json::parse(Json(text).dump(-1, ' ', false, Json::error_handler_t::replace));
}

class Check {
 public:
  Check(const FileTree& files, const Settings& settings) : settings_(settings) {
    host().furnish(files);
  }

  void run() {
    const Json check = document({"check"});
    const Json show = document({"show"});
    requireEqual(document({"check"}).dump(), check.dump(), "a second look tells the same");
    if (byChance_) {
      return;
    }
    for (const Json& finding : check["findings"]) {
      checkPlace(finding);
    }
    checkText(check);
    checkLoading(check, show);
    checkKeys(show);
  }

 private:
  static const PrivateHost& host() {
    static const PrivateHost host;
    return host;
  }

  Answer answer(Strings words) {
    words.insert(words.begin(), {"program", "--instance=" + settings_.instance});
    if (settings_.userId != Generators::kUnknownUser) {
      words.push_back("--user-id=" + std::to_string(static_cast<std::int32_t>(settings_.userId)));
    }
    for (const std::string& directory : settings_.directories) {
      words.push_back("--config=" + directory);
    }
    std::vector<char*> arguments;
    for (std::string& word : words) {
      arguments.push_back(word.data());
    }
    const Testing::LogCapture log;
    const PrivateHost::Visit visit(host());
    Answer answer = Inspect::runProgram(arguments);
    byChance_ = byChance_ || visit.isExhausted();
    require(answer.status == Inspect::kFine || answer.status == Inspect::kFindings,
            "there is an answer", answer.errors);
    return answer;
  }

  Json document(Strings words) {
    words.emplace_back("--format=json");
    const Answer given = answer(words);
    require(Json::accept(given.text), "a document is JSON", given.text);
    return Json::parse(given.text);
  }

  static void checkPlace(const Json& finding) {
    const std::optional<std::string> text = host().read(finding["file"]);
    const std::size_t line = finding["line"];
    require(!text || line <= linesOf(*text).size(), "a finding stands at a line that is there",
            finding.dump());
  }

  void checkText(const Json& check) {
    const std::string text = answer({"check", "--color=never"}).text;
    require(text == Inspect::printableLines(text), "a text commands no terminal", text);
    const Strings lines = linesOf(text);
    require(lines.size() == 2 * check["findings"].size() + 1,
            "a finding is a line with its advice below", text);
    const std::string counts = std::to_string(check["errors"].get<std::size_t>()) + " error";
    require(lines.back().starts_with(counts), "the last line counts them", lines.back());
  }

  void checkLoading(const Json& check, const Json& show) {
    static const std::set<std::string> kEnding{"bad-line", "unreadable-file", "no-configuration"};
    const bool ends = std::any_of(
        check["findings"].begin(), check["findings"].end(),
        [](const Json& finding) { return kEnding.contains(finding["kind"].get<std::string>()); });
    ConfigParser parser(static_cast<std::int32_t>(settings_.userId));
    const HostUser* const user = PrivateHost::findUser(settings_.userId);
    const Testing::LogCapture log;
    const PrivateHost::Visit visit(host());
    if (user != nullptr) {
      Generators::addNamedTemplates(
          parser, {settings_.userId, user->name, user->home, settings_.instance, settings_.baseUid},
          true);
    }
    const LoadResult result = parser.loadDirectories(settings_.directories);
    if (visit.isExhausted()) {
      return;
    }
    require(ends == (result != LoadResult::Loaded),
            "what ends every run is found where a run cannot read", check.dump());
    if (user != nullptr && result == LoadResult::Loaded) {
      requireEqual(shownValues(show).dump(), loadedValues(parser).dump(),
                   "the values that are shown are those of a run");
    }
  }

  static Json shownValues(const Json& show) {
    Json values = Json::object();
    for (const auto& [group, keys] : show["groups"].items()) {
      for (const auto& [key, list] : keys.items()) {
        for (const Json& value : list) {
          values[group][key].push_back(value["text"]);
        }
      }
    }
    return values;
  }

  static Json loadedValues(const ConfigParser& parser) {
    Json values = Json::object();
    parser.forEachEntry([&](std::string_view group, std::string_view key,
                            std::span<const Parser::ConfigValue> all) {
      const bool one = Inspect::takesOne(group, key);
      for (const Parser::ConfigValue& value : one ? all.last(1) : all) {
        std::string text;
        parser.resolve(value, text);
        values[std::string(group)][std::string(key)].push_back(jsonOf(text));
      }
    });
    return values;
  }

  void checkKeys(const Json& show) {
    std::size_t explained = 0;
    for (const auto& [group, keys] : show["groups"].items()) {
      for (const auto& [key, list] : keys.items()) {
        if (++explained > kMostExplained) {
          return;
        }
        checkKey(group, key, list);
      }
    }
  }

  void checkKey(const std::string& group, const std::string& key, const Json& shown) {
    const Json explanation = document({"explain", group + "/" + key});
    require(explanation["values"].size() == shown.size(), "every value is explained");
    for (std::size_t i = 0; i < shown.size(); ++i) {
      for (const char* const member : {"file", "line", "text"}) {
        require(explanation["values"][i][member] == shown[i][member],
                "a value is explained as it is shown", explanation.dump());
      }
    }
  }

  Settings settings_;
  bool byChance_ = false;
};

}  // namespace

void checkInput(const std::string& input) {
  FileTree files = filesOf(input);
  const std::optional<Settings> settings = settingsOf(files);
  files.erase("arguments");
  // Commands are not run for the one and printed as they are for the other.
  if (settings && input.find("system:") == std::string::npos) {
    Check(files, *settings).run();
  }
}

}  // namespace Cradle::Fuzz

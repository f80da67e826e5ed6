// SPDX-License-Identifier: MIT
#include "generators/property_formats.h"

#include <charconv>

#include <pwd.h>

#include "base/text.h"
#include "generators/invalid_value.h"
#include "generators/opengl_version.h"

namespace Cradle::Generators {
namespace {

// The first letter as a capital, or NUL for the empty text.
char capitalOf(const std::string& text) {
  return text.empty() ? '\0' : upperCase(text.front());
}

// The user that a whole decimal number names.
const passwd* userOfNumber(const std::string& text) {
  uid_t uid = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, uid);
  return error == std::errc() && stop == end ? getpwuid(uid) : nullptr;
}

// The run's locale, or null where the configuration's is wrong.
const Locale* localeOf(OutputContext& context) {
  if (!context.locale) {
    context.locale = readLocale(context.config);
  }
  return context.locale ? &*context.locale : nullptr;
}

}  // namespace

std::optional<std::string> formatForced(OutputContext& context, const OutputRow& row) {
  return context.config.flag(row.source) ? "force_on" : "force_off";
}

std::optional<std::string> formatBaseName(OutputContext& context, const OutputRow& row) {
  const std::string path = context.config.text(row.source);
  return path.substr(path.rfind('/') + 1);
}

std::optional<std::string> formatHostUser(OutputContext& context, const OutputRow& row) {
  const std::string name = context.config.text(row.source);
  const passwd* user = getpwnam(name.c_str());
  if (user == nullptr) {
    user = userOfNumber(name);
  }
  return std::to_string(user == nullptr ? 0 : user->pw_uid);
}

std::optional<std::string> formatManglingType(OutputContext& context, const OutputRow& row) {
  const std::string type = context.config.text(row.source);
  if (type != kNoDots) {
    reportInvalidValue(row.source, type);
    return std::nullopt;
  }
  return "1";
}

std::optional<std::string> formatIsRequired(OutputContext& context, const OutputRow& row) {
  return context.config.text(row.source) == row.when.text ? "1" : "0";
}

std::optional<std::string> formatOpenGlVersion(OutputContext& context, const OutputRow& row) {
  const std::string text = context.config.text(row.source);
  const std::optional<std::int32_t> version = parseOpenGlVersion(text);
  if (!version) {
    reportInvalidValue(row.source, text);
    return std::nullopt;
  }
  return std::to_string(*version);
}

std::optional<std::string> formatLanguage(OutputContext& context, const OutputRow& /*row*/) {
  const Locale* const locale = localeOf(context);
  return locale == nullptr ? std::nullopt : std::optional(locale->language);
}

std::optional<std::string> formatCountry(OutputContext& context, const OutputRow& /*row*/) {
  const Locale* const locale = localeOf(context);
  return locale == nullptr ? std::nullopt : std::optional(locale->country);
}

std::optional<std::string> formatLocale(OutputContext& context, const OutputRow& /*row*/) {
  const Locale* const locale = localeOf(context);
  return locale == nullptr ? std::nullopt : std::optional(locale->language + "-" + locale->country);
}

std::optional<std::string> formatLogLevel(OutputContext& context, const OutputRow& row) {
  return std::string(1, capitalOf(context.config.text(row.source)));
}

std::optional<std::string> formatLaunchMode(OutputContext& context, const OutputRow& row) {
  const std::string mode = context.config.text(row.source);
  if (mode == kFullscreen) {
    return "1";
  }
  if (mode == kFreeform) {
    return "5";
  }
  reportInvalidValue(row.source, mode, " valid modes are freeform and fullscreen");
  return std::nullopt;
}

bool appIdsAreMangled(const OutputContext& context, const OutputRow& row) {
  return manglingTypeIsNotNone(context, row) || !context.config.text(kAppIdPrefix).empty();
}

bool manglingTypeIsNotNone(const OutputContext& context, const OutputRow& row) {
  return context.config.text(row.source) != kNoMangling;
}

bool networkIsTheGuests(const OutputContext& context, const OutputRow& row) {
  const std::string word = context.config.text(row.source);
  return word != kSkippedNetwork && word != kDisabledNetwork;
}

bool isLogLevel(const std::string& text) {
  return kLogLevelLetters.find(capitalOf(text)) != std::string_view::npos;
}

bool logLevelIsKnown(const OutputContext& context, const OutputRow& row) {
  return isLogLevel(context.config.text(row.source));
}

bool writeRawLines(OutputContext& context, const OutputRow& row) {
  for (const std::string& line : context.config.list(row.source)) {
    context.writer.writeContent(line);
  }
  return true;
}

}  // namespace Cradle::Generators

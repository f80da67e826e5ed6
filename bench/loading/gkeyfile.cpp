// SPDX-License-Identifier: MIT
// GLib's GKeyFile, which the desktop's configuration files are read with. No flags: comments and
// translations are not kept.

#include <glib.h>

#include "common/failure.h"
#include "loading/loaders.h"

namespace Cradle::Bench {
namespace {

class GLibFile : public KeyedFile {
 public:
  explicit GLibFile(const std::string& path) {
    require(g_key_file_load_from_file(file_.get(), path.c_str(), G_KEY_FILE_NONE, nullptr) != FALSE,
            "GKeyFile failed");
  }

 private:
  std::optional<std::string> value(const Entry& entry) const override {
    const std::unique_ptr<char, decltype(&g_free)> text(
        g_key_file_get_string(file_.get(), entry.group.c_str(), entry.key.c_str(), nullptr),
        &g_free);
    return text ? std::optional<std::string>(text.get()) : std::nullopt;
  }

  std::unique_ptr<GKeyFile, decltype(&g_key_file_free)> file_{g_key_file_new(), &g_key_file_free};
};

}  // namespace

std::unique_ptr<LoadedFile> loadWithGKeyFile(const std::string& path) {
  return std::make_unique<GLibFile>(path);
}

}  // namespace Cradle::Bench

// SPDX-License-Identifier: MIT
// A directory of a test's own, removed with all that is in it.
#pragma once

#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>

#include <sys/stat.h>

namespace Cradle::Testing {

class TemporaryDirectory {
 public:
  TemporaryDirectory() {
    std::string pattern = std::filesystem::temp_directory_path() / "cradle-test-XXXXXX";
    if (mkdtemp(pattern.data()) == nullptr) {
      throw std::runtime_error("cannot make " + pattern);
    }
    path_ = pattern;
  }
  ~TemporaryDirectory() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TemporaryDirectory(const TemporaryDirectory&) = delete;
  TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

  // The absolute path of `name` in the directory, or of the directory itself.
  std::string path(std::string_view name = "") const {
    return name.empty() ? path_.string() : (path_ / name).string();
  }

  // Writes a file, its directories included, and returns its path.
  std::string write(std::string_view name, std::string_view text) const {
    const std::filesystem::path file = path_ / name;
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << text;
    return file.string();
  }

  // Makes a named pipe that nobody writes to.
  std::string makePipe(std::string_view name) const {
    const std::string pipe = path(name);
    if (mkfifo(pipe.c_str(), 0600) != 0) {
      throw std::runtime_error("cannot make " + pipe);
    }
    return pipe;
  }

  // Writes a shell script that may be run.
  std::string writeScript(std::string_view name, std::string_view body) const {
    const std::string file = write(name, "#!/bin/sh\n" + std::string(body));
    std::filesystem::permissions(file, std::filesystem::perms(0755));
    return file;
  }

  std::string read(std::string_view name) const {
    std::ostringstream text;
    text << std::ifstream(path_ / name, std::ios::binary).rdbuf();
    return text.str();
  }

 private:
  std::filesystem::path path_;
};

}  // namespace Cradle::Testing

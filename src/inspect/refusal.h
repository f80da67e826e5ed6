// SPDX-License-Identifier: MIT
// While one of these lives, the process starts no command and makes no directory (side_effects.h).
#pragma once

#include <string>
#include <vector>

#include "side_effects.h"

namespace Cradle::Inspect {

class Refusal {
 public:
  // Refuses nothing with `execute`.
  explicit Refusal(bool execute = false) : former_(Parser::refuseSideEffects(nullptr)) {
    refused().clear();
    Parser::refuseSideEffects(execute ? former_ : note);
  }
  ~Refusal() { Parser::refuseSideEffects(former_); }
  Refusal(const Refusal&) = delete;
  Refusal& operator=(const Refusal&) = delete;

  // What the last refusal has kept from being done, in order.
  static std::vector<std::string>& refused() {
    static std::vector<std::string> all;
    return all;
  }

 private:
  static void note(const std::string& what) { refused().push_back(what); }

  Parser::RefusalListener former_;
};

}  // namespace Cradle::Inspect

// SPDX-License-Identifier: MIT
// A shared library that is opened when it is first needed instead of at every start.
//
// Most runs use none of the libraries in base/optional_libraries.h, and opening these costs more
// than the rest of a run. An opened library stays open for the life of the process. A library or a
// function that is missing is an ordinary failure: isOpen() is false and find() returns null.
#pragma once

#include "base/optional_libraries.h"

namespace Cradle {

class SharedLibrary {
 public:
  // Opens the library with lazy binding (dlopen).
  explicit SharedLibrary(const OptionalLibrary& library);

  bool isOpen() const { return handle_ != nullptr; }

  // The function of that name in the library or in one of those it depends on (dlsym), or null.
  template <typename Function>
  Function* find(const char* name) const {
    return reinterpret_cast<Function*>(address(name));
  }

  // Stores the function in `slot` and returns whether there is one.
  template <typename Function>
  bool bind(Function*& slot, const char* name) const {
    slot = find<Function>(name);
    return slot != nullptr;
  }

 private:
  void* address(const char* name) const;

  void* handle_;
};

}  // namespace Cradle

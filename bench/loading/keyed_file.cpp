// SPDX-License-Identifier: MIT
// How every key of a file is looked up, and its value compared with that of the entry.

#include "loading/loaders.h"

namespace Cradle::Bench {

bool KeyedFile::isComplete(std::size_t entries) const {
  EntryStream stream;
  for (std::size_t i = 0; i < entries; ++i) {
    const Entry& entry = stream.next();
    if (value(entry) != entry.value) {
      return false;
    }
  }
  return true;
}

}  // namespace Cradle::Bench

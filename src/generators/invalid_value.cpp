// SPDX-License-Identifier: MIT
#include "generators/invalid_value.h"

#include "library_logger.h"

namespace Cradle::Generators {

void reportInvalidValue(const ConfigKey& name, std::string_view value, std::string_view hint) {
  Parser::libraryLogger().error() << "Invalid value for " << name.group << "/" << name.key << ": "
                                  << value << hint;
}

}  // namespace Cradle::Generators

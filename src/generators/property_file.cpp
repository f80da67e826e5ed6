#include "generators/property_file.h"

#include "library_logger.h"

namespace Cradle::Generators {

int generateProperties(const std::string& /*output*/,
                       const std::vector<std::string>& /*directories*/, std::uint32_t /*userId*/,
                       const std::string& /*instance*/, std::uint32_t /*baseUid*/) {
  Parser::libraryLogger().error() << "Cannot write a property file yet";
  return 1;
}

}  // namespace Cradle::Generators

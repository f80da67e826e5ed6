#include "generators/lxc_config.h"

#include "library_logger.h"

namespace Cradle::Generators {

int generateLxc(const std::string& /*output*/, const std::vector<std::string>& /*directories*/,
                std::uint32_t /*userId*/, const std::string& /*instance*/,
                std::uint32_t /*baseUid*/) {
  Parser::libraryLogger().error() << "Cannot write an LXC configuration yet";
  return 1;
}

}  // namespace Cradle::Generators

// print-key: prints the values of one key of a layered configuration, one on each line.

#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

#include <cradle-config/config_parser.h>
#include <cradle-config/library_logger.h>

using Cradle::Parser::ConfigParser;
using Cradle::Parser::libraryLogger;
using Cradle::Parser::LoadResult;
using Cradle::Parser::Logging::LoggerConfig;

int main(int argc, char** argv) {
  if (argc < 4) {
    std::cerr << "Usage: print-key GROUP KEY DIRECTORY...\n";
    return EXIT_FAILURE;
  }
  const std::string group = argv[1];
  const std::string key = argv[2];
  const std::vector<std::string> directories(argv + 3, argv + argc);

  libraryLogger().setTarget(LoggerConfig::TargetStderr);
  LoggerConfig::configure(nullptr);  // what the environment says about logging

  ConfigParser parser(-1);  // no user: dconf templates read in the caller's environment
  parser.addTemplate("INSTANCE", "default");
  if (parser.loadDirectories(directories) != LoadResult::Loaded || !parser.hasKey(group, key)) {
    return EXIT_FAILURE;
  }
  std::vector<std::string> values;
  parser.getValue(group, key, values);
  for (const std::string& value : values) {
    std::cout << value << '\n';
  }
  return EXIT_SUCCESS;
}

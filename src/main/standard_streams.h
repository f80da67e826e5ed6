// Makes sure that the three standard descriptors are taken.
#pragma once

namespace Cradle::CommandLine {

// Opens /dev/null in place of each standard descriptor that the caller has closed. Otherwise the
// output file would take its number, and log lines and hook output would end up in that file.
void fillStandardDescriptors();

}  // namespace Cradle::CommandLine

// SPDX-License-Identifier: MIT
// Inputs that stand for several files, as one text.
//
// A line "%% NAME" begins a file, whose text goes up to the line feed before the next such line, or
// to the end. What stands before the first file is of no meaning.
#pragma once

#include <map>
#include <string>
#include <string_view>

namespace Cradle::Fuzz {

// The text of each file by its name. At most 16 files are taken, the first of a name, and only
// those of which the names are short relative paths without anything unusual, and none of which
// would have to be a directory as well.
using FileTree = std::map<std::string, std::string>;
FileTree filesOf(std::string_view input);

// Whether files of that name are taken.
bool isUsualName(std::string_view name);

// The other way round, for names that are taken.
std::string inputOf(const FileTree& files);

}  // namespace Cradle::Fuzz

// SPDX-License-Identifier: MIT
// The functions behind the commands, each in a file of its own; the help tells what they do.
#pragma once

#include <span>
#include <string>

#include "inspect/command.h"

namespace Cradle::Inspect {

Answer runCheck(const Options& options, std::span<const std::string> operands);
Answer runDiff(const Options& options, std::span<const std::string> operands);
Answer runExplain(const Options& options, std::span<const std::string> operands);
Answer runFiles(const Options& options, std::span<const std::string> operands);
Answer runFindings(const Options& options, std::span<const std::string> operands);
Answer runGraph(const Options& options, std::span<const std::string> operands);
Answer runKeys(const Options& options, std::span<const std::string> operands);
Answer runShow(const Options& options, std::span<const std::string> operands);

}  // namespace Cradle::Inspect

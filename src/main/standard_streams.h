// SPDX-License-Identifier: MIT
// Keeps the state in which a caller leaves the standard streams from harming a run.
#pragma once

namespace Cradle::CommandLine {

// Opens /dev/null in place of each standard descriptor that the caller has closed. Otherwise the
// output file would take its number, and log lines and hook output would end up in that file.
void fillStandardDescriptors();

// Makes writing to a pipe that nobody reads any more an error instead of the end of the process: a
// log reader that goes away does not leave half an output file behind. Programs that this one
// starts are not affected, because a handler, unlike an ignored signal, does not outlive exec.
void surviveBrokenPipes();

}  // namespace Cradle::CommandLine

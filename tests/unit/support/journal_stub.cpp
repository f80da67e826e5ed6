// SPDX-License-Identifier: MIT
// A library in the place of the systemd client library: it shows on standard error, with its
// arguments between angle brackets, what the journal would get.

#include <cstdarg>
#include <cstdio>

extern "C" int sd_journal_print(int priority, const char* format, ...) {
  std::fprintf(stderr, "journal <%d> <%s> <", priority, format);
  std::va_list arguments;
  va_start(arguments, format);
  std::vfprintf(stderr, format, arguments);
  va_end(arguments);
  std::fputs(">\n", stderr);
  return 0;
}

// SPDX-License-Identifier: MIT
// The table of the LXC configuration: every line that does not come from hooks or fragments, in
// order.
//
// A new line is one row, in its place. Its formats and conditions are those of row_formats.h and
// lxc_formats.h. Tests over the table then ask for its key in conf/cradle.conf.d, set or commented
// out, and for golden cases (tests/e2e/golden) with and without it.
#pragma once

#include <span>

#include "generators/output_row.h"

namespace Cradle::Generators {

std::span<const OutputRow> lxcRows();

}  // namespace Cradle::Generators

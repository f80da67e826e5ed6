// The table of the LXC configuration: every line that does not come from hooks or fragments, in
// order.
#pragma once

#include <span>

#include "generators/output_row.h"

namespace Cradle::Generators {

std::span<const OutputRow> lxcRows();

}  // namespace Cradle::Generators

// The table of the property file: every property that the generator itself writes, in order.
#pragma once

#include <span>

#include "generators/output_row.h"

namespace Cradle::Generators {

std::span<const OutputRow> propertyRows();

}  // namespace Cradle::Generators

// SPDX-License-Identifier: MIT
// The table of the property file: every property that the generator itself writes, in order.
//
// A new property is one row, in its place. Its formats and conditions are those of row_formats.h
// and property_formats.h. Tests over the table then ask for its key in conf/cradle.conf.d, set or
// commented out, and for golden cases (tests/e2e/golden) with and without it.
#pragma once

#include <span>

#include "generators/output_row.h"

namespace Cradle::Generators {

std::span<const OutputRow> propertyRows();

}  // namespace Cradle::Generators

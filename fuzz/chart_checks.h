#pragma once

#include "harness.h"
#include <testing/plain_chart.h>

namespace fuzz {

/// Reads everything from an open chart, with arguments from the input, and checks the results.
void check_open_chart(PlainChart& chart, Input& input, Budget& budget, Kept& kept);

/// Checks that a closed object refuses every call and writes nothing.
void check_refusals(PlainChart& chart, Kept& kept);

/// Reads lines and rectangles after the file was changed, without checking their colours.
void read_changed_chart(PlainChart& chart, Budget& budget, Kept& kept);

/// Reads the fields of the text header.
void keep_header(const CZellap& chart, Kept& kept);

}  // namespace fuzz

#pragma once

#include "harness.h"
#include <testing/plain_chart.h>

namespace fuzz {

/// Reads all that an open chart gives, with arguments drawn from the input, and checks what must hold.
void check_open_chart(PlainChart& chart, Input& input, Budget& budget, Kept& kept);

/// Checks that an object that is not open refuses and writes nothing.
void check_refusals(PlainChart& chart, Kept& kept);

/// Reads lines and rectangles without a word on what they hold: the file is not what it was at the open.
void read_changed_chart(PlainChart& chart, Budget& budget, Kept& kept);

/// Reads the fields that the text header fills.
void keep_header(const CZellap& chart, Kept& kept);

}  // namespace fuzz

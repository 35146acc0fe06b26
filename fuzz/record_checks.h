#pragma once

#include "harness.h"
#include <zellap10/georef/geo_record.h>

namespace fuzz {

/// A record that owns its insets, like the record of a chart object.
class OwnRecord : public CGEORec {
public:
    OwnRecord() = default;
    ~OwnRecord();
};

/// Reads every field of a record, its points and vertices, and its insets.
void keep_record(const CGEORec& record, Kept& kept);

/// Compares a fitted record and its insets with the same file read without a fit. Then fits it again and
/// converts positions and pixels from the input.
void check_fitted_record(const CGEORec& file, CGEORec& fitted, Input& input, Kept& kept);

/// Checks that a record read without a fit has none.
void check_unfitted_record(const CGEORec& record);

}  // namespace fuzz

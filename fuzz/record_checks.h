#pragma once

#include "harness.h"
#include <zellap10/georef/geo_record.h>

namespace fuzz {

/// A record that owns its insets too, as a chart object does for its own record.
class OwnRecord : public CGEORec {
public:
    OwnRecord() = default;
    ~OwnRecord();
};

/// Reads every field of a record, its points and vertices, and its insets.
void keep_record(const CGEORec& record, Kept& kept);

/// Checks a fitted record, and its insets, against the same file read without a fit; then fits it again and
/// converts positions and pixels that the input draws.
void check_fitted_record(const CGEORec& file, CGEORec& fitted, Input& input, Kept& kept);

/// Checks that a record read without a fit has none.
void check_unfitted_record(const CGEORec& record);

}  // namespace fuzz

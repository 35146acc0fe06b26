#pragma once

#include <istream>

#include <zellap10/georef/geo_record.h>

namespace zellap10::georef {

/// Reads the entries of a georeference file into a record and into new records in its Insets.
void read_entries(std::istream& stream, CGEORec& base);

}  // namespace zellap10::georef

#include <zellap10/georef/geo_record.h>

// On a chart across the 180th meridian, the fit uses positive longitudes reduced by 360, so that longitudes
// increase from the left edge to the right edge.

namespace {

constexpr int kLargestX = 2147483647;

}  // namespace

void CGEORec::Check180Wrap(CRefPointList* list) {
    int smallest_x = kLargestX;
    int largest_x = -kLargestX;
    double west = 0.0;
    double east = 0.0;
    for (const CRefPoint* point : *list) {
        if (point->X < smallest_x) {
            smallest_x = point->X;
            west = point->Longitude;
        }
        if (point->X > largest_x) {
            largest_x = point->X;
            east = point->Longitude;
        }
    }
    Wraps180 = east < 0.0 && west > 0.0 ? 1 : 0;
}

void CGEORec::WrapLongitude(CRefPointList* list) const {
    if (Wraps180 == 0) return;
    for (CRefPoint* point : *list) {
        if (point->Longitude > 0.0) point->Longitude -= 360.0;
    }
}

void CGEORec::UnWrapLongitude(CRefPointList* list) const {
    if (Wraps180 == 0) return;
    for (CRefPoint* point : *list) {
        if (point->Longitude < -180.0) point->Longitude += 360.0;
    }
}

#include "zellap10/georef/geo_record.h"

#include <zellap10/georef/points.h>

CGEORec::CGEORec() = default;

CGEORec::~CGEORec() {
    zellap10::georef::delete_all(Vertices);
    zellap10::georef::delete_all(Points);
}

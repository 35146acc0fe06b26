#include <cmath>

#include <zellap10/georef/geo_record.h>
#include <zellap10/platform/whole_number.h>

CString CGEORec::deg2dms(double degrees) const {
    using zellap10::platform::whole_number;

    const double size = std::fabs(degrees);
    const double whole_degrees = std::floor(size);
    const double fraction = size - whole_degrees;
    const double whole_minutes = std::floor(fraction * 60);
    const double seconds = fraction * 3600 - whole_minutes * 60;
    CString text;
    text.Format(degrees > 0.0 ? "+%3.3d %2.2d %05.2f" : "-%3.3d %2.2d %05.2f", whole_number(whole_degrees),
                whole_number(whole_minutes), seconds);
    return text;
}

#include <zellap10/georef/geo_record.h>

// The record names longitude first and the projections latitude first; the order changes here and nowhere
// else.

void CGEORec::ProjFwd(double lon, double lat, double* x, double* y) const {
    ProjFwdWGS84(lon + LongitudeOffset, lat + LatitudeOffset, x, y);
}

void CGEORec::ProjInv(double x, double y, double* lon, double* lat) const {
    ProjInvWGS84(x, y, lon, lat);
    *lon -= LongitudeOffset;
    *lat -= LatitudeOffset;
}

void CGEORec::ProjFwdWGS84(double lon, double lat, double* x, double* y) const {
    project_f(ProjCode, &ProjParms, lat, lon, x, y);
}

void CGEORec::ProjInvWGS84(double x, double y, double* lon, double* lat) const {
    project_i(ProjCode, &ProjParms, x, y, lat, lon);
}

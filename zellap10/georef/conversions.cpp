#include "zellap10/georef/conversions.h"

// Records take longitude first, projections latitude first. The order changes only in this file.

void zellap10::georef::to_plane(const CGEORec& record, int code, const PPARMS& parms, double lon, double lat,
                                double* x, double* y) {
    project_f(code, &parms, lat + record.LatitudeOffset, lon + record.LongitudeOffset, x, y);
}

void CGEORec::ProjFwd(double lon, double lat, double* x, double* y) const {
    zellap10::georef::to_plane(*this, ProjCode, ProjParms, lon, lat, x, y);
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

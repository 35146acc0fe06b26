#include "zellap10/georef/ref_point.h"

CRefPoint::CRefPoint() = default;

CRefPoint::CRefPoint(const char* name, int x, int y, double longitude, double latitude)
    : Name(name), X(x), Y(y), Longitude(longitude), Latitude(latitude) {}

CRefPoint::CRefPoint(const CRefPoint& other) = default;

CRefPoint& CRefPoint::operator=(const CRefPoint& other) = default;

CRefPoint::~CRefPoint() = default;

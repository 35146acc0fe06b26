#pragma once

#include <zellap10/platform/platform.h>

/// A point of a georeference record: a pixel, a position and a name.
class ZELLAP10_API CRefPoint {
public:
    /// No name; all numbers are 0.
    CRefPoint();

    /// @param name                 a text, or null for an empty one
    /// @param x, y                 pixel column and row
    /// @param longitude, latitude  DEGREES, east and north positive
    CRefPoint(const char* name, int x, int y, double longitude, double latitude);

    /// Copies all five fields.
    CRefPoint(const CRefPoint& other);

    /// Copies all five fields; a point may be assigned to itself.
    CRefPoint& operator=(const CRefPoint& other);

    /// A derived class may be deleted through a pointer to its CRefPoint.
    virtual ~CRefPoint();

    CString Name;            ///< the text before the "=" of its line
    int X = 0;               ///< pixel column
    int Y = 0;               ///< pixel row
    double Longitude = 0.0;  ///< DEGREES, east positive
    double Latitude = 0.0;   ///< DEGREES, north positive
};

/// Pointers to points; the list does not own them.
using CRefPointList = CList<CRefPoint*, CRefPoint*>;

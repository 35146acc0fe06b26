#pragma once

#include <deque>
#include <vector>

#include <testing/record_parts.h>
#include <zellap10/georef/geo_record.h>

/// A reference point in the table of a test.
struct PointRow {
    int x;
    int y;
    double longitude;
    double latitude;
};

/// Points that belong to a test, and a list of them for the operations of a record.
class PointList {
public:
    PointList() = default;
    PointList(const std::vector<PointRow>& rows) {
        for (const PointRow& row : rows)
            add(row);
    }
    PointList(const PointList&) = delete;
    PointList& operator=(const PointList&) = delete;

    void add(const PointRow& row) {
        points_.emplace_back("", row.x, row.y, row.longitude, row.latitude);
        list_.AddTail(&points_.back());
    }
    CRefPointList* list() { return &list_; }
    const std::deque<CRefPoint>& points() const { return points_; }

private:
    std::deque<CRefPoint> points_;
    CRefPointList list_;
};

/// Adds points to a record, which owns them.
inline void add_points(CGEORec& record, const std::vector<PointRow>& rows) {
    for (const PointRow& row : rows) {
        record.Points.AddTail(new CRefPoint("", row.x, row.y, row.longitude, row.latitude));
    }
}

inline void add_vertex(CGEORec& record, double longitude, double latitude) {
    record.Vertices.AddTail(new CRefPoint("", 0, 0, longitude, latitude));
}

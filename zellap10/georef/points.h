#pragma once

#include <zellap10/georef/ref_point.h>

namespace zellap10::georef {

/// Calls `use` with each point of a list, from its head.
template <class Use>
void for_each_point(const CRefPointList& points, Use use) {
    for (POSITION place = points.GetHeadPosition(); place != nullptr;)
        use(*points.GetNext(place));
}

/// Deletes what the list points to, and empties it.
template <class Element>
void delete_all(CList<Element*, Element*>& list) {
    for (POSITION place = list.GetHeadPosition(); place != nullptr;)
        delete list.GetNext(place);
    list.RemoveAll();
}

}  // namespace zellap10::georef

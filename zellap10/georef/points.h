#pragma once

#include <zellap10/georef/ref_point.h>

namespace zellap10::georef {

/// Deletes what the list points to, and empties it.
template <class Element>
void delete_all(CList<Element*, Element*>& list) {
    for (const Element* element : list)
        delete element;
    list.RemoveAll();
}

}  // namespace zellap10::georef

#pragma once

#include <memory>

#include <zellap10/plotter/catalogue.h>

/// @file
///
/// A catalogue that quilts may share.

namespace zellap10::python {

struct SharedCatalogue {
    std::shared_ptr<plotter::Catalogue> charts = std::make_shared<plotter::Catalogue>();
    bool in_use = false;  ///< by a quilt; nothing may be added any more
};

}  // namespace zellap10::python

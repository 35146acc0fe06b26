#pragma once

#include <pybind11/pybind11.h>

/// @file
///
/// What each file of this folder adds to the module.

namespace zellap10::python {

void add_projection(pybind11::module_& module);
void add_datum(pybind11::module_& module);
void add_navigation(pybind11::module_& module);
void add_georeference(pybind11::module_& module);
void add_chart(pybind11::module_& module);
void add_catalogue(pybind11::module_& module);
void add_map_view(pybind11::module_& module);
void add_quilt(pybind11::module_& module);
void add_tiler(pybind11::module_& module);

}  // namespace zellap10::python

#include "bindings.h"

PYBIND11_MODULE(_native, module) {
    module.doc() = "The C++ part of the package.";
    module.attr("__version__") = ZELLAP10_VERSION;
    zellap10::python::add_projection(module);
    zellap10::python::add_datum(module);
    zellap10::python::add_navigation(module);
    zellap10::python::add_georeference(module);
    zellap10::python::add_chart(module);
    zellap10::python::add_catalogue(module);
    zellap10::python::add_map_view(module);
    zellap10::python::add_quilt(module);
    zellap10::python::add_tiler(module);
}

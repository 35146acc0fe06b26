#include "catalogue.h"

#include <cmath>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include <pybind11/stl.h>
#include <pybind11/stl/filesystem.h>

#include "bindings.h"
#include "plain.h"

namespace zellap10::python {

namespace {

using plotter::Catalogue;
using plotter::CatalogueEntry;

int add(SharedCatalogue& self, const std::filesystem::path& path) {
    std::error_code ignored;
    return self.add(path.string(), std::filesystem::is_directory(path, ignored));
}

/// Copies, which outlive the catalogue.
std::vector<CatalogueEntry> copies(const Catalogue::Entries& entries) {
    std::vector<CatalogueEntry> result;
    for (const CatalogueEntry* entry : entries)
        result.push_back(*entry);
    return result;
}

std::vector<CatalogueEntry> overlapping(SharedCatalogue& self, double south, double west, double north,
                                        double east) {
    if (!(south <= north && west <= east && std::isfinite(east - west))) {
        throw std::invalid_argument("south must not be above north, nor west above east");
    }
    const double width = std::min(east - west, 360.0);
    const plotter::Extent extent{south, north, plotter::normalize_longitude(west), width};
    return self.call([&](const Catalogue& charts) { return copies(charts.overlapping(extent)); });
}

void add_entry(py::module_& module) {
    py::class_<CatalogueEntry>(module, "CatalogueEntry", "A chart of a catalogue, or an inset on one.")
        .def_property_readonly(
            "path", [](const CatalogueEntry& self) { return path_text(self.path); }, "The chart file.")
        .def_readonly("inset", &CatalogueEntry::inset, "The index of the inset; None for the chart itself.")
        .def_property_readonly(
            "name", [](const CatalogueEntry& self) { return text(self.name.c_str()); },
            "The name in the georeference file, or else in the chart's header.")
        .def_readonly("metres_per_pixel", &CatalogueEntry::metres_per_pixel, "Metres per pixel, or None.")
        .def_property_readonly(
            "outline", [](const CatalogueEntry& self) { return array_of(self.outline); },
            "The corners in WGS 84, an array n x 2: latitude and longitude in degrees.")
        .def_property_readonly(
            "extent", [](const CatalogueEntry& self) { return tuple_of(self.extent); },
            "(south, west, north, east) in degrees; east is above 180 if it crosses the 180th meridian.");
}

}  // namespace

void add_catalogue(py::module_& module) {
    add_entry(module);
    py::class_<SharedCatalogue>(module, "Catalogue", R"(Charts and insets with what they cover.

Entries are returned in order of metres per pixel, most detailed first. Several threads may use one catalogue.

>>> catalogue = Catalogue()
>>> catalogue.add(".")
5
>>> [entry.name for entry in catalogue.covering(51.12, 1.33)][0]
'DOVER HARBOUR'
)")
        .def(py::init<>())
        .def("add", &add, py::arg("path"),
             R"(Adds a chart file, or all charts in a folder and the folders below it.

Returns:
    How many charts were added: 0 for a file that is not a chart or has no georeference.

Raises:
    ValueError: a quilt already draws the catalogue.
)")
        .def(
            "entries",
            [](SharedCatalogue& self) {
                return self.call([](const Catalogue& charts) { return copies(charts.entries()); });
            },
            "All entries, a list of CatalogueEntry.")
        .def(
            "covering",
            [](SharedCatalogue& self, double latitude, double longitude) {
                return self.call([&](const Catalogue& charts) {
                    return copies(charts.covering({latitude, longitude}));
                });
            },
            py::arg("latitude"), py::arg("longitude"),
            "The entries that cover a position in WGS 84, in degrees.")
        .def("overlapping", &overlapping, py::arg("south"), py::arg("west"), py::arg("north"),
             py::arg("east"),
             R"(The entries that have a position in common with an extent.

Args:
    south, west, north, east: degrees. An extent across the 180th meridian has an east above 180.

Raises:
    ValueError: south above north, or west above east.
)")
        .def("__len__", [](SharedCatalogue& self) {
            return self.call([](const Catalogue& charts) { return charts.entries().size(); });
        });
}

}  // namespace zellap10::python

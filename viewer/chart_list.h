#pragma once

#include <string>
#include <vector>

#include <zellap10/plotter/catalogue.h>

namespace viewer {

/// The charts to look at, and what they cover.
struct ChartList {
    std::vector<std::string> paths;
    zellap10::plotter::Catalogue catalogue;
};

/// Lists charts.
///
/// @param arguments  charts, which are listed whatever they are, and folders: of these and the folders below,
/// every
///                   file is listed that can be opened as a chart or has a georeference file beside it
ChartList list_charts(const std::vector<std::string>& arguments);

}  // namespace viewer

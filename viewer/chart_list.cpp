#include "viewer/chart_list.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <system_error>

#include <zellap10/plotter/diagnosis.h>

namespace viewer {

namespace fs = std::filesystem;

namespace {

bool may_be_chart(const std::string& path) {
    if (fs::path(path).extension() == ".GEO") return false;
    return !zellap10::plotter::diagnose_georeference(path) || !zellap10::plotter::diagnose_chart(path);
}

}  // namespace

ChartList list_charts(const std::vector<std::string>& arguments) {
    ChartList list;
    for (const std::string& argument : arguments) {
        std::error_code ignored;
        if (fs::is_directory(argument, ignored)) {
            const std::vector<std::string> files = zellap10::plotter::files_below(argument).paths;
            std::copy_if(files.begin(), files.end(), std::back_inserter(list.paths), may_be_chart);
        } else {
            list.paths.push_back(argument);
        }
    }
    for (const std::string& path : list.paths)
        list.catalogue.add_file(path);
    return list;
}

}  // namespace viewer

#include "viewer/chart_list.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include <zellap10/plotter/trouble.h>

namespace viewer {

namespace fs = std::filesystem;

namespace {

bool may_be_chart(const fs::directory_entry& entry) {
    std::error_code ignored;
    if (!entry.is_regular_file(ignored) || entry.path().extension() == ".GEO") return false;
    const std::string path = entry.path().string();
    return !zellap10::plotter::trouble_with_georeference(path.c_str()) ||
           !zellap10::plotter::trouble_with_chart(path.c_str());
}

std::vector<std::string> charts_below(const std::string& folder) {
    std::vector<std::string> paths;
    std::error_code error;
    fs::recursive_directory_iterator entry(folder, fs::directory_options::skip_permission_denied, error);
    for (; !error && entry != fs::recursive_directory_iterator(); entry.increment(error)) {
        try {
            if (may_be_chart(*entry)) paths.push_back(entry->path().string());
        } catch (const std::system_error&) {
            continue;  // a name that cannot be put into text
        }
    }
    std::sort(paths.begin(), paths.end());
    return paths;
}

}  // namespace

ChartList list_charts(const std::vector<std::string>& arguments) {
    ChartList list;
    for (const std::string& argument : arguments) {
        std::error_code ignored;
        if (fs::is_directory(argument, ignored)) {
            const std::vector<std::string> paths = charts_below(argument);
            list.paths.insert(list.paths.end(), paths.begin(), paths.end());
        } else {
            list.paths.push_back(argument);
        }
    }
    for (const std::string& path : list.paths)
        list.catalogue.add_file(path);
    return list;
}

}  // namespace viewer

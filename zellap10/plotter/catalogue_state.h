#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <zellap10/plotter/catalogue.h>
#include <zellap10/plotter/extent_index.h>
#include <zellap10/plotter/file_stamp.h>

namespace zellap10::plotter {

/// What the two files of a chart give; without entries if they are refused. Catalogues share it.
struct KnownFile {
    FileStamp stamp;
    std::shared_ptr<const std::vector<CatalogueEntry>> entries;
};

using KnownFiles = std::map<std::string, KnownFile>;  // by path

struct Catalogue::State {
    std::vector<std::shared_ptr<const CatalogueEntry>> entries;  // in the order of adding
    ExtentIndex index;                                           // of the entries
    KnownFiles added;
    KnownFiles loaded;
    int opened = 0;

    template <class Covers>
    [[nodiscard]] Entries chosen(const Extent& extent, Covers covers) const;
};

}  // namespace zellap10::plotter

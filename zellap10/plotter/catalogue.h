#pragma once

#include <memory>
#include <string>
#include <vector>

#include <zellap10/plotter/outline.h>

/// Which of many charts show a place.

namespace zellap10::plotter {

/// A chart of a catalogue, or an inset on one.
struct CatalogueEntry {
    std::string path;  ///< of the chart file
    int inset = -1;    ///< its place among the chart's insets, from 0; -1 for the chart itself
    std::string name;  ///< of the georeference file; a chart's without one there is that of its header
    double metres_per_pixel =
        0.0;          ///< from its first reference point to the one farthest from it on the picture
    Outline outline;  ///< in WGS 84
    Extent extent;    ///< of the outline
};

/// The record of an entry, once its chart is opened.
///
/// @param entry  of a catalogue
/// @param base   the record of the chart object that has opened the entry's file
/// @return       base or one of its insets; null where the file has changed and has no such inset any more
const CGEORec* record_of(const CatalogueEntry& entry, const CGEORec& base);

/// Charts and insets with what they cover. Files are opened for information only, and none stays open.
///
/// Entries are answered most detailed first, by metres a pixel: texts of scales come in too many forms. What
/// has fewer than two points comes last, equally detailed ones come in the order in which they were added.
/// Entries are good for as long as the catalogue is.
///
/// A catalogue may be asked from several threads at once while nothing is added to it.
class Catalogue {
public:
    /// An answer.
    using Entries = std::vector<const CatalogueEntry*>;

    /// Adds a chart and its insets, those of them that cover something. A file added again is there twice.
    ///
    /// @param path  the chart file
    /// @return      whether anything was added; not for a file that is no chart or has no georeference file
    bool add_file(const std::string& path);

    /// Adds the charts in a folder and in the folders below it: the files with a georeference file beside
    /// them. What cannot be read is passed over, and links to folders are not followed.
    ///
    /// @return  how many files were added
    int add_folder(const std::string& path);

    /// Those that cover a position in WGS 84.
    Entries covering(Position position) const;

    /// Those that have a place in common with an extent in WGS 84.
    Entries overlapping(const Extent& extent) const;

    /// All of them.
    Entries entries() const;

private:
    void add(CatalogueEntry entry);
    template <class Covers>
    Entries chosen(Covers covers) const;

    std::vector<std::unique_ptr<const CatalogueEntry>> entries_;  // in the order of the answers
};

}  // namespace zellap10::plotter

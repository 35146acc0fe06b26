#pragma once

/// @file
///
/// Finding the charts that show a position.

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <zellap10/plotter/outline.h>
#include <zellap10/plotter/sheet.h>

namespace zellap10::plotter {

/// A chart of a catalogue, or an inset on one.
struct CatalogueEntry {
    std::string path;          ///< of the chart file
    std::optional<int> inset;  ///< index in Sheet::insets(); empty for the chart itself
    std::string name;          ///< from the georeference file; if it has none, a chart has that of its header
    std::optional<double> metres_per_pixel;  ///< as Georeference::metres_per_pixel
    Outline outline;                         ///< in WGS 84
    Extent extent;                           ///< of the outline
};

/// The georeference of an entry after its chart was opened.
///
/// @param entry  of a catalogue
/// @param sheet  of the chart at the entry's path
/// @return       empty without a fit, and if the file has changed and no longer has the inset
[[nodiscard]] std::optional<Georeference> georeference_of(const CatalogueEntry& entry, const Sheet& sheet);

/// The files in a folder and in the folders below it.
struct FolderFiles {
    std::vector<std::string> paths;  ///< in alphabetical order
    int skipped_folders = 0;         ///< folders that could not be entered or read to their end
};

/// Searches a folder. Links to folders are not followed, except the path itself. Files with names that the
/// system cannot convert to text are ignored.
[[nodiscard]] FolderFiles files_below(const std::string& folder);

/// What Catalogue::add_folder did.
struct FolderReport {
    int added = 0;            ///< charts
    int skipped_folders = 0;  ///< as FolderFiles::skipped_folders
};

/// Charts and insets with what they cover. Files are opened for information only, and none stays open.
///
/// Entries are returned in order of metres per pixel, most detailed first, because the texts of scales have
/// too many forms. Entries without that figure come last. Equally detailed ones keep the order in which they
/// were added. Entries stay valid as long as the catalogue exists.
///
/// Several threads may query a catalogue at the same time while nothing is added to it.
class Catalogue {
public:
    /// The result of a query.
    using Entries = std::vector<const CatalogueEntry*>;

    /// Adds a chart and those of its insets that cover something. A file that is added again is in it twice.
    ///
    /// The file is opened for information only: a truncated file is added, although OpenZellap with infoOnly
    /// 0 refuses it.
    ///
    /// @param path  the chart file
    /// @return      false if nothing was added: the file is not a chart, its width or height is not positive,
    ///              or it has no georeference file that covers something
    bool add_file(const std::string& path);

    /// Adds the charts among the files of files_below: those with a georeference file beside them. Files that
    /// add_file refuses are ignored.
    FolderReport add_folder(const std::string& path);

    /// The entries that cover a position in WGS 84.
    [[nodiscard]] Entries covering(Position position) const;

    /// The entries that have a position in common with an extent in WGS 84.
    [[nodiscard]] Entries overlapping(const Extent& extent) const;

    /// All entries.
    [[nodiscard]] Entries entries() const;

private:
    void add(CatalogueEntry entry);
    template <class Covers>
    Entries chosen(Covers covers) const;

    std::vector<std::unique_ptr<const CatalogueEntry>> entries_;  // in the order of results
};

}  // namespace zellap10::plotter

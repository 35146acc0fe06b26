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
    /// The parts of a chart's outline that its insets hide with their frames, which are on the 80 pixels
    /// around the points of an inset.
    std::vector<Outline> hidden;

    /// Whether the chart or the inset shows a position: inside the outline and not hidden.
    [[nodiscard]] bool shows(Position position) const;
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
    int opened = 0;           ///< files that were opened, since they were not known by Catalogue::load
};

/// Charts and insets with what they cover. Files are opened for information only, and none stays open.
///
/// Entries are returned in order of metres per pixel, most detailed first, because the texts of scales have
/// too many forms. Entries without that figure come last. Equally detailed ones keep the order in which they
/// were added. Entries stay valid as long as the catalogue exists.
///
/// A catalogue of a large folder is filled fast with the help of a file that it was saved to before: `load`,
/// `add_folder`, `save`. Only new and changed charts are then opened.
///
/// Several threads may query a catalogue at the same time while nothing is added to it.
class Catalogue {
public:
    /// The result of a query.
    using Entries = std::vector<const CatalogueEntry*>;

    Catalogue();
    ~Catalogue();
    Catalogue(Catalogue&&) noexcept;             ///< entries stay at their addresses
    Catalogue& operator=(Catalogue&&) noexcept;  ///< entries stay at their addresses

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

    /// Saves what is known of the files that were added, and of those that were refused.
    ///
    /// @param path  a file of its own. It is replaced when all is written
    /// @return      false if it cannot be written
    bool save(const std::string& path) const;

    /// Loads what an earlier catalogue has saved. This adds no entries: it saves add_file from opening the
    /// charts whose files have the same sizes and times as then.
    ///
    /// @return  false if nothing was loaded: the file cannot be read, or is none of `save`
    bool load(const std::string& path);

    /// Makes add_file adopt what another catalogue knows, of files that have not changed since, without
    /// opening them.
    void know(const Catalogue& other);

    /// The entries that show a position in WGS 84, which no place hidden by an inset does.
    [[nodiscard]] Entries covering(Position position) const;

    /// The entries that have a position in common with an extent in WGS 84.
    [[nodiscard]] Entries overlapping(const Extent& extent) const;

    /// All entries.
    [[nodiscard]] Entries entries() const;

private:
    struct State;

    std::unique_ptr<State> state_;
};

}  // namespace zellap10::plotter

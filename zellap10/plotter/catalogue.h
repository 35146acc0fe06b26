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

class HiddenAreas;

/// A chart of a catalogue, or an inset on one.
struct CatalogueEntry {
    std::string path;          ///< of the chart file
    std::optional<int> inset;  ///< index in Sheet::insets(); empty for the chart itself
    std::string name;          ///< from the georeference file; if empty there, a chart has that of its header
    std::optional<double> metres_per_pixel;           ///< as Georeference::metres_per_pixel
    Outline outline;                                  ///< in WGS 84
    Extent extent;                                    ///< of the outline
    std::shared_ptr<const HiddenAreas> hidden_areas;  ///< for hidden()

    /// The parts of a chart's outline that its insets hide. An inset hides its points and the 80 pixels
    /// around them, where its frame is. The first call opens and fits a chart with insets. Several threads
    /// may call it.
    [[nodiscard]] const std::vector<Outline>& hidden() const;

    /// Whether the chart or the inset shows a position: inside the outline and not hidden.
    [[nodiscard]] bool shows(Position position) const;
};

/// The georeference of an entry after its chart was opened.
///
/// @param entry  of a catalogue
/// @param sheet  of the chart at the entry's path
/// @return       empty if there is no fit, or if the file has changed and no longer has the inset
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
    int opened = 0;           ///< files that were opened because Catalogue::load did not know them
};

/// Charts and insets with what they cover. Files are opened for information only, and none stays open.
///
/// Entries are returned in order of metres per pixel, most detailed first. The scales of the charts are not
/// used: they are texts in too many forms. Entries without metres per pixel come last. Equally detailed ones
/// keep the order in which they were added. Entries stay valid as long as the catalogue exists.
///
/// To fill the catalogue of a large folder fast, keep it in a file: call `load`, `add_folder` and `save`.
/// Then only new and changed charts are opened.
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

    /// Adds a chart and those of its insets that cover something. If you add a file twice, its
    /// entries are in the catalogue twice.
    ///
    /// The file is opened for information only: a truncated file is added, although OpenZellap with infoOnly
    /// 0 refuses it.
    ///
    /// @param path  the chart file
    /// @return      false if nothing was added: the file is not a chart, its width or height is not positive,
    ///              or it has no georeference file that covers something
    bool add_file(const std::string& path);

    /// Adds the charts among the files of files_below: those with a georeference file next to them. Files
    /// that add_file refuses are ignored.
    FolderReport add_folder(const std::string& path);

    /// Saves what is known about the files that were added or refused.
    ///
    /// @param path  the file to write. An existing file is replaced after everything is written
    /// @return      false if it cannot be written
    bool save(const std::string& path) const;

    /// Loads what an earlier catalogue has saved. This adds no entries. But add_file then does not open
    /// charts whose files still have the same sizes and times.
    ///
    /// @return  false if nothing was loaded: the file cannot be read, or `save` did not write it
    bool load(const std::string& path);

    /// Makes add_file adopt what another catalogue knows, of files that have not changed since, without
    /// opening them.
    void know(const Catalogue& other);

    /// The entries that show a position in WGS 84. A chart does not show what its insets hide.
    [[nodiscard]] Entries covering(Position position) const;

    /// The entries that have a position in common with an extent in WGS 84.
    [[nodiscard]] Entries overlapping(const Extent& extent) const;

    /// The entries whose extents have a position in common with an extent in WGS 84. This takes less time
    /// than `overlapping`.
    [[nodiscard]] Entries with_extent_in(const Extent& extent) const;

    /// All entries.
    [[nodiscard]] Entries entries() const;

private:
    struct State;

    std::unique_ptr<State> state_;
};

}  // namespace zellap10::plotter

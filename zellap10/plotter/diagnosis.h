#pragma once

/// @file
///
/// Why a chart does not open, and why it opens without a georeference, in words for people.
///
/// OpenZellap only returns 0. These functions examine the files again, so that a plotter calls them only when
/// it has something to report. Each costs about as much as opening a chart for information only.

#include <optional>
#include <string>

namespace zellap10::plotter {

/// What is wrong with a file.
enum class Fault {
    kNoFile,          ///< nothing exists at the path
    kNotAFile,        ///< the path is a folder, a pipe or a device
    kUnreadable,      ///< the file cannot be opened or read
    kTooLarge,        ///< over 2147483647 bytes
    kTooSmall,        ///< too small for the offset of its line table
    kNoEndOfText,     ///< the text part has no end, or too few bytes follow it
    kBitsPerPixel,    ///< bits per pixel outside 1 to 7
    kLineTable,       ///< the line table is not entirely inside the file
    kNoGeoreference,  ///< no georeference file
    kOtherCase,       ///< the name of the georeference file differs in upper and lower case
};

/// A fault and its description.
struct Diagnosis {
    Fault fault;       ///< the first one found
    std::string text;  ///< one or two English sentences; paths in it are spelled as given
};

/// Finds out why OpenZellap with infoOnly 0 refuses a chart file.
///
/// @param path  as for OpenZellap
/// @return      the first fault; empty for a file that is accepted. If it was refused all the same, memory
///              ran out or the file has changed since
[[nodiscard]] std::optional<Diagnosis> diagnose_chart(const std::string& path);

/// Finds out why OpenZellap finds no georeference file. Its path must be that of the chart up to the last dot
/// and ".GEO" in upper case. On many systems ".geo" is another name.
///
/// @param path  of the chart file, as for OpenZellap
/// @return      kOtherCase, kNoGeoreference, kNotAFile or kUnreadable; empty if a georeference file can be
///              opened, whatever it contains
[[nodiscard]] std::optional<Diagnosis> diagnose_georeference(const std::string& path);

}  // namespace zellap10::plotter

#pragma once

#include <optional>
#include <string>

/// @file
///
/// Why a chart does not open, and why it opens without a georeference, in words for people.
///
/// OpenZellap answers 0 and no more. These look at the files by themselves, so that a plotter asks them only
/// when it has something to tell; each costs about as much as an open for information only.

namespace zellap10::plotter {

/// What is wrong with a file.
enum class Fault {
    kNoFile,          ///< nothing stands at the path
    kNoFileOfBytes,   ///< a folder, a pipe or a device stands there
    kUnreadable,      ///< what stands there cannot be opened or read
    kTooLarge,        ///< over 2147483647 bytes
    kTooSmall,        ///< too small to hold where its line table begins
    kNoEndOfText,     ///< the text part has no end, or too little behind it
    kBitsPerPixel,    ///< bits per pixel outside 1 to 7
    kLineTable,       ///< a line table that is not wholly inside the file
    kNoGeoreference,  ///< no georeference file
    kOtherSpelling,   ///< a georeference file whose name is spelled otherwise
};

/// A fault in words.
struct Trouble {
    Fault fault;       ///< which one
    std::string text;  ///< one or two sentences in English; paths in it are spelled as they were given
};

/// Why OpenZellap with infoOnly 0 refuses a chart file, to an object that is new.
///
/// @param path  as OpenZellap takes it
/// @return      the first fault found; none in a file that is accepted. Where it was refused all the same,
///              memory ran out or the file has changed since
std::optional<Trouble> trouble_with_chart(const char* path);

/// Why OpenZellap finds no georeference file. Its path must be the chart's up to the last dot and ".GEO" in
/// upper case, which is another name than ".geo" where the system tells the two apart.
///
/// @param path  the chart file, as OpenZellap takes it
/// @return      kOtherSpelling, kNoGeoreference, kNoFileOfBytes or kUnreadable; none where a georeference
///              file can be opened, whatever it holds
std::optional<Trouble> trouble_with_georeference(const char* path);

}  // namespace zellap10::plotter

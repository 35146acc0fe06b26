#pragma once

#include <cstddef>
#include <istream>
#include <string>

namespace zellap10::platform {

/// Ends the text of a chart file or a georeference file.
constexpr char kEndOfText = 0x1A;

/// Reads a stream that was opened in binary mode by the rules of a text file, the same on every system: CR LF
/// is one line end, a CR elsewhere is a character like any other, and the first kEndOfText ends the text as
/// if the file stopped there. A stream that cannot be read on ends the text too. It is read in blocks; where
/// the text has ended, the stream is at its end.
class TextReader {
public:
    /// How a line ended, and whether it was longer than it may be.
    struct Line {
        bool ended;  ///< by a line end; false where the text ended first
        bool cut;    ///< characters beyond the limit were dropped
    };

    // cppcheck-suppress uninitMemberVar ; of the block, only what was read is looked at
    explicit TextReader(std::istream& stream) : stream_(stream) {}

    /// Reads the rest of the current line without its line end.
    ///
    /// @param text   receives the line, at most `limit` characters of it; a zero byte ends the text that it
    ///               receives, as it ends any C text, and what follows up to the line end is dropped
    /// @param limit  characters
    Line read_line(std::string& text, std::size_t limit);

    /// Whether the next character of the text is this one; it is not taken.
    bool next_is(char character);

private:
    // Whether the text goes on; its next character is then at next_.
    bool has_more();

    std::istream& stream_;
    const char* next_ = block_;
    const char* end_ = block_;
    char block_[16384];
};

}  // namespace zellap10::platform

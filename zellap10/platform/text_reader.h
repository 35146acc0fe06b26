#pragma once

#include <cstddef>
#include <istream>
#include <string>

namespace zellap10::platform {

/// Ends the text of a chart file or a georeference file.
constexpr char kEndOfText = 0x1A;

/// Reads a stream that was opened in binary mode by the rules of a text file, the same on every system: CR LF
/// is one line end, a CR elsewhere is an ordinary character, and the first kEndOfText ends the text as
/// if the file ended there. A read error ends the text too. The stream is read in blocks. At the end of the
/// text, the stream is at its end.
class TextReader {
public:
    /// How a line ended, and whether it was longer than it may be.
    struct Line {
        bool ended;  ///< by a line end; false if the text ended first
        bool cut;    ///< characters beyond the limit were dropped
    };

    // cppcheck-suppress uninitMemberVar ; only the part of the block that was read is used
    explicit TextReader(std::istream& stream) : stream_(stream) {}

    /// Reads the rest of the current line without its line end.
    ///
    /// @param text   receives the line, at most `limit` characters of it. A zero byte ends the text that it
    ///               receives, as in any C text, and the rest of the line is dropped
    /// @param limit  characters
    Line read_line(std::string& text, std::size_t limit);

    /// Whether the next character of the text is this one. It is not consumed.
    bool next_is(char character);

private:
    // Whether the text continues. Its next character is then at next_.
    bool has_more();

    std::istream& stream_;
    const char* next_ = block_;
    const char* end_ = block_;
    char block_[16384];
};

}  // namespace zellap10::platform

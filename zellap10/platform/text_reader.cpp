#include "zellap10/platform/text_reader.h"

#include <algorithm>
#include <cstring>

namespace zellap10::platform {

namespace {

const char* find(const char* begin, const char* end, char character) {
    const void* found = std::memchr(begin, character, static_cast<std::size_t>(end - begin));
    return found != nullptr ? static_cast<const char*>(found) : end;
}

}  // namespace

bool TextReader::has_more() {
    if (next_ < end_) return true;
    // istream::read, and not the stream's buffer, because a read error must end the text and not throw.
    stream_.read(block_, sizeof block_);
    const char* const read = block_ + stream_.gcount();
    next_ = block_;
    end_ = find(block_, read, kEndOfText);
    if (end_ < read) stream_.setstate(std::ios::eofbit);
    return next_ < end_;
}

bool TextReader::next_is(char character) {
    return has_more() && *next_ == character;
}

TextReader::Line TextReader::read_line(std::string& text, std::size_t limit) {
    text.clear();
    std::size_t length = 0;
    bool ended = false;
    char last = '\0';
    while (!ended && has_more()) {
        const char* const stop = find(next_, end_, '\n');
        const auto count = static_cast<std::size_t>(stop - next_);
        text.append(next_, std::min(count, limit - text.size()));
        length += count;
        if (count > 0) last = stop[-1];
        ended = stop < end_;
        next_ = ended ? stop + 1 : stop;
    }
    if (ended && last == '\r') --length;
    text.resize(std::min({text.size(), length, text.find('\0')}));
    return {ended, length > limit};
}

}  // namespace zellap10::platform

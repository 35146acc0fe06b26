#include <zellap10/platform/text_reader.h>

namespace zellap10::platform {

namespace {

constexpr char kEndOfText = 0x1A;

}  // namespace

int TextReader::take() {
    char c = kEndOfText;
    // istream::get, and not the buffer behind it, because a read error must end the text and not throw.
    if (ended_ || !stream_.get(c) || c == kEndOfText) {
        ended_ = true;
        return kEnd;
    }
    if (c == '\r' && stream_.peek() == '\n') stream_.get(c);
    return static_cast<unsigned char>(c);
}

bool TextReader::next_is(char character) {
    // Only asked at the start of a line, where a CR LF pair cannot be mistaken: no caller looks for CR.
    return !ended_ && stream_.peek() == static_cast<unsigned char>(character);
}

TextReader::Line TextReader::read_line(std::string& text, std::size_t limit) {
    text.clear();
    std::size_t length = 0;
    bool zero_seen = false;
    int c;
    while ((c = take()) != '\n' && c != kEnd) {
        zero_seen = zero_seen || c == '\0';
        if (!zero_seen && length < limit) text.push_back(static_cast<char>(c));
        ++length;
    }
    return {c == '\n', length > limit};
}

}  // namespace zellap10::platform

#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <zellap10/platform/text_reader.h>

namespace {

using zellap10::platform::TextReader;

constexpr std::size_t kLimit = 4;

// Every line of a text as "content/ended/cut", up to and including the first that no line end ended; how it
// begins can be asked before it is read.
std::vector<std::string> lines_of(const std::string& bytes) {
    std::istringstream stream(bytes);
    TextReader reader(stream);
    std::vector<std::string> lines;
    for (bool more = true; more;) {
        std::string text;
        const bool begins_blank = reader.next_is(' ') && reader.next_is(' ');
        const TextReader::Line line = reader.read_line(text, kLimit);
        EXPECT_EQ(begins_blank, text[0] == ' ') << text;
        lines.push_back(text + (line.ended ? "/ended" : "/open") + (line.cut ? "/cut" : ""));
        more = line.ended;
    }
    EXPECT_FALSE(reader.next_is(' ')) << "behind the end";
    return lines;
}

struct Row {
    const char* name;
    std::string bytes;
    std::vector<std::string> lines;
};

const Row kRows[] = {
    {"nothing", "", {"/open"}},
    {"LF and CR LF alike", "a\nb\r\nc", {"a/ended", "b/ended", "c/open"}},
    {"empty lines", "\n\r\n", {"/ended", "/ended", "/open"}},
    {"CR alone is a character", "a\rb\r", {"a\rb\r/open"}},
    {"CR CR LF keeps the first", "a\r\r\n", {"a\r/ended", "/open"}},
    {"0x1A ends the text", "a\nb\x1Ax\n", {"a/ended", "b/open"}},
    {"0x1A behind CR", "a\r\x1A", {"a\r/open"}},
    {"blanks behind it", " x\xFF\x1A" + std::string(20000, ' '), {" x\xFF/open"}},
    {"a blank behind a line and it", "a\n\x1A ", {"a/ended", "/open"}},
    {"at the limit", "abcd\r\n", {"abcd/ended", "/open"}},
    {"beyond the limit", "abcde\nf", {"abcd/ended/cut", "f/open"}},
    {"beyond the limit, open", "abcdefgh", {"abcd/open/cut"}},
    {"a zero ends a line's text", std::string("a\0b\nc", 5), {"a/ended", "c/open"}},
};

TEST(TextReaderLines, FollowTheRulesOfTextFiles) {
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(lines_of(row.bytes), row.lines);
    }
}

// Whatever stands where one block of the stream ends and the next begins.
TEST(TextReaderLines, AreTheSameAcrossBlocks) {
    for (std::size_t length = 16375; length < 16390; ++length) {
        SCOPED_TRACE(length);
        EXPECT_EQ(
            lines_of(std::string(length, 'x') + "\r\n\n\r\nab\r\rc\r\n\x1A\n"),
            (std::vector<std::string>{"xxxx/ended/cut", "/ended", "/ended", "ab\r\r/ended/cut", "/open"}));
        std::istringstream stream(std::string(length, 'x') + "\n " + std::string(length, 'y'));
        TextReader reader(stream);
        std::string text;
        EXPECT_TRUE(reader.next_is('x'));
        reader.read_line(text, kLimit);
        EXPECT_TRUE(reader.next_is(' '));
        reader.read_line(text, 20000);
        EXPECT_EQ(text, " " + std::string(length, 'y'));
    }
}

}  // namespace

#include <functional>
#include <string>

#include <gtest/gtest.h>

#include <zellap10/platform/types.h>

namespace {

TEST(CStringText, HoldsWhatItWasGiven) {
    CString text;
    EXPECT_TRUE(text.IsEmpty());
    EXPECT_STREQ(text, "");
    text = "Ca\xF1on";
    const CString copy(text);
    text = static_cast<const char*>(nullptr);
    EXPECT_EQ(copy.GetLength(), 5);
    EXPECT_TRUE(copy == "Ca\xF1on" && copy != text && text == "");
    CString self = copy;
    self = static_cast<const char*>(self) + 3;
    EXPECT_STREQ(self, "on");
}

// Each comparison with a text on either side, and with a text object on both, as those of strings.
TEST(CStringText, IsComparedByteByByte) {
    const char* const texts[] = {nullptr, "", "Bay", "Bay 2", "Channel", "Solent", "Z", "a", "z", "\xC9"};
    for (const char* a : texts) {
        for (const char* b : texts) {
            const CString left(a), right(b);
            const int order = std::string(left).compare(right);
            SCOPED_TRACE(std::string(left) + " and " + std::string(right));
            const auto expect_all = [&](auto compare) {
                const bool expected = compare(order, 0);
                EXPECT_TRUE(compare(left, right) == expected && compare(left, b) == expected &&
                            compare(a, right) == expected);
            };
            expect_all(std::equal_to<>());
            expect_all(std::not_equal_to<>());
            expect_all(std::less<>());
            expect_all(std::greater<>());
            expect_all(std::less_equal<>());
            expect_all(std::greater_equal<>());
        }
    }
}

TEST(CStringFormat, PrintsAsPrintf) {
    CString text("7");
    text.Format("+%3.3d %2.2d %05.2f %s", 12, 3, 4.256, static_cast<const char*>(text));
    EXPECT_STREQ(text, "+012 03 04.26 7");
    const std::string name(5000, 'x');
    text.Format("<%s>", name.c_str());
    EXPECT_EQ(text.GetLength(), 5002);
    text.Format("%s", "");
    EXPECT_TRUE(text.IsEmpty());
#if !defined(_WIN32)  // where printf refuses nothing
    text = "what was there";
    text.Format("<%ls>", L"\u20AC");
    EXPECT_TRUE(text.IsEmpty()) << "printf refuses a character that the C locale does not have";
#endif
}

TEST(CListPlaces, StayGoodWhileTheListGrows) {
    CList<int, int> list;
    EXPECT_EQ(list.GetHeadPosition(), nullptr);
    POSITION place = list.AddTail(1);
    for (int i = 2; i <= 100; ++i)
        list.AddTail(i);
    list.GetNext(place) = -1;
    EXPECT_EQ(list.GetNext(place), 2);
    int sum = 0;
    for (POSITION at = list.GetHeadPosition(); at != nullptr;)
        sum += list.GetNext(at);
    EXPECT_EQ(sum, 5050 - 2);
}

}  // namespace

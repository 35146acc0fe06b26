#include <zellap10/platform/types.h>

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(CStringText, HoldsWhatItWasGiven) {
    CString text;
    EXPECT_TRUE(text.IsEmpty());
    EXPECT_STREQ(text, "");
    text =
        "Ca\xF1"
        "al";
    const CString copy(text);
    text = static_cast<const char*>(nullptr);
    EXPECT_EQ(copy.GetLength(), 5);
    EXPECT_TRUE(copy ==
                    "Ca\xF1"
                    "al" &&
                copy != text && text == "");
    CString self = copy;
    self = static_cast<const char*>(self) + 3;
    EXPECT_STREQ(self, "al");
}

struct OrderRow {
    const char* name;
    const char* smaller;
    const char* larger;
};

const OrderRow kOrderRows[] = {{"letters", "Channel", "Solent"},
                               {"upper case first", "Z", "a"},
                               {"a front of it", "Bay", "Bay 2"},
                               {"bytes above 127", "z", "\xC9"},
                               {"null is empty", nullptr, "a"}};

// Each of the six with a text on either side, and with a text object on both; addresses the other way round.
TEST(CStringText, IsComparedByteByByte) {
    for (const OrderRow& row : kOrderRows) {
        SCOPED_TRACE(row.name);
        const CString texts[] = {row.larger, row.smaller};
        const CString& large = texts[0];
        const CString& small = texts[1];
        EXPECT_TRUE(small < large && small < row.larger && row.smaller < large);
        EXPECT_TRUE(small <= large && small <= row.larger && row.smaller <= large);
        EXPECT_TRUE(small != large && small != row.larger && row.smaller != large);
        EXPECT_TRUE(large > small && large > row.smaller && row.larger > small);
        EXPECT_TRUE(large >= small && large >= row.smaller && row.larger >= small);
        EXPECT_FALSE(large < small || large < row.smaller || row.larger < small);
        EXPECT_FALSE(large <= small || large <= row.smaller || row.larger <= small);
        EXPECT_FALSE(large == small || large == row.smaller || row.larger == small);
        EXPECT_FALSE(small > large || small > row.larger || row.smaller > large);
        EXPECT_FALSE(small >= large || small >= row.larger || row.smaller >= large);
        const CString copy(small);
        EXPECT_TRUE(small == copy && small <= copy && small >= copy && !(small < copy) && !(small > copy));
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

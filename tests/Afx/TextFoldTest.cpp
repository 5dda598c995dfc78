#include "Afx/text/TextFold.h"

#include <gtest/gtest.h>

#include <tuple>

namespace
{
int Sign(int value) { return (value > 0) - (value < 0); }
} // namespace

TEST(CompareNoCase, FoldsThreeAlphabets)
{
    const std::tuple<const char*, const char*, int, const char*> rows[] = {
        {"abcdefg[", "ABCDEFG{", -1, "behind the letters, among eight at once"},
        {"abcdefg@", "ABCDEFG`", -1, "before the letters"},
        {"straße", "STRASSE", 1, "sharp s has no pair"},
        {"\xC3\xC3\xA0", "\xC3\xC3\x80", 0, "whole again after a broken byte"},
    };
    for (const auto& [a, b, order, why] : rows) {
        EXPECT_EQ(Sign(Afx::CompareNoCase(a, b)), order) << why;
        EXPECT_EQ(Sign(Afx::CompareNoCase(b, a)), -order) << why << ", turned round";
    }
}

TEST(CompareNoCase, OrdersAsTheFoldedBytesDo)
{
    // Every text of up to three of these bytes, broken ones included, against every other.
    const char bytes[] = {'\0', 'A', 'a', 'z', '\x80', '\x98', '\xB8', '\xBF', '\xC3', '\xC4', '\xC5', '\xE2'};
    std::vector<std::string> texts{""};
    for (std::size_t i = 0; texts[i].size() < 3; ++i)
        for (const char byte : bytes)
            texts.push_back(texts[i] + byte);
    for (std::size_t i = 0; i < texts.size(); i += 7)
        for (const std::string& other : texts) {
            const int order = Afx::FoldLower(texts[i]).compare(Afx::FoldLower(other));
            ASSERT_EQ(Sign(Afx::CompareNoCase(texts[i], other)), Sign(order));
            for (const char* const front : {"", "ABCDEF", "ABCDEFGHIJKLMN"}) // eight at once, with and without a rest
                ASSERT_EQ(Afx::EqualNoCase(front + texts[i], Afx::FoldLower(front) + other), order == 0);
        }
}

TEST(Fold, MapsEveryPairThereAndBack)
{
    int pairs = 0;
    for (unsigned code = 0x80; code < 0x180; ++code) {
        const std::string text{static_cast<char>(0xC0 | code >> 6), static_cast<char>(0x80 | (code & 0x3F))};
        const std::string lower = Afx::FoldLower(text), upper = Afx::FoldUpper(text);
        EXPECT_TRUE(lower == text || upper == text) << code;
        EXPECT_TRUE(Afx::EqualNoCase(lower, upper)) << code;
        pairs += lower != text;
    }
    EXPECT_EQ(pairs, 30 + 62) << "capitals of Latin-1 and of Latin Extended-A";
}

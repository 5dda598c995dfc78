#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Afx/text/TextFold.h"
#include "MorvUt/mappings/TypeMappings.h"

namespace
{

constexpr int kUntouched = -77;

template<class Lookup>
int IndexBy(Lookup lookup, const TypeMapping* table, const char* text)
{
    int index = kUntouched;
    const int found = lookup(table, text, &index);
    EXPECT_EQ(found, index == kUntouched ? 0 : 1) << (text ? text : "null");
    return index;
}
int IndexOfKey(const TypeMapping* table, const char* key) { return IndexBy(GetMapIndexFromShortName, table, key); }
int IndexOfName(const TypeMapping* table, const char* name) { return IndexBy(GetMapIndexFromLongName, table, name); }

// Keys that the published tables do not hold, but a module's may.
const TypeMapping kOddTable[] = {
    {1, "Same", "One"},
    {2, "SAME", "Two"},
    {3, "\xC3\x89t\xC3\xA9", "Three"}, // "Été"
    {4, "A@longer[key", "Four"},
    {5, "short", "One"},
    {1, "other", "Six"},
    {7, "Czech \xC4\x8C", "Seven"}, // ends with a capital C with caron
    {8, "EX_BADDB", "Eight"},
    {9, "EX_BADDBX", "Nine"},
    {10, "abc\xC3\xA9t\xC3\xA9", "Ten"}, // not ASCII from the fourth character on
    {11, "EX_", "Eleven"},
    kEndOfTable,
};

// The lookup passes rows by their marks; this is the rule as it reads.
void ExpectFirstRowEqualButForCase(const TypeMapping* table, const std::string& wanted)
{
    const TypeMapping* row = table;
    while (row->shortName && !Afx::EqualNoCase(row->shortName, wanted.c_str()))
        ++row;
    EXPECT_EQ(IndexOfKey(table, wanted.c_str()), row->shortName ? row->index : kUntouched) << wanted;
}

TEST(GetMapIndexFromShortName, IsTheFirstRowEqualButForCase)
{
    std::vector<const TypeMapping*> tables{kOddTable};
    for (const NamedMapping& mapping : GetNamedMappings())
        tables.push_back(mapping.table);
    for (const TypeMapping* table : tables)
        for (const TypeMapping* row = table; row->shortName; ++row) {
            const std::string key = row->shortName;
            for (std::size_t place = 0; place <= key.size(); ++place) {
                const std::string start = key.substr(0, place), rest = key.substr(place);
                std::string flipped = key;
                if (place < key.size())
                    flipped[place] = static_cast<char>(flipped[place] ^ 0x20);
                for (const std::string& wanted : {start, rest, start + ' ' + rest, start + "\xC3\xA9" + rest, flipped})
                    ExpectFirstRowEqualButForCase(table, wanted);
            }
        }
}

TEST(GetMapIndexFromLongName, MindsCase)
{
    EXPECT_EQ(IndexOfName(OtherOutRefs, "Gift Aid"), 1);
    EXPECT_EQ(IndexOfName(OtherOutRefs, "gift aid"), kUntouched);
    EXPECT_EQ(IndexOfName(OtherOutRefs, "Gift Aid and Covenants"), kUntouched) << "the table's own spelling counts";
    EXPECT_EQ(IndexOfName(kOddTable, "One"), 1) << "the first of two";
    EXPECT_EQ(IndexOfName(mapScheduleNumbers, ""), 1) << "all names are empty: the first row";
    // Names end at the first row without a name, keys at the first without a key.
    const TypeMapping table[] = {{1, "a", "A"}, {2, nullptr, "B"}, {3, "c", nullptr}, {4, "d", "D"}, kEndOfTable};
    EXPECT_EQ(IndexOfName(table, "B"), 2);
    EXPECT_EQ(IndexOfName(table, "D"), kUntouched);
    EXPECT_EQ(IndexOfKey(table, "a"), 1);
    EXPECT_EQ(IndexOfKey(table, "c"), kUntouched);
    EXPECT_EQ(GetMapCount(table), 1u);
    TypeMapping filled[2];
    filled[0].shortName = "late"; // so its mark says nothing
    EXPECT_EQ(IndexOfKey(filled, "LATE"), 0);
}

TEST(GetMapNamesFromIndex, TakeTheFirstRowAndLeaveTheOutputOtherwise)
{
    const char* text = "untouched";
    EXPECT_FALSE(GetMapLongNameFromIndex(mapPSBTypes, &text, 1000) ||
                 GetMapShortNameFromIndex(mapPSBTypes, &text, 1000));
    EXPECT_STREQ(text, "untouched");
    EXPECT_EQ(GetMapLongNameFromIndex(mapNewEmployForeignAspectsGrid, &text, 50), 1);
    EXPECT_STREQ(text, "Foreign Tax with No Tax Credit Relief Claimed") << "the code stands twice";
}

TEST(Lookups, FindNothingWithoutATableOrAText)
{
    const char* text = nullptr;
    EXPECT_EQ(GetMapCount(nullptr), 0u);
    EXPECT_EQ(IndexOfKey(nullptr, "UKDIV"), kUntouched);
    EXPECT_EQ(IndexOfName(nullptr, "UK Dividend"), kUntouched);
    EXPECT_EQ(IndexOfKey(Shares, nullptr), kUntouched);
    EXPECT_EQ(IndexOfName(Shares, nullptr), kUntouched);
    EXPECT_FALSE(GetMapShortNameFromIndex(nullptr, &text, 0) || GetMapLongNameFromIndex(nullptr, &text, 0) || text);
    EXPECT_FALSE(GetMapShortNameFromIndex(Shares, nullptr, 0) || GetMapLongNameFromIndex(Shares, nullptr, 0));
    EXPECT_FALSE(GetMapIndexFromShortName(Shares, "UKDIV", nullptr) ||
                 GetMapIndexFromLongName(Shares, "UK Dividend", nullptr));
}

} // namespace

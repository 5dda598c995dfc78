#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <regex>
#include <set>
#include <string>
#include <string_view>
#include <tuple>

#include "MorvUt/mappings/TypeMappings.h"

namespace
{

struct Published
{
    int position;
    std::string_view name;
    unsigned rows;
    std::uint32_t digest;
};
constexpr Published kPublished[] = {
#define TABLE(position, name, rows, digest) {position, name, rows, digest},
#define ROW(table, index, key, name)
#include "MorvUt/mappings/PublishedTables.inc"
#undef TABLE
#undef ROW
};

std::uint32_t Digest(const TypeMapping* table)
{
    std::uint32_t digest = 0x811C9DC5;
    for (; table->shortName; ++table)
        for (const char c : std::to_string(table->index) + " " + table->shortName + ";")
            digest = (digest ^ static_cast<unsigned char>(c)) * 0x01000193;
    return digest;
}

std::string NameOf(const NamedMapping& mapping)
{
    return *mapping.name ? mapping.name : "position " + std::to_string(mapping.position);
}

TEST(AllMappings, HoldThePublishedCodesAndKeysInOrder)
{
    const auto mappings = GetNamedMappings();
    ASSERT_EQ(mappings.size(), std::size(kPublished));
    for (std::size_t i = 0; i < mappings.size(); ++i) {
        const Published& expected = kPublished[i];
        SCOPED_TRACE(NameOf(mappings[i]));
        EXPECT_EQ(mappings[i].position, expected.position);
        EXPECT_EQ(mappings[i].name, expected.name);
        EXPECT_EQ(GetMapCount(mappings[i].table), expected.rows);
        EXPECT_EQ(Digest(mappings[i].table), expected.digest) << "a code, a key or their order has changed";
        EXPECT_TRUE(expected.position == kOutsideMappings || ppAllMappings[expected.position] == mappings[i].table);
    }
    EXPECT_EQ(ppAllMappings[101], nullptr);
    EXPECT_EQ(ppAllMappings[5], mapCapitalAllowances2008);
    EXPECT_EQ(ppAllMappings[98], mapTaxPayerStatus);
}

bool IsMeantToBeNameless(const TypeMapping* table, std::string_view key)
{
    return table == mapScheduleNumbers || key.empty() || key == "CG_BLANK" || key.ends_with("MaxGainTypes") ||
           key == "TrackingEndSourceTypes";
}

TEST(AllMappings, NamesArePlainTextAndStandOnce)
{
    // Written out, under the body's name of today, and with the Acts' own numerals.
    const std::regex clipped(R"(\b(BPRA|ER|ICT|IR|NRP|NSRF|RPI|SBA|ZEGV)\b|\bCase \d|Zero Emission)");
    for (const NamedMapping& mapping : GetNamedMappings()) {
        std::set<std::string_view> seen;
        for (const TypeMapping* row = mapping.table; row->shortName; ++row) {
            SCOPED_TRACE(NameOf(mapping) + ": " + row->shortName);
            ASSERT_NE(row->longName, nullptr);
            const std::string_view name = row->longName;
            EXPECT_EQ(name.empty(), IsMeantToBeNameless(mapping.table, row->shortName));
            EXPECT_TRUE(seen.insert(name).second || name.empty()) << name << " leads to another row";
            EXPECT_TRUE(
                std::all_of(name.begin(), name.end(), [](char c) { return (c >= ' ' && c < 127) || c == '\t'; }));
            EXPECT_FALSE(name.starts_with(' ') || name.ends_with(' ') || name.find("  ") != name.npos) << name;
            EXPECT_FALSE(name.size() > 100 || std::regex_search(row->longName, clipped)) << name;
        }
    }
}

TEST(AllMappings, RowsWhoseTextIsFixedAreExact)
{
    const std::tuple<const TypeMapping*, int, const char*, const char*> rows[] = {
#define TABLE(position, name, rows, digest)
#define ROW(table, index, key, name) {table, index, key, name},
#include "MorvUt/mappings/PublishedTables.inc"
#undef TABLE
#undef ROW
    };
    for (const auto& [table, index, expectedKey, expectedName] : rows) {
        const char *key = nullptr, *name = nullptr;
        EXPECT_TRUE(GetMapShortNameFromIndex(table, &key, index) && GetMapLongNameFromIndex(table, &name, index));
        EXPECT_STREQ(key, expectedKey);
        EXPECT_STREQ(name, expectedName);
    }
}

} // namespace

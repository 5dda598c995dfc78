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
#include "MorvUt/mappings/PublishedTables.inc"
#undef TABLE
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

// With their own spelling, and with the neighbours that change places where somebody sorts a table by its codes.
TEST(AllMappings, RowsWhoseTextIsFixedAreExact)
{
    const std::tuple<const TypeMapping*, int, const char*, const char*> rows[] = {
        {OtherOutRefs, 0, "CHARCOV", "Charitable Covenants"},
        {OtherOutRefs, 1, "GIFTAID", "Gift Aid"},
        {OtherOutRefs, 9, "UKPRPRNT", "UK Property Rents\tfor non uk landlords"},
        {OtherOutRefs, 10, "YRINTABR", "Yearly Interest Abraod"},
        {OtherOutRefs, 14, "GAIDCOV", "Gift Aid and Covernants"},
        {OtherOutRefs, 17, "ANNPAY", "Annities and Annual Payments"},
        {OtherOutRefs, 27, "SITR", "Social Investment Relief"},
        {mapPSBCategorys, 100, "psbC_Foreign", "Foreign"},
        {mapPSBCategorys, 200, "psbC_RetirementPensions", "Retirement Pensions"},
        {mapPSBCategorys, 300, "psbC_StateBenefits", "State Benefits"},
        {mapPSBTypes, 1085, "psbT_CarersAllowances", "Carer's Allowance"},
        {mapPSBTypes, 1140, "psbT_TaxableIncapacityBenefitEmploymentAndSupportAllowance",
         "Taxable Incapacity Benefit / Employment and Support Allowance"},
        {ReportDateFormats, 0, "UK", "%d/%m/%y"},
        {ReportDateFormats, 1, "USA", "%m/%d/%y"},
        {ReportDateFormats, 2, "UK_Text", "%d %b %Y"},
        {ReportDateFormats, 3, "USA_Text", "%b %d %Y"},
        {ReportDateFormats, 4, "UK_FullText", "%#d %B %Y"},
        {ReportDateFormats, 5, "USA_FullText", "%B %#d %Y"},
        {DividendType, 10, "DIV_TYPE_ORDINARY", "Ordinary"},
        {mapScheduleNumbers, 3, "RECORD_EMPLOYMENT", ""},
        {TradeLossesSections, 0, "CONT380", "380 (Continuing)"},
        {TradeLossesSections, 1, "EARLY381", "381 (Early years)"},
        {TradeLossesSections, 2, "TERM388", "388 (Terminal) and 380 (Current)"},
        {TradeLossesSections0708, 0, "CONT_S64", "s.64 (Continuing)"},
        {TradeLossesSections0708, 1, "EARLY_S72", "s.72 (Early years)"},
        {TradeLossesSections0708, 2, "TERM_S89", "s.89 (Terminal) and s.64 (Current)"},
        {mapExpenditure, 0, "EX_CSTSL", "Cost of Sales"},
        {mapCapital, 4, "CP_BLAED", "Balance at End of Period"},
        {mapPropTaxAdjustments, 7, "AJ_AIA", "Annual Investment Allowance"},
        {PersonalAllowanceTypes, 1, "PERSAll", "All"},
        {BTaxTaxedInvestmentIncomeEnums, 3, "tiiOtherUKSourcesNet", "Other UK Sources Net"},
        {BTaxNoTaxInvestmentIncomeEnums, 4, "ntinvOtherUKSourcesGross", "Other UK Sources Gross"},
        {mapMembersBenefitsGrid, 47, "mpB_MembersSupportAllowCapital", "Members' Support Allowance, Capital"},
        {ppAllMappings[80], 75, "pds_OverseasPensionSchemeTaxableRefundsofContributions",
         "Overseas Pension Scheme Taxable Refunds of Contributions"},
    };
    for (const auto& [table, index, expectedKey, expectedName] : rows) {
        const char *key = nullptr, *name = nullptr;
        EXPECT_TRUE(GetMapShortNameFromIndex(table, &key, index) && GetMapLongNameFromIndex(table, &name, index));
        EXPECT_STREQ(key, expectedKey);
        EXPECT_STREQ(name, expectedName);
    }
}

} // namespace

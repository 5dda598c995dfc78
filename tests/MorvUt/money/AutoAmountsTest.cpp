#include "Amounts.h"
#include "MorvUt/money/Pence.h"
#include "support/Test.h"

TEST(ConvertAutoToStr, MarksWhatWasCalculated)
{
    const ::Test::Row<__int64, const char*, const char*, const char*> rows[] = {
        {-2147483647, "AUTO", "", "AUTO", "marker, also when £21,474,836.47 was calculated"},
        {-2147483646, "A21474836.46", "A21474836.46", "A21,474,836.46", "a penny less is not"},
        {2147483647, "21474836.47", "21474836.47", "21,474,836.47", "nor is one typed"},
        {0, "", "", "", "empty"},
        {-123456, "A1234.56", "A1234.56", "A1,234.56", "calculated"},
        {-99999, "A999.99", "A999.99", "A999.99", "no separator right behind the A"},
        {::Test::kMinPence, "A92233720368547758.08", "A92233720368547758.08", "A92,233,720,368,547,758.08", "lowest"},
    };
    for (const auto& [value, text, blank, withCommas, why] : rows) {
        EXPECT_EQ(ConvertAutoToStr(value, 0), text) << why;
        EXPECT_EQ(ConvertAutoToStr(value, 1), blank) << why;
        const ::Test::CommaScope commas;
        EXPECT_EQ(ConvertAutoToStr(value, 0), withCommas) << why;
    }
}

TEST(ConvertStrToAuto, ReadsMarkerAndAmounts)
{
    const ::Test::Case<const char*, __int64> rows[] = {
        {"auto", kAutoMarker, "marker"},      {"", 0, "empty"},
        {" A U T O ", kAutoMarker, "blanks"}, {"a", kAutoMarker, "case"},
        {" a 12.50 ", -1250, "calculated"},   {"12.50", 1250, "typed"},
        {"-12.50", -1250, "as calculated"},   {"A-12.50", 1250, "the negation"},
        {"AUTOMATIC", 0, "no amount"},        {"A21474836.47", kAutoMarker, "marker"},
        {"12.5.0", 0, "no amount"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(ConvertStrToAuto(row.in), row.out) << row.why;
    EXPECT_EQ(ConvertStrToAuto("A922337203685477.5807"), -92233720368547758) << "largest amount";
}

#include "Afx/time/DateTime.h"

#include <limits>

#include "Afx/text/Decimal.h"
#include "support/Test.h"

TEST(COleDateTime, CountsFromTheEndOf1899)
{
    // out: empty: not valid
    for (const auto& [in, out, why] : ::Test::Table<double, const char*>("Afx/DateTime.tsv"))
        EXPECT_EQ(COleDateTime(in).FormatIso(), out) << why;
}

TEST(COleDateTime, KeepsEveryMillisecond)
{
    for (const int year : {100, 1899, 1900, 2024, 9999})
        for (int ms = 0; ms < 86'400'000; ms += 1'234'567) {
            const Afx::LocalTime time{year, 12, 29, ms / 3'600'000, ms / 60'000 % 60, ms / 1000 % 60, ms % 1000};
            const COleDateTime date(time);
            ASSERT_EQ(date.Fields(), time);
            ASSERT_EQ(COleDateTime::ParseIso(date.FormatIso().View()), date);
        }
}

TEST(COleDateTime, RefusesFieldsThatDoNotExist)
{
    EXPECT_EQ(COleDateTime(2024, 2, 29, 23, 59, 59, 999).GetStatus(), COleDateTime::valid);
    const COleDateTime refused[] = {
        {2023, 2, 29, 0, 0, 0}, {2024, 13, 1, 0, 0, 0}, {2024, 0, 1, 0, 0, 0},     {2024, 1, 0, 0, 0, 0},
        {99, 1, 1, 0, 0, 0},    {10000, 1, 1, 0, 0, 0}, {2024, 1, 1, 24, 0, 0},    {2024, 1, 1, 0, 60, 0},
        {2024, 1, 1, 0, 0, 60}, {2024, 1, 1, -1, 0, 0}, {2024, 1, 1, 0, 0, 0, -1}, {2024, 1, 1, 0, 0, 0, 1000},
    };
    for (const COleDateTime& time : refused) {
        EXPECT_EQ(time.GetStatus(), COleDateTime::invalid);
        EXPECT_EQ(time.Fields(), Afx::LocalTime{});
    }
}

TEST(COleDateTime, ReadsIsoTexts)
{
    for (const auto& [in, out, why] : ::Test::Table<const char*, const char*>("Afx/DateTime.tsv"))
        EXPECT_EQ(COleDateTime::ParseIso(in).FormatIso(), out) << in;
    for (const char* const refused : {"", "2024-4-5", "2024-04-05 ", "2024-04-05 13", "2024-04-05 13:14:15.",
                                      "2024-04-05 13:14:15Z", "2024-04-05 25:00", "2023-02-29", "+024-04-05"})
        EXPECT_EQ(COleDateTime::ParseIso(refused).GetStatus(), COleDateTime::invalid) << refused;
}

TEST(COleDateTime, HasAStatus)
{
    EXPECT_EQ(COleDateTime::Null().FormatIso(), "");
    EXPECT_EQ(COleDateTime::Null(), COleDateTime::Null());
    EXPECT_FALSE(COleDateTime::Null() == COleDateTime());
    ::Test::SetNow(2024, 4, 5, 13, 14, 15, 16);
    EXPECT_EQ(COleDateTime::GetCurrentTime().FormatIso(), "2024-04-05 13:14:15.016");
    Afx::Clock::Set([] { return -1; });
    EXPECT_EQ(CTime::GetCurrentTime().GetTime(), -1) << "whole seconds, downwards";
}

namespace
{

DECIMAL Decimal(std::uint8_t scale, std::uint8_t sign, std::uint32_t high, std::uint64_t low)
{
    DECIMAL value{};
    value.scale = scale;
    value.sign = sign;
    value.Hi32 = high;
    value.Lo64 = low;
    return value;
}

} // namespace

TEST(DecimalToCy, RoundsHalvesToEven)
{
    const ::Test::Case<DECIMAL, std::optional<std::int64_t>> rows[] = {
        {Decimal(4, 0x80, 0, 123456), -123456, "-12.3456"},
        {Decimal(5, 0, 0, 123455), 12346, "1.23455: half, to the even neighbour above"},
        {Decimal(5, 0, 0, 123445), 12344, "1.23445: half, to the even neighbour below"},
        {Decimal(7, 0, 0, 12344501), 12345, "1.2344501: more than half by its last digit"},
        {Decimal(5, 0, 0, 123456), 12346, "1.23456: six is more than half"},
        {Decimal(5, 0, 0, 99999), 10000, "0.99999 rounds to a penny more"},
        {Decimal(4, 0x80, 0, 0x8000'0000'0000'0000), std::numeric_limits<std::int64_t>::min(), "smallest"},
        {Decimal(4, 0, 0, 0x8000'0000'0000'0000), std::nullopt, "one too many"},
        {Decimal(5, 0, 4, 0xFFFF'FFFF'FFFF'FFFA), std::numeric_limits<std::int64_t>::max(), "down to the largest"},
        {Decimal(5, 0, 4, 0xFFFF'FFFF'FFFF'FFFF), std::nullopt, "up beyond the largest"},
        {Decimal(0, 0, 0xFFFF'FFFF, 0xFFFF'FFFF'FFFF'FFFF), std::nullopt, "96 bits of pounds"},
        {Decimal(0, 0, 0x1000'0000, 0), std::nullopt, "only the highest of four words is not 0"},
        {Decimal(29, 0, 0, 1), std::nullopt, "no such scale"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Afx::DecimalToCy(row.in), row.out) << row.why;
}

#include "Afx/text/BoundedCopy.h"
#include "Afx/text/Numbers.h"
#include "Afx/text/Utf8.h"
#include "Afx/time/FormatTime.h"

#include <limits>

#include "Afx/time/Clock.h"
#include "support/Test.h"

TEST(BoundedCopy, FillsUpToTheEndMarkAndRefusesInsteadOfCutting)
{
    char buffer[4] = {'x', 'x', 'x', 'x'};
    const auto isRefused = [](char* to, unsigned size, const char* text) {
        return ::Test::MessageOf<CInvalidArgException>([&] { Afx::BoundedCopy(to, size, text); }).has_value();
    };
    EXPECT_TRUE(isRefused(buffer, sizeof buffer, "abcd"));
    EXPECT_EQ(std::string_view(buffer, 4), std::string_view("\0xxx", 4)) << "empty, and nothing else touched";
    Afx::BoundedCopy(buffer, sizeof buffer, "abc");
    EXPECT_STREQ(buffer, "abc");
    EXPECT_TRUE(isRefused(buffer, 0, "z"));
    EXPECT_STREQ(buffer, "abc") << "a buffer of no bytes is not written to";
    EXPECT_TRUE(isRefused(nullptr, 4, "a"));
    Afx::BoundedCopy(buffer, sizeof buffer, "");
    EXPECT_STREQ(buffer, "");
    Afx::BoundedFormat(buffer, sizeof buffer, "%03d", 7);
    EXPECT_STREQ(buffer, "007");
}

TEST(AtoI64, ReadsWhatItCanAndSaturates)
{
    constexpr auto kMax = std::numeric_limits<std::int64_t>::max(), kMin = std::numeric_limits<std::int64_t>::min();
    EXPECT_EQ(Afx::AtoI64(" \t\n+42x"), 42);
    EXPECT_EQ(Afx::AtoI64("1,234"), 1);
    EXPECT_EQ(Afx::AtoI64("9223372036854775806"), kMax - 1);
    for (const char* const none : {static_cast<const char*>(nullptr), "", "- 42", "+-42", "\xB2\xB3"})
        EXPECT_EQ(Afx::AtoI64(none), 0) << (none ? none : "null");
    for (const char* const large : {"9223372036854775807", "9223372036854775808", "99999999999999999999"})
        EXPECT_EQ(Afx::AtoI64(large), kMax) << large;
    for (const char* const small : {"-9223372036854775808", "-9223372036854775809"})
        EXPECT_EQ(Afx::AtoI64(small), kMin) << small;
}

TEST(ParseWhole, TakesDigitsBehindAMinusAndNothingElse)
{
    for (const auto& [in, out, why] : ::Test::Table<const char*, std::optional<int>>("Afx/Text.tsv"))
        EXPECT_EQ(Afx::ParseWhole<int>(in), out) << in << ' ' << why;
    EXPECT_EQ(Afx::ParseWhole<unsigned>("-1"), std::nullopt);
    EXPECT_EQ(Afx::ParseWhole<int>({}), std::nullopt) << "no text at all";
    EXPECT_EQ(Afx::ParseWhole<double>("-1.5e3"), -1500.0);
}

TEST(FormatTime, WritesEnglishNames)
{
    const Afx::LocalTime time{2024, 4, 5, 9, 8, 7, 6};
    const ::Test::Case<const char*, const char*> rows[] = {
        {"%d/%m/%y", "05/04/24"}, {"%d %b %Y", "05 Apr 2024"},           {"%#d %B %Y", "5 April 2024"},
        {"%X", "09:08:07"},       {"100%% %q %#y %#", "100% %q %#y %#"}, {"%", "%"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Afx::FormatTime(time, row.in), row.out) << row.in;
}

TEST(FormatTime, SurvivesFieldsOutsideTheCalendar)
{
    constexpr int kMin = std::numeric_limits<int>::min();
    EXPECT_EQ(Afx::FormatTime({kMin, 13, 0, 0, 0, 0, 0}, "[%b][%B][%y]"), "[][][52]");
    EXPECT_EQ(Afx::FormatTime({100, kMin, 0, 0, 0, 0, 0}, "%b%Y"), "0100");
}

TEST(ToUtf8, KeepsUtf8AndConvertsTheRest)
{
    for (const auto& [in, out, why] : ::Test::Table<std::string_view, std::string_view>("Afx/Text.tsv"))
        EXPECT_EQ(Afx::ToUtf8(in), out) << why;
}

TEST(ToPrintable, LeavesNothingThatSteersATerminal)
{
    EXPECT_EQ(Afx::ToPrintable("a\u001b[1m\u009b2\u202eb\u00a0c\nd"), "a [1m 2b\u00a0c d");
}

TEST(TakeCharacter, GivesBackEveryCharacterOfUnicode)
{
    for (unsigned character = 0; character <= 0x110000; ++character) {
        std::string bytes;
        Afx::AppendUtf8(bytes, character);
        const bool isCharacter = character <= 0x10FFFF && (character < 0xD800 || character > 0xDFFF);
        ASSERT_EQ(!bytes.empty(), isCharacter) << character;
        std::string_view rest = bytes;
        if (isCharacter) {
            ASSERT_EQ(Afx::TakeCharacter(rest), character);
            ASSERT_TRUE(rest.empty()) << character;
        }
    }
    std::string_view broken = "\xE2\x82"; // the start of a euro sign
    EXPECT_EQ(Afx::TakeCharacter(broken), 0xE2u);
    EXPECT_EQ(Afx::TakeCharacter(broken), 0x82u);
}

#include "Kiln/CAmt.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using Kiln::CAmt;

namespace
{

constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min(), kMax = std::numeric_limits<std::int64_t>::max();

static_assert(!std::is_convertible_v<std::int64_t, CAmt>);

/// Reads `text`; checks that result, status and reason agree.
CAmt Read(const char* text)
{
    CAmt amount(999);
    amount.SetAuto(true);
    const bool good = amount.Parse(text);
    EXPECT_EQ(good, amount.IsValid()) << text;
    EXPECT_EQ(good, CAmt::WhyNotAmount(text).IsEmpty()) << text;
    EXPECT_FALSE(amount.IsAuto()) << "what is typed is not calculated";
    return amount;
}

} // namespace

TEST(CAmtParse, ReadsWhatUsersType)
{
    const struct
    {
        const char* text;
        std::int64_t value; // ten-thousandths
    } rows[] = {
        {"0", 0},
        {"-0", 0},
        {"5", 50'000},
        {"12.5", 125'000},
        {"12.50", 125'000},
        {"1234.56", 12'345'600},
        {"123456.78", 1'234'567'800},
        {"12345678", 123'456'780'000},
        {"123456789", 1'234'567'890'000},
        {"1,234.56", 12'345'600},
        {"1,234,567", 12'345'670'000},
        {"12.3456", 123'456},
        {"12.345600", 123'456},
        {".5", 5'000},
        {".05", 500},
        {"-.05", -500},
        {"12.", 120'000},
        {"-12.50", -125'000},
        {"12.50-", -125'000},
        {"+12.50", 125'000},
        {"12.50 +", 125'000},
        {"(12.50)", -125'000},
        {" ( £ 1,234.56 ) ", -12'345'600},
        {"£5", 50'000},
        {"-£5", -50'000},
        {"£ -5", -50'000},
        {"£(5)", -50'000},
        {"\t 5 \r\n", 50'000},
        {"000000000000000000000000005", 50'000},
        {"922337203685477.5807", kMax},
        {"922,337,203,685,477.5807", kMax},
        {"-922337203685477.5808", kMin},
        {"(922337203685477.5808)", kMin},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Read(row.text), CAmt(row.value)) << row.text;
}

TEST(CAmtParse, RefusesAndSaysHowToMendIt)
{
    constexpr char kDigits[] = "needs digits", kSigns[] = "One sign", kBracket[] = "both sides",
                   kCommas[] = "groups of three", kDecimals[] = "four decimals", kLarge[] = "too large",
                   kCharacter[] = "does not belong";
    const struct
    {
        const char *text, *reason;
    } rows[] = {
        {"-", kDigits},
        {".", kDigits},
        {"£", kDigits},
        {"()", kDigits},
        {"--5", kSigns},
        {"+-5", kSigns},
        {"-5-", kSigns},
        {"5--", kSigns},
        {"(-5)", kSigns},
        {"-(5)", kSigns},
        {"(5-)", kSigns},
        {"((5))", kSigns},
        {"(5", kBracket},
        {"5)", kBracket},
        {"1,23", kCommas},
        {"1,2345", kCommas},
        {"1234,567", kCommas},
        {"1,234567", kCommas},
        {"1,,234", kCommas},
        {"1,234,", kCommas},
        {"1,", kCommas},
        {"12.345,6", kCommas},
        {"12.34,567", kCommas},
        {"1,23.45", kCommas},
        {"1.23456", kDecimals},
        {"1.00001", kDecimals},
        {"922337203685477.5808", kLarge},
        {"-922337203685477.5809", kLarge},
        {"1000000000000000", kLarge},
        {"99999999999999999999999", kLarge},
        {"x", kCharacter},
        {"5x", kCharacter},
        {"5 5", kCharacter},
        {"1 234", kCharacter},
        {"1.2.3", kCharacter},
        {"££5", kCharacter},
        {"5£", kCharacter},
        {"$5", kCharacter},
        {"1e5", kCharacter},
        {"0x10", kCharacter},
        {"nan", kCharacter},
        {"inf", kCharacter},
        {",5", kCommas},
        {"\xA3"
         "5",
         kCharacter},
        {"\xC2", kCharacter},
        {"1234:678", kCharacter},
        {"123/5678", kCharacter},
        {"5(", kCharacter},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Read(row.text), CAmt::Invalid()) << row.text;
        EXPECT_GE(CAmt::WhyNotAmount(row.text).Find(row.reason), 0) << row.text << ": " << CAmt::WhyNotAmount(row.text);
    }
    EXPECT_EQ(CAmt::WhyNotAmount("5€"), "\"€\" does not belong in an amount; write it as in 1,234.56")
        << "a whole character";
    for (const char* const blank : {"", "  \t"}) {
        EXPECT_TRUE(Read(blank).IsNull());
        EXPECT_EQ(CAmt::WhyNotAmount(blank), "No amount was given");
    }
}

TEST(CAmtParse, AgreesOnTheShortAndTheLongWay)
{
    // A blank in front sends a text the long way. Every text of these characters up to a length.
    constexpr std::string_view kCharacters = "09.-,";
    std::vector<std::string> texts{""};
    for (std::size_t i = 0; texts[i].size() < 6; ++i)
        for (const char c : kCharacters)
            texts.push_back(texts[i] + c);
    for (const std::string& text : texts) {
        CAmt shortWay, longWay;
        ASSERT_EQ(shortWay.Parse(text), longWay.Parse(" " + text)) << text;
        ASSERT_EQ(shortWay, longWay) << text;
    }
}

TEST(CAmtParse, ReadsBackEveryFormattedAmount)
{
    std::uint64_t value = 1;
    for (int i = 0; i < 20'000; ++i) {
        value = value * 6364136223846793005u + 1442695040888963407u;
        const CAmt amount(static_cast<std::int64_t>(value) >> (i % 60));
        CAmt read;
        ASSERT_TRUE(read.Parse(amount.Format())) << amount.Format();
        ASSERT_EQ(read, amount) << amount.Format();
    }
}

TEST(CAmtParse, DecidesHugeTextsAtOnce)
{
    CAmt amount;
    for (const char c : {'0', '1', ',', '.', '(', 'x'})
        EXPECT_FALSE(amount.Parse(std::string(10u << 20, c))) << c;
    EXPECT_FALSE(amount.Parse(std::string(10u << 20, ' ')));
    EXPECT_TRUE(amount.IsNull());
}

TEST(CAmtFormat, ShowsTwoToFourDecimals)
{
    const struct
    {
        CAmt amount;
        const char* text;
    } rows[] = {
        {CAmt(0), "0.00"},
        {CAmt(12'345'600), "1234.56"},
        {CAmt(500), "0.05"},
        {CAmt(-500), "-0.05"},
        {CAmt(10'050), "1.005"},
        {CAmt(10'001), "1.0001"},
        {CAmt(1), "0.0001"},
        {CAmt(100'000), "10.00"},
        {CAmt(), ""},
        {CAmt::Invalid(), ""},
        {CAmt(kMax), "922337203685477.5807"},
        {CAmt(kMin), "-922337203685477.5808"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(row.amount.Format(), row.text);
}

TEST(CAmt, HasAStatus)
{
    EXPECT_TRUE(CAmt().IsNull() && CAmt::kZero.IsZero() && CAmt::kZero.IsValid());
    EXPECT_FALSE(CAmt().IsZero() || CAmt::Invalid().IsZero()) << "absent is not zero";
    EXPECT_TRUE(CAmt() == CAmt() && CAmt::Invalid() == CAmt::Invalid() && CAmt() != CAmt::kZero &&
                CAmt() != CAmt::Invalid());
    CAmt calculated(5);
    calculated.SetAuto(true);
    EXPECT_EQ(calculated, CAmt(5)) << "who calculated it does not count";
    for (const CAmt& other : {CAmt(), CAmt::Invalid()})
        EXPECT_FALSE(other < CAmt(1) || CAmt(1) < other || other <= other || other > other || other >= CAmt(-1));
    EXPECT_TRUE(CAmt(-1) < CAmt(1) && CAmt(1) >= CAmt(1) && CAmt(1) <= CAmt(1) && CAmt(2) > CAmt(1));
}

TEST(CAmt, CountsPenceTowardZero)
{
    EXPECT_EQ(CAmt(199).GetPence(), 1);
    EXPECT_EQ(CAmt(-199).GetPence(), -1);
    EXPECT_EQ(CAmt::FromPence(-5), CAmt(-500));
    EXPECT_EQ(CAmt::FromPence(kMax / 100).GetPence(), kMax / 100);
    EXPECT_EQ(CAmt::FromPence(kMax / 100 + 1), CAmt::Invalid());
    EXPECT_EQ(CAmt::FromPence(kMin), CAmt::Invalid());
}

TEST(CAmt, AddsWithoutOverflow)
{
    EXPECT_EQ(CAmt(5) + CAmt(-7), CAmt(-2));
    EXPECT_EQ(CAmt(5) - CAmt(7), CAmt(-2));
    EXPECT_EQ(CAmt(kMax) + CAmt(1), CAmt::Invalid());
    EXPECT_EQ(CAmt(kMin) - CAmt(1), CAmt::Invalid());
    EXPECT_EQ(CAmt(0) - CAmt(kMin), CAmt::Invalid());
    EXPECT_EQ(CAmt(1) + CAmt(), CAmt::Invalid());
    EXPECT_EQ(CAmt() - CAmt(), CAmt::Invalid());
}

TEST(CAmtPercentOf, RoundsHalvesAwayFromZero)
{
    const struct
    {
        CAmt amount;
        double percent;
        int roundFlag;
        CAmt expected;
        const char* why;
    } rows[] = {
        {CAmt::FromPence(10'000), 20.0, 1, CAmt::FromPence(2'000), "20 % of £100"},
        {CAmt::FromPence(25), 50.0, 1, CAmt::FromPence(13), "half a penny up"},
        {CAmt::FromPence(-25), 50.0, 1, CAmt::FromPence(-13), "half a penny down"},
        {CAmt::FromPence(25), 50.0, 0, CAmt(1'250), "ten-thousandths kept"},
        {CAmt(1), 50.0, 0, CAmt(1), "half a ten-thousandth up"},
        {CAmt(-1), 49.0, 0, CAmt(0), "less than half of one"},
        {CAmt::FromPence(100), -20.0, 1, CAmt::FromPence(-20), "negative share"},
        {CAmt::FromPence(100), 36'500.0, 1, CAmt::FromPence(36'500), "a day's income in a year"},
        {CAmt(kMax), 100.0, 1, CAmt::Invalid(), "rounds beyond 64 bits"},
        {CAmt(kMax), 1e300, 0, CAmt::Invalid(), "infinite"},
        {CAmt(1), std::nan(""), 1, CAmt::Invalid(), "not a number"},
        {CAmt(0), HUGE_VAL, 1, CAmt::Invalid(), "nothing of infinity"},
        {CAmt(), 20.0, 1, CAmt(), "null stays null"},
        {CAmt::Invalid(), 20.0, 1, CAmt::Invalid(), "invalid stays invalid"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(row.amount.PercentOf(row.percent, row.roundFlag), row.expected) << row.why;
}

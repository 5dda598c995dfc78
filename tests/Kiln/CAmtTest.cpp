#include "Kiln/CAmt.h"

#include <cmath>
#include <limits>
#include <vector>

#include "support/Test.h"

using Kiln::CAmt;

namespace
{

constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min(), kMax = std::numeric_limits<std::int64_t>::max();

static_assert(!std::is_convertible_v<std::int64_t, CAmt>);

/// Reads `text`; checks that result, status and reason agree.
CAmt ReadAmount(const char* text)
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
    for (const auto& [amount, text, why] : ::Test::Table<std::int64_t, const char*>("Kiln/CAmt.tsv"))
        EXPECT_EQ(ReadAmount(text), CAmt(amount)) << text;
}

TEST(CAmtParse, RefusesAndSaysHowToMendIt)
{
    for (const auto& [reason, text, why] : ::Test::Table<const char*, const char*>("Kiln/CAmt.tsv")) {
        EXPECT_EQ(ReadAmount(text), CAmt::Invalid()) << text;
        EXPECT_GE(CAmt::WhyNotAmount(text).Find(reason), 0) << text << ": " << CAmt::WhyNotAmount(text);
    }
    EXPECT_EQ(CAmt::WhyNotAmount("5€"), "\"€\" does not belong in an amount; write it as in 1,234.56")
        << "a whole character";
    for (const char* const blank : {"", "  \t"}) {
        EXPECT_TRUE(ReadAmount(blank).IsNull());
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

TEST(CAmtFormat, ShowsTwoToFourDecimals)
{
    for (const char* const text : {"0.00", "1234.56", "0.05", "1.005", "0.0001", "-0.10", "-922337203685477.5808"})
        EXPECT_EQ(ReadAmount(text).Format(), text);
    EXPECT_TRUE(CAmt().Format().IsEmpty() && CAmt::Invalid().Format().IsEmpty());
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

TEST(CAmt, CalculatesWithoutOverflow)
{
    EXPECT_EQ(CAmt(199).GetPence(), 1) << "toward zero";
    EXPECT_EQ(CAmt(-199).GetPence(), -1);
    EXPECT_EQ(CAmt::FromPence(-5), CAmt(-500));
    EXPECT_EQ(CAmt::FromPence(kMax / 100), CAmt(kMax / 100 * 100));
    EXPECT_EQ(CAmt(5) + CAmt(-7), CAmt(-2));
    EXPECT_EQ(CAmt(5) - CAmt(7), CAmt(-2));
    for (const CAmt& none : {CAmt::FromPence(kMax / 100 + 1), CAmt::FromPence(kMin), CAmt(kMax) + CAmt(1),
                             CAmt(kMin) - CAmt(1), CAmt(0) - CAmt(kMin)})
        EXPECT_EQ(none, CAmt::Invalid()) << "beyond 64 bits, but " << none.Format();
    for (const CAmt& none : {CAmt(1) + CAmt(), CAmt() + CAmt(2), CAmt(3) - CAmt(), CAmt() - CAmt(4)})
        EXPECT_EQ(none, CAmt::Invalid()) << "null on one side, but " << none.Format();
}

TEST(CAmtPercentOf, RoundsHalvesAwayFromZero)
{
    const ::Test::Row<std::int64_t, double, int, std::int64_t> rows[] = {
        {2'500, 50.0, 1, 1'300, "half a penny up"},   {-2'500, 50.0, 2, -1'300, "down; any flag but 0"},
        {92'000, 8.75, 1, 8'100, "multiplied first"}, {2'500, 50.0, 0, 1'250, "not rounded"},
        {1, 50.0, 0, 1, "half a ten-thousandth"},     {-1, 50.0, 0, -1, "away from zero too"},
        {-1, 49.0, 0, 0, "less than half of one"},
    };
    for (const auto& [amount, percent, roundFlag, expected, why] : rows)
        EXPECT_EQ(CAmt(amount).PercentOf(percent, roundFlag), CAmt(expected)) << why;
    EXPECT_EQ(CAmt(kMax).PercentOf(100.0, 1), CAmt::Invalid()) << "rounds beyond 64 bits";
    EXPECT_EQ(CAmt(kMax).PercentOf(1e300, 0), CAmt::Invalid());
    EXPECT_EQ(CAmt(1).PercentOf(std::nan(""), 1), CAmt::Invalid());
    EXPECT_EQ(CAmt(0).PercentOf(HUGE_VAL, 1), CAmt::Invalid()) << "nothing of infinity";
    EXPECT_EQ(CAmt().PercentOf(20.0, 1), CAmt());
    EXPECT_EQ(CAmt::Invalid().PercentOf(20.0, 1), CAmt::Invalid());
}

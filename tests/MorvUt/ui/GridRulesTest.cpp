#include <gtest/gtest.h>

#include <climits>
#include <random>

#include "MorvUt/ui/grids/ChangeOfBasis.h"
#include "MorvUt/ui/grids/NewRow.h"
#include "MorvUt/ui/grids/Percentages.h"
#include "MorvUt/ui/grids/Totals.h"
#include "support/Table.h"

namespace
{

using Kiln::CAmt;

CAmt Pence(std::int64_t pence) { return CAmt::FromPence(pence); }

CAmt Amount(const char* text)
{
    CAmt amount;
    amount.Parse(text);
    return amount;
}

/// The rule again: how many cells there are of each meaning.
bool IsDueBySecondReading(std::span<const NewRowCell> row)
{
    std::size_t outside = 0, missing = 0, filled = 0;
    for (const auto& [flags, isReadOnly, isAmount, text] : row) {
        if (isReadOnly || flags % 2 == 1 || flags >= 0x80)
            ++outside;
        else if (!isAmount || (text != "A" && text != " \ta12.00"))
            (text != "" ? filled : missing) += text != "" || flags == 0x02 || flags == 0x22;
    }
    return missing == 0 && (filled > 0 || outside == row.size());
}

std::vector<NewRowCell> AllCells()
{
    std::vector<NewRowCell> cells;
    for (const unsigned flags : {0x00U, 0x01U, 0x02U, 0x03U, 0x20U, 0x22U, 0x40U, 0x80U, 0x82U, 0x83U})
        for (const bool isReadOnly : {false, true})
            for (const bool isAmount : {false, true})
                for (const char* const text : {"", " ", "A", " \ta12.00", "BA", "5"})
                    cells.push_back({flags, isReadOnly, isAmount, text});
    return cells;
}

} // namespace

TEST(NewRow, IsDueAsASecondReadingOfTheRuleSays)
{
    const std::vector<NewRowCell> all = AllCells();
    for (const NewRowCell& first : all)
        for (const NewRowCell& second : all) {
            const NewRowCell row[] = {first, second};
            ASSERT_EQ(IsNewRowDue({true, true, 1, 2}, row), IsDueBySecondReading(row))
                << first.flags << " '" << first.text << "', " << second.flags << " '" << second.text << '\'';
        }
    const NewRowCell full[] = {{0, false, false, "x"}};
    for (const NewRowGrid& grid :
         {NewRowGrid{true, true, 4, 4}, {false, true, 3, 4}, {true, false, 3, 4}, {true, true, 0, 0}})
        EXPECT_FALSE(IsNewRowDue(grid, full));
    EXPECT_TRUE(IsNewRowDue({true, true, 0, ULONG_MAX}, {})) << "no row yet";
}

TEST(Totals, ShowNothingForZeroAndAnErrorForWhatCannotBeRead)
{
    for (const auto& [total, more, left, why] :
         ::Test::Table<const char*, const char*, const char*>("MorvUt/ui/GridRules.tsv")) {
        const CAmt shares[] = {Pence(600), Pence(400), Amount(more)};
        EXPECT_EQ(ShownRemainder(Amount(total), shares), Amount(left)) << why;
    }
}

TEST(Percentages, OfWholePenceGiveEveryAmountAgain)
{
    std::mt19937_64 random(7);
    for (int round = 0; round < 20'000; ++round) {
        const auto count = static_cast<std::size_t>(2 + random() % 39);
        // Small totals as often as large ones.
        const auto total = static_cast<std::int64_t>(random() % 10'000'000'000 >> random() % 33) + 1;
        std::vector<CAmt> amounts(count), again(count);
        std::int64_t left = total;
        for (CAmt& amount : amounts) {
            const auto pence = static_cast<std::int64_t>(random() % static_cast<std::uint64_t>(left + 1));
            amount = Pence(&amount == &amounts.back() ? left : pence);
            left -= amount.GetPence();
        }
        ASSERT_EQ(ShownRemainder(Pence(total), amounts), CAmt()) << "in amounts it is exact";
        const auto shares = AmountsToPercents(amounts, Pence(total));
        PercentsToAmounts(shares, Pence(total), again);
        for (std::size_t i = 0; i < count; ++i)
            ASSERT_EQ(again[i].GetPence(), amounts[i].GetPence()) << "of " << total;
        ASSERT_TRUE(IsRoundingOnly(PercentRemainder(shares), count, CAmt())) << PercentRemainder(shares);
    }
}

TEST(Percentages, ChangeOnlyTheAmountsThatWereChanged)
{
    // No percentage of eight decimals gives the first two again.
    const CAmt total = Pence(99'999'999'999);
    std::vector<CAmt> amounts{Pence(33'333'333'333), CAmt(12'345), Pence(7), CAmt::kZero};
    const std::vector<CAmt> before = amounts;
    auto shares = AmountsToPercents(amounts, total);
    PercentsToAmounts(shares, total, amounts);
    EXPECT_EQ(amounts, before);
    const PercentShare half{PercentShare::Kind::Percent, 50 * kUnitsOfAPercent};
    shares[1] = half;
    shares[2] = {};
    PercentsToAmounts(shares, total, amounts);
    EXPECT_EQ(amounts, (std::vector<CAmt>{before[0], Pence(50'000'000'000), CAmt(), CAmt::kZero}));
    shares[0] = PercentShareOf(before[0], CAmt::kZero);
    shares[1] = half;
    PercentsToAmounts(shares, CAmt::Invalid(), amounts);
    EXPECT_TRUE(amounts[0] == before[0] && amounts[1].IsZero()) << "behind an error stays the amount; half of nothing";
}

TEST(Percentages, OfADefaultSplitAddUpToAHundred)
{
    for (const auto& [first, second, third, left, why] :
         ::Test::Table<double, double, double, const char*>("MorvUt/ui/GridRules.tsv")) {
        const double percents[] = {first, second, third};
        EXPECT_EQ(FormatPercentUnits(PercentRemainder(percents)), left) << why;
        EXPECT_EQ(IsSplitComplete(percents), CString(left) == "0.00000000") << why;
    }
    EXPECT_EQ(PercentRemainder(std::vector<double>()), 100 * kUnitsOfAPercent);
    EXPECT_FALSE(IsRoundingOnly(2, 3, CAmt())) << "more than rounding";
    EXPECT_FALSE(IsRoundingOnly(1, 3, Pence(1))) << "a penny is left";
}

TEST(ChangeOfBasis, RefusesANegativeResultAndAsksAboutAChange)
{
    using Kind = BasisFinding::Kind;
    const BasisColumn zeros{CAmt::kZero, CAmt(), CAmt::Invalid(), CAmt()}, changed{CAmt(), Pence(-1), CAmt(), CAmt()},
        negative{CAmt(), CAmt(), CAmt(), Pence(-1)};
    const BasisColumn loaded[] = {{}, changed};
    const ::Test::Row<std::vector<BasisColumn>, BasisChecks, std::vector<BasisFinding>> rows[] = {
        {{zeros, changed}, {true, true, 2004}, {}, "what is not valid counts as zero"},
        {{changed, zeros, zeros}, {true, true, 2004}, {{Kind::Changed, 0}, {Kind::Changed, 1}}, "changed"},
        {{changed, zeros}, {true, true, 2003}, {}, "no question before 2004"},
        {{changed, negative, changed}, {true, true, 2024}, {{Kind::Changed, 0}, {Kind::Negative, 1}}, "then refused"},
        {{negative, changed}, {false, true, 2024}, {{Kind::Changed, 0}}, "a loss is allowed"},
        {{negative, zeros}, {true, false, 2024}, {{Kind::Negative, 0}}, "no question is asked"},
    };
    for (const auto& [columns, checks, findings, why] : rows)
        EXPECT_EQ(CheckBasis(columns, loaded, checks), findings) << why;
}

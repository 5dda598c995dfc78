#include "MorvUt/context/PFile.h"

#include "MorvUt/money/Rates.h"
#include "MorvUt/taxyear/PFileYearOffsetter.h"
#include "support/Practice.h"

namespace
{

/// Records of years; their thresholds are the year times 1 to 4, in pounds.
void AddParameters(std::initializer_list<int> years)
{
    for (const int year : years)
        Quarry::GetConnection().ExecuteDirectf(
            "INSERT INTO BRIXPFile (nYear, amtTurnoverSole, amtTurnoverSoleOld, amtTurnoverPartnership, "
            "amtTurnoverPartnershipOld) VALUES (%d, %m, %m, %m, %m)",
            year, Kiln::CAmt(year * 10'000), Kiln::CAmt(year * 20'000), Kiln::CAmt(year * 30'000),
            Kiln::CAmt(year * 40'000));
}

short YearOf(const Brix::CPFile& list) { return list.IsEOL() ? short{0} : list.GetYear(); }

using PFileOfYear = ::Test::OnPractice;
ON_BOTH_DATABASES(PFileOfYear);

} // namespace

TEST_P(PFileOfYear, AddsTheThreadsOffsetOnRequest)
{
    AddParameters({2023, 2024});
    EXPECT_EQ(YearOf(GetPFileForYear(2024, false)), 2024);
    EXPECT_EQ(YearOf(GetPFileForYear(2022, false)), 0);
    EXPECT_EQ(YearOf(GetPFileForYear(2024, true)), 2024) << "offset 0";
    const CPFileYearOffsetter offsetter(-1);
    EXPECT_EQ(YearOf(GetPFileForYear(2024, true)), 2023);
    EXPECT_EQ(YearOf(GetPFileForYear(2024, false)), 2024);
    EXPECT_EQ(YearOf(GetClosestPFileForYear(2024, true)), 2023) << "likewise";
    EXPECT_EQ(YearOf(GetPFileForYear(-32768, true)), 0) << "wraps at 16 bits";
}

TEST_P(PFileOfYear, OrTheClosestStepsBackTo2021)
{
    AddParameters({2020});
    EXPECT_EQ(YearOf(GetClosestPFileForYear(2025, false)), 0) << "2020 is never reached";
    EXPECT_EQ(YearOf(GetClosestPFileForYear(2020, false)), 2020) << "but may be asked for";
    AddParameters({2021, 2023});
    EXPECT_EQ(YearOf(GetClosestPFileForYear(2025, false)), 2023);
    EXPECT_EQ(YearOf(GetClosestPFileForYear(2022, false)), 2021);
    EXPECT_EQ(YearOf(GetClosestPFileForYear(2019, false)), 0);
}

TEST_P(PFileOfYear, HasTheTurnoverLevelOrAnotherYears)
{
    EXPECT_EQ(GetTurnoverDiscloseLevel(2024, 0, 1).GetPence(), 15'000'00) << "no record at all";
    AddParameters({2010, 2008});
    Quarry::GetConnection().ExecuteDirectf("INSERT INTO BRIXPFile (nYear) VALUES (2010)"); // changes nothing
    for (const auto& [year, older, partnership, pounds, why] :
         ::Test::Table<short, int, int, std::int64_t>("MorvUt/context/PFile.tsv"))
        EXPECT_EQ(GetTurnoverDiscloseLevel(year, older, partnership).GetPence(), pounds * 100) << why;
}

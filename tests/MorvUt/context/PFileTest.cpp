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

TEST_P(PFileOfYear, OrTheClosestIsFoundWithTheThreadsOffsetOnRequest)
{
    AddParameters({2020});
    EXPECT_EQ(YearOf(GetClosestPFileForYear(2025, false)), 0) << "2020 is never reached";
    AddParameters({2021, 2023, 2024});
    for (const auto& [offset, year, isRelative, found, closest, why] :
         ::Test::Table<short, short, bool, short, short>("MorvUt/context/PFile.tsv")) {
        const CPFileYearOffsetter offsetter(offset);
        EXPECT_EQ(YearOf(GetPFileForYear(year, isRelative)), found) << why;
        EXPECT_EQ(YearOf(GetClosestPFileForYear(year, isRelative)), closest) << why;
    }
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

#include "MorvUt/enquiries/tracker/CarryForward.h"

#include <array>

#include <gtest/gtest.h>

#include "MorvUt/context/TrackerTypes.h"
#include "MorvUt/enquiries/rules/SourceCreation.h"
#include "MorvUt/enquiries/tracker/TaxReference.h"
#include "Quarry/NewId.h"
#include "RandomOwners.h"
#include "support/Case.h"
#include "support/Practice.h"

namespace
{

using ::Test::Practice;

class CarryForward : public ::Test::OnDatabase, protected Practice
{
protected:
    CarryForward() { SeedTrackerTypes(); }
    static Cellar::CConnection& Database() { return Quarry::GetConnection(); }
};
ON_BOTH_DATABASES(CarryForward);

template<class Yearly>
bool HasLeft(const TrackerOwner& owner, short year)
{
    return Yearly().Count({OwnedBy<Yearly>(owner), {Yearly::kYear, year}, {Yearly::kStatus, 1}}) > 0;
}

/// Sources by the rule's own words, one after the other, each with its own statements.
void CarryOneByOne(const TrackerOwner& owner, short year)
{
    using Brix::CSource;
    const bool hasLeft = owner.isPartnership ? HasLeft<Brix::CPartnershipYearly>(owner, year)
                                             : HasLeft<Brix::CClientYearly>(owner, year);
    CSource sources;
    sources.Open({OwnedBy<CSource>(owner), {CSource::kYear, year - 1}}, {{CSource::kSourceID}});
    const int count = hasLeft ? 0 : sources.GetCount();
    for (int i = 0; i < count; ++i) {
        sources.MoveTo(i);
        const bool isReturn = !sources.GetUserCreated() && sources.GetSourceTypeID() != 2;
        const bool isThere =
            CSource().Count({OwnedBy<CSource>(owner),
                             {CSource::kYear, year},
                             {CSource::kSourceTypeID, sources.GetSourceTypeID()},
                             isReturn && sources.GetSourceTypeID() != 7
                                 ? Quarry::Where(CSource::kUserCreated, false)
                                 : Quarry::Where(CSource::kDescription, sources.GetDescription())}) > 0;
        const bool isOpen = Brix::CSourceTask().Count({{Brix::CSourceTask::kSourceID, sources.GetSourceID()},
                                                       {Brix::CSourceTask::kComplete, false}}) > 0;
        if (isThere || (sources.GetUserCreated() && !isOpen))
            continue;
        const long type = sources.GetSourceTypeID(), id = Quarry::NewId(sources.GetTable());
        sources.CopyRow();
        sources.SetSourceID(id);
        sources.SetYear(year);
        sources.SetStatus("?");
        sources.Update();
        CopyDefaultSourceToSource(Quarry::GetConnection(), id, 0, type, true, year, false);
    }
}

std::string ShownSources()
{
    return Practice::Query(
        "SELECT ClientID, pClientID, Year, s.SourceTypeID, Status, ShowReminder, s.Description, bUserCreated, bCFStaff,"
        " COUNT(t.TypeID), SUM(t.bRequired) FROM Source s LEFT JOIN SourceTask t ON t.SourceID = s.SourceID GROUP BY "
        "s.SourceID, ClientID, pClientID, Year, s.SourceTypeID, Status, ShowReminder, s.Description, bUserCreated, "
        "bCFStaff ORDER BY s.SourceID");
}

} // namespace

TEST_P(CarryForward, MakesEachTaxReturnSourceOnce)
{
    Script("INSERT INTO BRIXClient (lID, bTrust, bNoTaxReturnSource) VALUES (1, 0, 0), (2, 1, 0), (3, 0, 1); "
           "INSERT INTO BRIXPartnership (lID) VALUES (1); INSERT INTO BRIXOptions (lID, bCFStaff) VALUES (1, 1)");
    for (const auto& [id, isPartnership, year, expected, why] :
         ::Test::Table<long, bool, short, std::string>("MorvUt/enquiries/CarryForward.tsv")) {
        Script("DELETE FROM Source; DELETE FROM SourceTask");
        for (int time = 0; time < 2; ++time) {
            EXPECT_EQ(CreateTaxformSource(Database(), year, id, isPartnership), 1);
            EXPECT_EQ(ShownSources(), expected) << why;
        }
    }
    Script("DELETE FROM Source; DELETE FROM SourceTask; DELETE FROM SourceType");
    CreateTaxformSource(Database(), 2024, 1, false);
    EXPECT_EQ(Query("SELECT SourceID FROM SourceTask"), "") << "no type, no source, no tasks of nothing";
}

TEST_P(CarryForward, CopiesATaskThatStandsTwiceOnceAndThoseOfATracker)
{
    Script("INSERT INTO Source (SourceID, ClientID, Year, SourceTypeID) VALUES (7, 1, 2024, 1);"
           "INSERT INTO SourceDefaultTask (SourceTypeID, TypeID, ListOrder, DefaultTrackerID) VALUES (1, 5, 50, NULL), "
           "(1, 2, 3, 4)");
    CopyDefaultSourceToSource(Database(), 7, 4, 1, false, 2024, false);
    EXPECT_EQ(Query("SELECT TypeID, ListOrder FROM SourceTask"), "2|3");
    CopyDefaultSourceToSource(Database(), 7, 0, 1, false, 2024, false);
    EXPECT_EQ(Query("SELECT TypeID, ListOrder FROM SourceTask WHERE TypeID IN (2, 5, 19) AND (bRequired = 1 OR TypeID "
                    "= 19) ORDER BY TypeID"),
              "2|3, 5|5, 19|9");
}

// MORVUT_PRACTICES=500 for as many.
TEST_P(CarryForward, CarriesAllSourcesAtOnceAsOneByOne)
{
    const unsigned practices = ::Test::Setting("MORVUT_PRACTICES", 8);
    for (unsigned seed = 1; seed <= practices; ++seed) {
        const short year = std::array<short, 4>{2004, 2005, 2009, 2024}[seed % 4];
        const std::vector<TrackerOwner> owners = AddRandomOwners(seed, 6, year);
        int made = 0;
        const auto carriedBy = [&](auto carry) {
            Quarry::CTransaction undone(Cellar::Intent::Write);
            for (const TrackerOwner& owner : owners)
                carry(owner);
            return WorkInPractice();
        };
        const std::string atOnce = carriedBy([&](const TrackerOwner& owner) {
            int created = -1;
            CarryForwardSources(Database(), created, year, owner.id, owner.isPartnership);
            made += created;
        });
        ASSERT_EQ(atOnce, carriedBy([&](const TrackerOwner& owner) { CarryOneByOne(owner, year); })) << "seed " << seed;
        ASSERT_GT(made, 0);
        Script("DELETE FROM Source; DELETE FROM SourceTask; DELETE FROM ClientEnquiry");
    }
}

TEST_P(CarryForward, CarriesEnquiriesWithTheirLinks)
{
    Script(::Test::FileText("MorvUt/enquiries/CarryForward.sql"));
    Brix::PutIdsBehindRows(Database());
    EnableTrackerSourceCreation(0);
    CarryForwardClientEnquiresAndTrackerSources(Database(), 1, 2024, false);
    EXPECT_EQ(Query("SELECT COUNT(*) FROM ClientEnquiry"), "11") << "switched off";
    EnableTrackerSourceCreation(1);
    for (int time = 0; time < 2; ++time) {
        CarryForwardClientEnquiresAndTrackerSources(Database(), 1, 2024, false);
        EXPECT_EQ(Rows("SELECT e.strDescription, e.SourceTypeID, e.TypeID, e.bCarryForward, e.dtStart, s.Year, "
                       "s.Description FROM ClientEnquiry e LEFT JOIN Source s ON s.SourceID = e.SourceID WHERE e.lID > "
                       "11 ORDER BY e.lID"),
                  "return|1|5|1|-|2024|Tax Return\n"
                  "books|2|5|1|-|2024|BOOKS\n"
                  "task|2|-|1|-|2024|BOOKS\n"
                  "rent|2|-|1|-|2024|Other\n"
                  "gone|-|-|1|-|-|-\n"
                  "no type|-|-|1|-|-|-\n"
                  "plain '%s'|-|-|1|-|-|-\n"
                  "return|1|-|1|-|2024|Tax Return\n");
        EXPECT_EQ(Query("SELECT COUNT(*) FROM Source WHERE Year = 2024"), "3") << "Books, the return, Other";
    }
}

TEST_P(CarryForward, KnowsWhoElseHasATaxReference)
{
    Script("INSERT INTO BRIXClient (lID, strUTR) VALUES (1, '11 11'), (2, '2222'), (3, ''), (4, NULL), (5, '1111'); "
           "INSERT INTO BRIXPartnership (lID, strUTR) VALUES (1, '3333-'), (2, '11/11'); "
           "INSERT INTO BRIXTaxForm (lID, lClientID, nYear) VALUES (1, 5, 2020), (2, 5, 2024), (3, 5, 2019)");
    for (const auto& [id, isPartnership, reference, expected, holder, holderIsPartnership, holderYear, why] :
         ::Test::Table<long, bool, const char*, int, long, bool, short>("MorvUt/enquiries/CarryForward.tsv")) {
        long other = -1;
        bool otherIsPartnership = false;
        short year = -1;
        EXPECT_EQ(IsUniqueTaxReference(Database(), id, isPartnership, reference, other, otherIsPartnership, year),
                  expected)
            << why;
        EXPECT_EQ(other, holder) << why;
        EXPECT_EQ(otherIsPartnership, holderIsPartnership) << why;
        EXPECT_EQ(year, holderYear) << why;
    }
}

#include "MorvUt/enquiries/tracker/RollForward.h"

#include <array>
#include <set>

#include <gtest/gtest.h>

#include "Afx/windows/MessageBox.h"
#include "MorvUt/context/TrackerTypes.h"
#include "MorvUt/users/UserData.h"
#include "RandomOwners.h"
#include "support/Practice.h"

namespace
{

using Tracker::RollEnd;

constexpr short kRolledYear = 2025;
constexpr std::array<short, 4> kYears{2004, 2005, 2024, kRolledYear}; // before and after tasks of claims began

class RollForward : public ::Test::OnPractice
{
protected:
    RollForward()
    {
        CUserData::ClearPermissions();
        Sql("INSERT INTO BRIXUser (strUserID) VALUES ('ann')");
        Sql("INSERT INTO BRIXUserPermissions (strUserID, nPermission, bAllowed) VALUES ('ann', 40, 1)");
        CUserData::SetUser("ann");
        SeedTrackerTypes();
    }
    ~RollForward() override { CUserData::ClearPermissions(); }

    static Tracker::Rolled Roll(const std::vector<TrackerOwner>& owners, bool isPreview = false,
                                short year = kRolledYear)
    {
        return Tracker::RollForward(Quarry::GetConnection(), year, owners, {isPreview, {}});
    }
    /// Sources, tasks, enquiries.
    static std::array<int, 3> CountWork()
    {
        const auto count = [](const Cellar::SqlText& from) { return std::stoi(Query("SELECT COUNT(*) FROM " + from)); };
        return {count("Source"), count("SourceTask"), count("ClientEnquiry")};
    }
};
ON_BOTH_DATABASES(RollForward);

std::vector<std::string> ToldOf(const Tracker::Rolled& rolled)
{
    std::vector<std::string> lines;
    for (const auto& [owner, carried, problem] : rolled.owners) {
        std::string line = std::to_string(owner.id) + (owner.isPartnership ? "p " : " ") + problem.Str() +
                           std::to_string(carried.sources) + ' ' + std::to_string(carried.tasks) + ' ' +
                           std::to_string(carried.enquiries);
        for (const auto& each : carried.notCarried)
            line += ", " + each.Text().Str();
        lines.push_back(line);
    }
    return lines;
}

} // namespace

// MORVUT_PRACTICES=500 for as many.
TEST_P(RollForward, PreviewsWhatItDoesAndDoesItOnce)
{
    const unsigned practices = ::Test::Setting("MORVUT_PRACTICES", 8);
    std::set<Tracker::WhyNotCarried> reasons;
    for (unsigned seed = 1; seed <= practices; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        const short year = kYears[seed % kYears.size()];
        const std::vector<TrackerOwner> owners = AddRandomOwners(seed, 8, year);
        const std::string before = WorkInPractice();
        const std::array<int, 3> had = CountWork();
        const Tracker::Rolled preview = Roll(owners, true, year);
        ASSERT_EQ(WorkInPractice(), before);
        const Tracker::Rolled rolled = Roll(owners, false, year);
        ASSERT_EQ(ToldOf(preview), ToldOf(rolled));
        const Tracker::Carried& made = rolled.total;
        ASSERT_EQ(CountWork(), (std::array{had[0] + made.sources, had[1] + made.tasks, had[2] + made.enquiries}));
        const std::string after = WorkInPractice();
        const Tracker::Rolled again = Roll(owners, false, year);
        ASSERT_EQ(WorkInPractice(), after);
        ASSERT_EQ(again.total.sources + again.total.enquiries, 0);
        for (const auto& [owner, carried, problem] : rolled.owners)
            for (const auto& each : carried.notCarried)
                reasons.insert(each.why);
        Script("DELETE FROM Source; DELETE FROM SourceTask; DELETE FROM ClientEnquiry");
    }
    EXPECT_EQ(reasons.size(), 5u) << "these practices do not hold all that they should";
}

TEST_P(RollForward, SendsAFewStatementsHoweverMuchWorkThereIs)
{
    const auto sentFor = [](long client, int sources, int enquiries) {
        Sql("INSERT INTO BRIXClient (lID) VALUES (%ld)", client);
        for (int i = 0; i < sources; ++i) {
            const long id = client * 100 + i;
            Sql("INSERT INTO Source (SourceID, ClientID, Year, SourceTypeID, Description, "
                "bUserCreated) VALUES (%ld, %ld, %d, 2, %s, 1)",
                id, client, kRolledYear - 1, std::to_string(i));
            for (const int task : {1, 2, 3, 4, 5, 19, 20})
                Sql("INSERT INTO SourceTask (SourceID, TypeID) VALUES (%ld, %d)", id, task);
        }
        for (int i = 0; i < enquiries; ++i)
            Sql("INSERT INTO ClientEnquiry (lID, lClientID, nYear, strDescription, bCarryForward, "
                "SourceID, TypeID) VALUES (%ld, %ld, %d, %s, 1, %ld, 2)",
                client * 100 + i, client, kRolledYear - 1, std::to_string(i), client * 100 + i % sources);
        int sent = 0;
        Cellar::CConnection& connection = Quarry::GetConnection();
        connection.OnSent([&](std::string_view) { ++sent; });
        const auto carried = Tracker::RollForwardOne(connection, kRolledYear, {client, false}, true);
        connection.OnSent(nullptr);
        EXPECT_EQ(carried.sources, sources + 1);
        EXPECT_EQ(carried.enquiries, enquiries);
        return sent;
    };
    AddRandomOwners(4, 5, kRolledYear); // counters of ids begin
    sentFor(100, 20, 30);               // what a connection sends but once, its blocks of ids
    const int few = sentFor(200, 2, 2), many = sentFor(300, 20, 30);
    EXPECT_LE(few, 30);
    EXPECT_LE(many, few + 10) << "more than 16 new rows of a table go in pieces";
    AddRandomOwners(5, 100, kRolledYear);
    EXPECT_EQ(sentFor(1000, 2, 2), few) << "however many other clients there are";
}

TEST_P(RollForward, EndsWhenItIsToldAndIsRefusedWithoutTheRight)
{
    const auto owners = AddRandomOwners(3, 5, kRolledYear);
    std::size_t told = 0;
    const auto rolled =
        Tracker::RollForward(Quarry::GetConnection(), kRolledYear, owners,
                             {false, [&](std::size_t done, std::size_t all, const Tracker::RolledOwner& one) {
                                  EXPECT_EQ(all, owners.size());
                                  EXPECT_EQ(one.owner, owners[done - 1]);
                                  return (told = done) < 2;
                              }});
    EXPECT_EQ(rolled.end, RollEnd::Cancelled);
    EXPECT_EQ(told, 2u);
    EXPECT_EQ(rolled.done, 2u);
    CUserData::ClearPermissions();
    ::Test::Windows().Answer(IDOK);
    EXPECT_EQ(Roll(owners).end, RollEnd::Refused);
    Quarry::CTransaction begun(Cellar::Intent::Write);
    EXPECT_THROW(Tracker::RollForwardOne(Quarry::GetConnection(), kRolledYear, owners[0], false), std::logic_error);
}

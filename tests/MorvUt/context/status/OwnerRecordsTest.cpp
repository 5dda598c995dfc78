#include "MorvUt/context/status/OwnerRecords.h"

#include <sstream>

#include "MorvUt/users/UserData.h"
#include "Quarry/Session.h"
#include "support/Practice.h"

namespace
{

/// Client 1 has a row of each of the years, its status the year; client 2 one of 2010.
void AddYears(const std::string& years)
{
    ::Test::Practice::Sql("DELETE FROM BRIXClientYearly");
    ::Test::Practice::Sql("INSERT INTO BRIXClientYearly (lClientID, nYear, nStatus) VALUES (2, 2010, 2010)");
    std::istringstream numbers(years);
    for (int year = 0; numbers >> year;)
        ::Test::Practice::Sql("INSERT INTO BRIXClientYearly (lClientID, nYear, nStatus) VALUES (1, %d, %d)", year,
                              year);
}

Brix::CClientYearly RowsOfClient1()
{
    Brix::CClientYearly rows;
    rows.Open({{Brix::CClientYearly::kClientID, 1}});
    return rows;
}

std::string Stored()
{
    return ::Test::Practice::Query("SELECT nYear, nStatus FROM BRIXClientYearly WHERE lClientID = 1");
}

using OwnerRecords = ::Test::OnPractice;
ON_BOTH_DATABASES(OwnerRecords);

} // namespace

TEST_P(OwnerRecords, OfAYearAreTheNearestAndCopiesOfIt)
{
    for (const auto& [years, wanted, found, why] :
         ::Test::Table<const char*, short, int>("MorvUt/context/status/OwnerRecords.tsv")) {
        AddYears(years);
        Brix::CClientYearly list = RowsOfClient1();
        const int count = list.GetCount();
        EXPECT_EQ(GetClientYearly(list, wanted, false), found != 0) << why;
        EXPECT_EQ(list.IsEOL() ? 0 : list.GetYear(), found) << why;
        EXPECT_TRUE(GetClientYearly(list, wanted, true)) << why;
        EXPECT_EQ(list.GetYear(), wanted) << why;
        EXPECT_EQ(list.GetClientID(), 1) << why;
        EXPECT_EQ(list.GetStatus(), found) << why << ": its copy";
        EXPECT_FALSE(list.IsDirty()) << why;
        EXPECT_EQ(RowsOfClient1().GetCount(), count + (found == wanted ? 0 : 1)) << why;
    }
}

TEST_P(OwnerRecords, OfAYearAreNeverMadeTwiceOrForNobody)
{
    AddYears("2008");
    Brix::CClientYearly mine = RowsOfClient1(), theirs = mine;
    EXPECT_TRUE(GetClientYearly(theirs, 2010, true));
    theirs.SetStatus(7);
    theirs.Update();
    EXPECT_TRUE(GetClientYearly(mine, 2010, true));
    EXPECT_EQ(mine.GetStatus(), 7) << "the row that was made meanwhile";
    EXPECT_EQ(Stored(), "2008|2008, 2010|7");

    Brix::CClientYearly all;
    EXPECT_THROW(GetClientYearly(all, 2012, true), std::logic_error) << "never opened";
    all.Open();
    EXPECT_THROW(GetClientYearly(all, 2012, true), std::logic_error) << "opened for everybody";
    EXPECT_EQ(Quarry::GetTransactionLevel(), 0);
    EXPECT_TRUE(GetClientYearly(all, 2010, false));
    EXPECT_EQ(Stored(), "2008|2008, 2010|7");
}

TEST_P(OwnerRecords, OfPartnershipsAreTheirOwn)
{
    Brix::CPartnershipYearly rows;
    rows.Open({{Brix::CPartnershipYearly::kPClientID, 3}});
    EXPECT_FALSE(GetPartnershipYearly(rows, 2010, false));
    EXPECT_TRUE(GetPartnershipYearly(rows, 2010, true));
    EXPECT_EQ(::Test::Practice::Query("SELECT lpClientID, nYear, nStatus FROM BRIXPartnershipYearly"), "3|2010|0");
}

TEST_P(OwnerRecords, AreMarkedAsModifiedBesideOpenLists)
{
    ::Test::SetNow(2024, 3, 1, 14, 30);
    CUserData::m_strUser = "o'neill";
    const long client = ::Test::Add<Brix::CClient>([](Brix::CClient& row) { row.SetName("Ann"); });
    const long partnership = ::Test::Add<Brix::CPartnership>([](Brix::CPartnership& row) { row.SetName("Two"); });
    Brix::CClient open;
    open.Open();
    UpdateClientModified(client);
    UpdatePartnershipModified(partnership);
    UpdateClientModified(4711);
    open.SetName("Anna");
    EXPECT_NO_THROW(open.Update());
    EXPECT_EQ(::Test::Practice::Query("SELECT strName, dtModified, strModifiedBy FROM BRIXClient UNION ALL "
                                      "SELECT strName, dtModified, strModifiedBy FROM BRIXPartnership"),
              "Anna|2024-03-01 00:00:00.000|o'neill, Two|2024-03-01 00:00:00.000|o'neill");
    CUserData::m_strUser.Empty();
}

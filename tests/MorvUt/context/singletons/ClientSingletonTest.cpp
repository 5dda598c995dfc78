#include "MorvUt/context/singletons/ClientSingleton.h"

#include "support/Practice.h"

using namespace Brix;
using Practice = ::Test::Practice;

namespace
{

/// The fields, each "name value", that are another than in `before`.
std::string Fields(const CClientSingletonData& data, const CClientSingletonData& before = {})
{
    const auto words = [](const CClientSingletonData& d) -> std::vector<std::string> {
        std::string flags = "form" + std::to_string(d.taxFormExists) + " dormant" + std::to_string(d.dormant);
        std::string p11d = "p11d", partnerships = "partnerships", ministers = "ministers";
        for (const auto& [guid, value] : d.employmentP11D)
            p11d += ' ' + guid.Str() + std::to_string(value);
        for (const long id : d.partnerships)
            partnerships += ' ' + std::to_string(id);
        for (const long id : d.ministers)
            ministers += ' ' + std::to_string(id);
        return {flags,
                p11d,
                partnerships,
                ministers,
                d.hasIR214s ? "ir214s" : "no ir214s",
                d.personHasBusinessOrIsPartner ? "business" : "no business",
                d.clientReviewExist ? "review" : "no review",
                d.amending ? "amending" : "not amending"};
    };
    std::string text;
    const auto now = words(data), then = words(before);
    for (std::size_t i = 0; i < now.size(); ++i)
        if (now[i] != then[i])
            text += (text.empty() ? "" : ", ") + now[i];
    return text;
}

/// Client 1 and partnership 1, whose numbers must not be mixed up; client 2 is a bystander.
class ClientSingleton : public ::Test::OnPractice
{
protected:
    ClientSingleton()
    {
        Script(::Test::FileText("MorvUt/context/singletons/rows.sql"));
        Quarry::GetConnection().OnSent(
            [this](std::string_view statement) { m_selects = statement.starts_with("SELECT") ? m_selects + 1 : 0; });
    }

    /// Changes every field that is read from the database, of which no listener hears.
    static void MakeAllStale()
    {
        const Quarry::CIgnoreDirectSQL quiet;
        Script(::Test::FileText("MorvUt/context/singletons/changes.sql"));
    }

    int m_selects = 0; // since the last statement of another kind
};

/// "NewEmploy 40 nP11D=7 nYear=null" saves that in the row of this id, "NewEmploy new nYear=2024" adds one, "NewEmploy
/// 40 deleted" deletes it.
void Change(const std::string& change)
{
    std::istringstream words(change);
    std::string table, which, word;
    words >> table >> which;
    Quarry::CDataList rows(*FindTable("BRIX" + table));
    which == "new" ? rows.AddNew() : static_cast<void>(rows.Open({{0, std::stol(which)}}));
    while (words >> word) {
        if (word == "deleted")
            return rows.Delete();
        const std::size_t equals = word.find('=');
        const std::string value = word.substr(equals + 1);
        rows.Set(rows.GetTable().Find(word.substr(0, equals))->ordinal,
                 value == "null" ? Cellar::Value() : Cellar::Value(value));
    }
    rows.Update();
}

constexpr char kNewMinister[] = "Ministers new lTaxFormID=10 lClientID=1 nYear=2024";

ON_BOTH_DATABASES(ClientSingleton);

} // namespace

TEST_P(ClientSingleton, RefreshesWhatAChangeTouchesAndNothingElse)
{
    // whether it is a partnership's, what is changed; what is refreshed ("ended": the singleton), by how many SELECTs
    for (const auto& [isPartnership, change, refreshed, selects, why] :
         ::Test::Table<int, const char*, const char*, int>("MorvUt/context/singletons/ClientSingleton.tsv")) {
        SCOPED_TRACE(change);
        const Quarry::CTransaction rolledBack;
        const CClientSingletonData before = CClientSingleton::Data(1, isPartnership, 2024);
        MakeAllStale();
        if (std::string_view(change).starts_with("CalculatedBenefits unreadable")) {
            Quarry::GetConnection().Script("DROP TABLE BRIXMinisters");
            Change("CalculatedBenefits new lMinisterID=30");
        } else {
            Change(change);
        }
        EXPECT_EQ(m_selects, selects) << why;
        EXPECT_EQ(CClientSingleton::Loaded() ? Fields(CClientSingleton::Data(1, isPartnership, 2024), before)
                                             : std::string("ended"),
                  refreshed)
            << why;
    }
}

TEST_P(ClientSingleton, ReadsAllOnceForAKey)
{
    EXPECT_FALSE(CClientSingleton::Data(2, 0, 2023).HasP11D(nullptr)) << "no employment";
    EXPECT_EQ(CClientSingleton::Data(2, 0, 2023).EmploymentGUIDs(), "");
    MakeAllStale();
    m_selects = 0;
    CClientSingletonData data = CClientSingleton::Data(1, 0, 2024);
    EXPECT_EQ(Fields(data),
              "form1 dormant0, p11d b0 A1, partnerships 1 5, ministers 30 31, ir214s, business, review, amending");
    EXPECT_EQ(m_selects, 9);
    EXPECT_EQ(&CClientSingleton::Data(1, 0, 2024), &CClientSingleton::Data(1, 0, 2024));
    EXPECT_EQ(m_selects, 9) << "the same key";
    EXPECT_EQ(data.EmploymentGUIDs(), "b,A") << "by ordering number";
    EXPECT_TRUE(data.HasP11D("a") && !data.HasP11D("B") && !data.HasP11D("C") && data.HasP11D(nullptr));
    EXPECT_TRUE(data.BelongsToPartnership(5) && !data.BelongsToPartnership(6));
    EXPECT_TRUE(data.IsMinister(31) && !data.IsMinister(5));
    EXPECT_EQ(Fields(CClientSingleton::Data(1, 1, 2024)), "form1 dormant0, review, amending") << "another kind";
    EXPECT_FALSE(CClientSingleton::Data(1, 1, 2024).HasIR214s()) << "nor of the client of that number";
    EXPECT_EQ(Fields(CClientSingleton::Data(1, 0, 2023)), "form1 dormant0, partnerships 1 5, business, review");
    EXPECT_EQ(Fields(CClientSingleton::Data(2, 0, 2023)), "") << "another client";
    Practice::Sql("UPDATE BRIXTaxForm SET dtClientReview = NULL");
    data.UpdateClientReviewExist();
    EXPECT_FALSE(data.clientReviewExist);
    Practice::Sql("UPDATE BRIXFBISubmissions SET nYear = 2007, nStatus = 2");
    EXPECT_FALSE(CClientSingleton::Data(1, 0, 2007).amending) << "before 2008";
    Practice::Sql("UPDATE BRIXFBISubmissions SET nYear = 2008");
    Practice::Sql("DELETE FROM BRIXClient WHERE lID = 1");
    EXPECT_TRUE(CClientSingleton::Data(2, 0, 2008).amending && !CClientSingleton::Data(1, 0, 2008).amending);
    Practice::Sql("UPDATE BRIXBTaxProprietor SET lClientID = 0");
    EXPECT_FALSE(CClientSingleton::Data(0, 0, 2024).personHasBusinessOrIsPartner) << "0 is nobody";
    Quarry::GetConnection().Script(
        "WITH RECURSIVE n AS (SELECT 1 AS i UNION ALL SELECT i + 1 FROM n WHERE i < 1001) INSERT INTO "
        "BRIXPartnershipClients (lClientID, lpClientID) "
        "SELECT 2, CASE WHEN i = 1001 THEN 5 ELSE 1000 + i END FROM n");
    EXPECT_TRUE(CClientSingleton::Data(2, 0, 2022).personHasBusinessOrIsPartner) << "by the last of many";
}

TEST_P(ClientSingleton, ReadsAnewAfterARollbackAndOnAnotherConnection)
{
    {
        const Quarry::CTransaction rolledBack;
        CClientSingleton::Data(1, 0, 2024);
        Change(kNewMinister);
        EXPECT_EQ(CClientSingleton::Data(1, 0, 2024).ministers.size(), 2u);
    }
    EXPECT_EQ(CClientSingleton::Data(1, 0, 2024).ministers.size(), 1u);
    Quarry::SetConnection(nullptr);
    EXPECT_EQ(CClientSingleton::Loaded(), 0);
    EXPECT_THROW(CClientSingleton::Data(1, 0, 2024), Cellar::DatabaseError);
    EXPECT_EQ(CClientSingleton::Data(0, 0, 0).clientId, 0) << "nothing is held, nothing is read";
}

TEST_P(ClientSingleton, MayEndAndBeMadeAgainByAnotherListener)
{
    const auto remake = [](const Quarry::DataChange&) {
        CClientSingleton::Destroy();
        CClientSingleton::Data(1, 0, 2024);
    };
    Quarry::AddDataChangedListenerForInsert(CMinisters::kTableNumber, "BRIX", remake); // before the cache's own
    CClientSingleton::Data(1, 0, 2024);
    Change(kNewMinister);
    EXPECT_EQ(CClientSingleton::Data(1, 0, 2024).ministers.size(), 2u);
    Quarry::RemoveDataChangedListenerForInsert(CMinisters::kTableNumber, "BRIX", remake);
    Change(kNewMinister);
    EXPECT_EQ(m_selects, 1) << "the new one listens, once";
    EXPECT_EQ(CClientSingleton::Data(1, 0, 2024).ministers.size(), 3u);
}

TEST_P(ClientSingleton, HearsOfEachChangeOnceAfterListenersWereDisabled)
{
    CClientSingleton::Data(1, 0, 2024);
    DisableQuarryListeners(true);
    CClientSingleton::Destroy();
    Change(kNewMinister);
    EXPECT_EQ(CClientSingleton::Loaded(), 0) << "listeners that stayed make none";
    DisableQuarryListeners(false);
    CClientSingleton::Data(1, 0, 2024);
    Change(kNewMinister);
    EXPECT_EQ(m_selects, 1);
}

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
        Practice::Sql("INSERT BRIXClient (lID) VALUES (1), (2)");
        Practice::Sql("INSERT BRIXPartnership (lID) VALUES (1), (5)");
        Practice::Sql("INSERT BRIXTaxForm (lID, lClientID, nYear) VALUES (10, 1, 2024), (11, 1, 2023), (12, 2, 2024), "
                      "(13, 1, 2024)");
        Practice::Sql("INSERT BRIXPartnershipTaxForm (lID, lpClientID, nYear) VALUES (20, 1, 2024)");
        Practice::Sql("INSERT BRIXMinisters (lID, lTaxFormID, lClientID, nYear) VALUES (30, 10, 1, 2024)");
        Practice::Sql("INSERT BRIXNewEmploy (lID, lTaxFormID, lClientID, nYear, strGUID, nOrdering, nP11D) VALUES "
                      "(40, 10, 1, 2024, 'A', 2, 1), (42, 12, 2, 2024, 'X', 1, 1)");
        Practice::Sql("INSERT BRIXFBISubmissions (lID, lClientID, nYear) VALUES (50, 1, 2024), (52, 2, 2024)");
        Practice::Sql(
            "INSERT BRIXPartnershipFBISubmissions (lID, lpClientID, nYear) VALUES (60, 1, 2024), (61, 5, 2024)");
        Practice::Sql("INSERT BRIXPartnershipClients (lID, lClientID, lpClientID) VALUES (70, 1, 5)");
        Quarry::GetConnection().OnSent(
            [this](std::string_view statement) { m_selects = statement.starts_with("SELECT") ? m_selects + 1 : 0; });
    }

    /// Changes every field that is read from the database, of which no listener hears.
    static void MakeAllStale()
    {
        const Quarry::CIgnoreDirectSQL quiet;
        Practice::Sql("UPDATE BRIXTaxForm SET dtClientReview = '2024-05-01'");
        Practice::Sql("UPDATE BRIXPartnershipTaxForm SET dtClientReview = '2024-05-01'");
        Practice::Sql("INSERT BRIXMinisters (lID, lTaxFormID) VALUES (31, 10)");
        Practice::Sql("INSERT BRIXCalculatedBenefits (lID, lMinisterID, nType) VALUES (35, 30, 50)");
        Practice::Sql("INSERT BRIXNewEmploy (lTaxFormID, strGUID, nOrdering, nP11D) VALUES (10, 'b', 1, 0), "
                      "(13, 'second', 1, 1)");
        Practice::Sql("INSERT BRIXMinisters (lID, lTaxFormID) VALUES (29, 13)");
        Practice::Sql("INSERT BRIXBTaxProprietor (lID, lpClientID) VALUES (80, 5)");
        Practice::Sql("INSERT BRIXPartnershipClients (lClientID, lpClientID) VALUES (1, 1)");
        Practice::Sql("INSERT BRIXFBISubmissions (lClientID, nYear, nStatus) VALUES (1, 2024, 2)");
        Practice::Sql("INSERT BRIXPartnershipFBISubmissions (lpClientID, nYear, nStatus) VALUES (1, 2024, 2)");
    }

    int m_selects = 0; // since the last statement of another kind
};

using Change = std::function<void()>;

/// Saves the record of this id; 0: a new one.
template<class Record>
Change Save(long id, std::vector<std::pair<int, Cellar::Value>> values)
{
    return [=] {
        Record rows;
        id != 0 ? static_cast<void>(rows.Open({{0, id}})) : rows.AddNew();
        for (const auto& [ordinal, value] : values)
            rows.Set(ordinal, value);
        rows.Update();
    };
}
template<class Record>
Change Delete(long id)
{
    return [=] {
        Record rows;
        rows.Open({{0, id}});
        rows.Delete();
    };
}
template<class Record>
Change AddUnder(long form, long client, short year)
{
    return Save<Record>(0, {{Record::kTaxFormID, form}, {Record::kClientID, client}, {Record::kYear, year}});
}

void MakeBenefitUnreadable()
{
    const Quarry::CIgnoreDirectSQL quiet;
    Practice::Sql("DROP TABLE BRIXMinisters");
    Save<CCalculatedBenefits>(0, {{2, 30}})();
}

ON_BOTH_DATABASES(ClientSingleton);

} // namespace

TEST_P(ClientSingleton, RefreshesWhatAChangeTouchesAndNothingElse)
{
    using PForm = CPartnershipTaxForm;
    using PSubmissions = CPartnershipFBISubmissions;
    const struct
    {
        int isPartnership;
        Change change;
        const char* refreshed; // "ended": the singleton
        int selects;           // after the change's own statement
    } rows[] = {
        {0, AddUnder<CMinisters>(10, 1, 2024), "ministers 30 31 32", 1},
        {0, AddUnder<CMinisters>(13, 1, 2024), "ministers 30 31", 1}, // of the year's second form
        {0, AddUnder<CMinisters>(12, 2, 2024), "", 0},
        {0, AddUnder<CMinisters>(11, 1, 2023), "", 0},
        {0, Delete<CMinisters>(30), "ministers 31", 1},
        {0, Save<CCalculatedBenefits>(0, {{2, 30}}), "ir214s", 1},
        {0, Save<CCalculatedBenefits>(0, {{2, 31}}), "", 0}, // a minister that is not held yet
        {0, Delete<CCalculatedBenefits>(35), "", 1},
        {0, AddUnder<CNewEmploy>(10, 1, 2024), "p11d 0 b0 A1", 1},
        {0, AddUnder<CNewEmploy>(13, 1, 2024), "p11d b0 A1", 1},
        {0, Delete<CNewEmploy>(40), "p11d b0", 1},
        {0, Save<CNewEmploy>(40, {{60, 7}}), "p11d A7", 0},
        {0, Save<CNewEmploy>(40, {{4, "C"}}), "p11d b0 C1", 1},
        {0, Save<CNewEmploy>(40, {{4, "a"}, {5, 9}}), "", 0},
        {0, Save<CNewEmploy>(40, {{3, 2023}}), "ended", 0},
        {0, Save<CNewEmploy>(42, {{2, 1}}), "ended", 0},
        {0, Save<CBTaxProprietor>(0, {{1, 1}}), "business", 1},
        {0, Save<CBTaxProprietor>(0, {{2, 5}}), "business", 3},
        {0, Save<CBTaxProprietor>(0, {{2, 1}}), "", 0}, // a partnership that is not held yet
        {0, Delete<CBTaxProprietor>(80), "", 3},
        {0, Save<CPartnershipClients>(0, {{1, 1}, {2, 9}}), "partnerships 1 5 9", 1}, // not the business
        {0, Save<CPartnershipClients>(70, {{2, 9}}), "", 0},
        {0, Save<CFBISubmissions>(50, {{3, 2}}), "amending", 1},
        {0, Save<CFBISubmissions>(50, {{16, "2024-05-01"}}), "", 0},
        {0, Save<CFBISubmissions>(52, {{3, 2}}), "", 0},
        {0, Save<CFBISubmissions>(52, {{1, 2023}}), "ended", 0}, // anybody's
        {0, Save<PSubmissions>(60, {{2, 2}}), "amending", 1},    // the partnership of the client's number
        {0, Save<PSubmissions>(61, {{2, 2}}), "", 0},
        {0, Save<PSubmissions>(61, {{1, 9}}), "ended", 0},
        {0, Save<CTaxForm>(0, {{1, 1}, {2, 2024}, {110, 1}}), "form1 dormant1", 0},
        {0, Save<CTaxForm>(10, {{110, -1}}), "form1 dormant1", 0}, // as some programs write a flag
        {0, Save<CTaxForm>(10, {{3, nullptr}}), "", 0},            // nor the review
        {0, Save<CTaxForm>(10, {{2, 2023}}), "ended", 0},
        {0, Save<CTaxForm>(12, {{1, 1}, {110, 1}}), "", 0}, // one that comes
        {0, Delete<CTaxForm>(10), "ended", 0},
        {0, Delete<CTaxForm>(11), "", 0},
        {0, Delete<PForm>(20), "", 0},
        {0, &MakeBenefitUnreadable, "ended", 1}, // which does not fail the change
        {1, Save<PForm>(0, {{1, 1}, {2, 2024}, {3, 1}}), "form1 dormant1", 0},
        {1, Save<PForm>(20, {{3, 1}}), "form1 dormant1", 0},
        {1, Save<PForm>(20, {{1, 5}}), "ended", 0},
        {1, Delete<PForm>(20), "ended", 0},
        {1, Delete<CTaxForm>(10), "", 0}, // of the client of its number
        {1, Save<CNewEmploy>(40, {{3, 2023}}), "", 0},
        {1, Save<PSubmissions>(60, {{2, 2}}), "", 0},
        {1, Save<PSubmissions>(60, {{4, 2023}}), "ended", 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        const Quarry::CTransaction rolledBack;
        const CClientSingletonData before = CClientSingleton::Data(1, row.isPartnership, 2024);
        MakeAllStale();
        row.change();
        EXPECT_EQ(m_selects, row.selects);
        EXPECT_EQ(CClientSingleton::Loaded() ? Fields(CClientSingleton::Data(1, row.isPartnership, 2024), before)
                                             : std::string("ended"),
                  row.refreshed);
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
        AddUnder<CMinisters>(10, 1, 2024)();
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
    AddUnder<CMinisters>(10, 1, 2024)();
    EXPECT_EQ(CClientSingleton::Data(1, 0, 2024).ministers.size(), 2u);
    Quarry::RemoveDataChangedListenerForInsert(CMinisters::kTableNumber, "BRIX", remake);
    AddUnder<CMinisters>(10, 1, 2024)();
    EXPECT_EQ(m_selects, 1) << "the new one listens, once";
    EXPECT_EQ(CClientSingleton::Data(1, 0, 2024).ministers.size(), 3u);
}

TEST_P(ClientSingleton, HearsOfEachChangeOnceAfterListenersWereDisabled)
{
    CClientSingleton::Data(1, 0, 2024);
    DisableQuarryListeners(true);
    CClientSingleton::Destroy();
    AddUnder<CMinisters>(10, 1, 2024)();
    EXPECT_EQ(CClientSingleton::Loaded(), 0) << "listeners that stayed make none";
    DisableQuarryListeners(false);
    CClientSingleton::Data(1, 0, 2024);
    AddUnder<CMinisters>(10, 1, 2024)();
    EXPECT_EQ(m_selects, 1);
}

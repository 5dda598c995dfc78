// The command: what stops it, in which order, and what it leaves behind.

#include "MorvUt/hmrc/fetch/FetchData.h"

#include "MorvUt/hmrc/HmrcTest.h"
#include "MorvUt/taxyear/CurrentTaxYear.h"
#include "support/Case.h"

namespace
{

using HmrcApi::IEndpointOverride;

class FetchData : public HmrcTest
{
protected:
    FetchData() { SetCurrentTaxYear(kYear - 1991); }

    /// Fetches; the messages that are shown. What is answered is the true ones of "ok new clear".
    std::string Run(IEndpointOverride::ResponseType type = IEndpointOverride::Everything)
    {
        ::Test::Windows().Clear();
        ::Test::Windows().OnUnexpected([](const auto& shown) { return Afx::SafeAnswer(shown.style); });
        bool newData = true, clear = false;
        const bool isOk = GetHMRCApiData(m_client, kGateway, newData, clear, type);
        m_answer = std::string(isOk ? "ok " : "") + (newData ? "new " : "") + (clear ? "clear" : "");
        std::string texts;
        for (const auto& shown : ::Test::Windows().Messages())
            texts += shown.text + '|';
        return texts;
    }

    std::string m_answer;
};

constexpr char kNoUtr[] = "A valid UTR is required to retrieve data from HMRC.\n\nPlease add a valid UTR.|";

} // namespace

TEST_F(FetchData, IsStoppedBeforeAnyRequest)
{
    // Each row mends what the row before was stopped by, so the order shows too.
    const std::string contact = "\n\nPlease contact your administrator.|";
    const ::Test::Case<Cellar::SqlText, std::string> rows[] = {
        {"UPDATE BRIXClient SET bTrust = 1, strNINumber = ' ', strUTR = '1234567890'", "", "a trust"},
        {"UPDATE BRIXClient SET bTrust = 0",
         "You do not have permission to do this.\n\nPlease contact your administrator for more details.|", "no right"},
        {"UPDATE BRIXUserPermissions SET bAllowed = 1", "Data retrieval from HMRC is not enabled." + contact,
         "switched off"},
        {"UPDATE BRIXOptions SET bHMRCRetrieval = 1",
         "Data retrieval from HMRC is not enabled for this user or client." + contact, "gateway without authority"},
        {"UPDATE MTDAuthorisation SET nAuthorisedStatus = 1",
         "A national insurance number is required to retrieve income and tax data from HMRC.\n\nPlease add a national "
         "insurance number.|",
         "no National Insurance number"},
        {"UPDATE BRIXClient SET strNINumber = 'AA000001A'", kNoUtr, "UTR not valid"},
    };
    Sql("UPDATE BRIXUserPermissions SET bAllowed = 0");
    Sql("UPDATE BRIXOptions SET bHMRCRetrieval = 0");
    Sql("UPDATE MTDAuthorisation SET nAuthorisedStatus = 0");
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        Sql(row.in);
        CUserData::ClearPermissions();
        CUserData::SetUser("ANNA");
        EXPECT_EQ(Run(), row.out);
        EXPECT_EQ(m_answer, "clear");
        EXPECT_EQ(Query("SELECT (SELECT COUNT(*) FROM MTDLog) + COUNT(*) FROM BRIXMTD_TaxYear"), "0") << "no request";
    }
    Sql("UPDATE BRIXClient SET strUTR = '2234567890'");
    {
        const Quarry::CTransaction unsavedChanges(Cellar::Intent::Write);
        EXPECT_NE(Run(), "");
        EXPECT_EQ(m_answer, "clear");
    }
    {
        const Quarry::CTransaction sheet; // open, nothing changed yet: Cancel undoes the staging
        EXPECT_EQ(Run(), "");
        EXPECT_EQ(m_answer, "ok new clear");
        EXPECT_EQ(Quarry::GetTransactionLevel(), 1);
    }
    EXPECT_EQ(Staged(), "");
    EXPECT_NE(Query("SELECT COUNT(*) FROM MTDLog"), "0") << "no rollback takes a log line";
    EXPECT_EQ(Run(), "");
    EXPECT_EQ(m_answer, "ok new clear");
}

TEST_F(FetchData, NeedsTheUtrButNoNationalInsuranceNumberForTheIndividualInterfaces)
{
    Sql("UPDATE BRIXOptions SET nPAYEInterface = 0");
    Sql("UPDATE BRIXClient SET strNINumber = NULL, strUTR = NULL");
    EXPECT_EQ(Run(), kNoUtr);
    Sql("UPDATE BRIXClient SET strUTR = '2234567890'");
    EXPECT_TRUE(Run().starts_with("Employments\n")) << ::Test::Windows().Messages()[0].text;
    EXPECT_EQ(m_answer, "new clear");
    EXPECT_EQ(Query("SELECT amtClass2Due FROM BRIXMTD_NIC"), "319.57") << "National Insurance is fetched all the same";
}

TEST_F(FetchData, TellsWhatIsNewAndWhetherAReviewIsDue)
{
    EXPECT_EQ(Run(), "");
    EXPECT_EQ(m_answer, "ok new clear") << "items without a schedule are no difference";
    EXPECT_EQ(Run(), "");
    EXPECT_EQ(m_answer, "ok clear") << "the same answer";
    Create();
    Sql("UPDATE BRIXNewEmploy SET amtPay = amtPay + 100");
    Run();
    EXPECT_EQ(m_answer, "ok ") << "the return was changed";
    HmrcApi::FetchResult result = HmrcApi::FetchFromHmrc(m_client, kGateway, IEndpointOverride::Employed);
    EXPECT_EQ(result.staged, (HmrcApi::StagedCounts{4, 1, 18})) << "another National Insurance figure is the change";
    EXPECT_TRUE(result.ok && result.newData && result.clear && result.message.IsEmpty());
    EXPECT_EQ(result.groups[0].state, HmrcApi::GroupState::There);
    EXPECT_EQ(result.counts.inReturn, 0) << "what the return has is withdrawn now";
    EXPECT_EQ(result.counts.notInReturn, 1);
    EXPECT_EQ(result.counts.items, 5);
}

TEST(StateOfNothing, IsToldByTheDayAndByWhatIsThere)
{
    using HmrcApi::StateOfNothing;
    const std::tuple<Kiln::CDate, bool, bool, const char*> rows[] = {
        // today, staged, finalised
        {{2018, 4, 6}, false, false, "notReconciled"},
        {{2018, 11, 30}, false, true, "notReconciled"},
        {{2018, 12, 1}, false, false, "notRegistered"},
        {{2018, 12, 1}, false, true, "gone"},
        {{2018, 7, 1}, true, false, "gone"},
    };
    for (const auto& [today, isStaged, isFinalised, name] : rows)
        EXPECT_STREQ(NameOf(StateOfNothing(2018, isStaged, isFinalised, today)), name) << today.FormatIso();
}

TEST(IsUnreachable, WhenNoAnswerBegan)
{
    for (const char* code : {"NO_CONNECTION", "TIMED_OUT", "ANSWER_INCOMPLETE"}) // the last: as a proxy drops it
        EXPECT_TRUE(HmrcApi::IsUnreachable(code, "")) << code;
    EXPECT_FALSE(HmrcApi::IsUnreachable("ANSWER_INCOMPLETE", "200"));
    EXPECT_FALSE(HmrcApi::IsUnreachable("REFRESH_BUSY", ""));
}

TEST_F(FetchData, ReportsTokensThatCannotBeLoaded)
{
    const std::string shown = Run(IEndpointOverride::Live); // authorised, but the row has no tokens
    const std::string entry = "Unable to load user's HMRC credentials (NO_CREDENTIALS)";
    EXPECT_EQ(shown, "PAYE\n" + entry + "\n\nNational Insurance\n" + entry + '|');
    EXPECT_EQ(m_answer, "clear");
    EXPECT_EQ(Query("SELECT COUNT(*) FROM BRIXMTD_TaxYear"), "0");
}

TEST_F(FetchData, ShowsAnExceptionAndSkipsTheRest)
{
    const auto fail = [](const Quarry::DataChange&) { throw std::runtime_error("disk full"); };
    Quarry::AddDataChangedListenerForInsert(Brix::CMTD_Employments::Declaration().number, "BRIX", fail);
    EXPECT_EQ(Run(), "disk full|");
    Quarry::RemoveAllListeners();
    const auto refuse = [](const Quarry::DataChange&) { throw new CUserException("not now"); }; // the framework's way
    Quarry::AddDataChangedListenerForInsert(Brix::CMTD_Employments::Declaration().number, "BRIX", refuse);
    EXPECT_EQ(Run(), "not now|");
    EXPECT_EQ(m_answer, "clear");
    EXPECT_EQ(Query("SELECT COUNT(*) FROM BRIXMTD_NIC"), "0");
    EXPECT_EQ(Staged(), "");
    EXPECT_EQ(Quarry::GetTransactionLevel(), 0);
}

TEST_F(FetchData, StagesNationalInsuranceWhenItChanges)
{
    ::Test::SetNow(2018, 9, 1);
    Run();
    EXPECT_EQ(Rows("SELECT amtClass1Earnings, amtClass2Due FROM BRIXMTD_NIC"), "17.00|319.57\n");
    ::Test::SetNow(2018, 9, 2);
    Run();
    EXPECT_EQ(Query("SELECT dtUpdated FROM BRIXMTD_NIC"), "2018-09-01 12:00:00.000") << "nothing new";
    Sql("UPDATE BRIXMTD_NIC SET amtClass2Due = NULL");
    Run();
    EXPECT_EQ(m_answer, "ok new clear");
    Run(static_cast<IEndpointOverride::ResponseType>(99)); // HMRC has nothing: what was sent is kept
    EXPECT_EQ(Rows("SELECT amtClass2Due, dtUpdated FROM BRIXMTD_NIC"), "319.57|2018-09-02 12:00:00.000\n");
}

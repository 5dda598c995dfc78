// The command: what stops it, in which order, and what it leaves behind.

#include "MorvUt/hmrc/fetch/FetchData.h"

#include "MorvUt/hmrc/HmrcTest.h"

using FetchData = HmrcTest;
ON_BOTH_DATABASES(FetchData);

TEST_P(FetchData, NeedsASheetWithoutUnsavedChangesAndLeavesItOpen)
{
    {
        const Quarry::CTransaction unsavedChanges(Cellar::Intent::Write);
        EXPECT_TRUE(Retrieve().starts_with("not ok, clear\n")) << "and says why";
    }
    {
        const Quarry::CTransaction sheet; // open, nothing changed yet: Cancel undoes the staging
        EXPECT_EQ(Retrieve(), "ok, new data, clear\n");
        EXPECT_EQ(Quarry::GetTransactionLevel(), 1);
    }
    EXPECT_EQ(Staged(), "");
    EXPECT_NE(Query("SELECT COUNT(*) FROM MTDLog"), "0") << "no rollback takes a log line";
    EXPECT_EQ(Retrieve(), "ok, new data, clear\n");
}

TEST_P(FetchData, CountsWhatIsSentNowAndWhatTheReturnHas)
{
    Retrieve();
    Create();
    HmrcApi::FetchResult result = HmrcApi::FetchFromHmrc(m_client, kGateway, HmrcApi::IEndpointOverride::Employed);
    EXPECT_EQ(result.staged, (HmrcApi::StagedCounts{4, 1, 18})) << "another National Insurance figure is the change";
    EXPECT_TRUE(result.ok && result.newData && result.clear && result.message.IsEmpty());
    EXPECT_EQ(result.groups[0].state, HmrcApi::GroupState::There);
    EXPECT_EQ(result.counts.inReturn, 0) << "what the return has is withdrawn now";
    EXPECT_EQ(result.counts.notInReturn, 1);
    EXPECT_EQ(result.counts.items, 5);
}

TEST_P(FetchData, CountsOnlyWhatTheRouteSendsThatWasAsked)
{
    Retrieve(); // State Pension and allowances stay
    Sql("UPDATE BRIXOptions SET nPAYEInterface = 0");
    const HmrcApi::FetchResult result =
        HmrcApi::FetchFromHmrc(m_client, kGateway, HmrcApi::IEndpointOverride::Everything);
    EXPECT_EQ(result.counts.items, 2 + 16 + 5 + 1) << "employments, benefits, sums, National Insurance";
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

TEST(IsBusy, WhenNothingElseIsWrong)
{
    HmrcApi::CAPIErrorHandler errors;
    errors.AddGroup("PAYE");
    errors.AddGroup("National Insurance");
    EXPECT_FALSE(HmrcApi::IsBusy(errors)) << "nothing is wrong";
    errors.AddError("PAYE", HmrcApi::CAPIError("NO_CREDENTIALS", "", "REFRESH_BUSY", ""));
    EXPECT_TRUE(HmrcApi::IsBusy(errors)) << "the other group had its answer";
    errors.AddError("National Insurance", HmrcApi::CAPIError("NO_CREDENTIALS", "", "INVALID_GRANT", ""));
    EXPECT_FALSE(HmrcApi::IsBusy(errors));
}

TEST_P(FetchData, KeepsTheGroupThatNobodyInterferedWith)
{
    const auto fetch = [&] {
        return HmrcApi::FetchFromHmrc(m_client, kGateway, HmrcApi::IEndpointOverride::Everything);
    };
    ASSERT_TRUE(fetch().ok);
    ::Test::Windows().OnUnexpected([](const auto& shown) { return Afx::SafeAnswer(shown.style); });
    Sql("UPDATE BRIXMTD_PensionStateBenefits SET amtAmount = 1");
    Sql("DELETE FROM BRIXMTD_NIC");
    const ::Test::Trigger meanwhile(Quarry::GetConnection(), "AFTER UPDATE", "BRIXMTD_PensionStateBenefits",
                                    "new.lID = (SELECT MIN(lID) FROM BRIXMTD_PensionStateBenefits)",
                                    "UPDATE BRIXMTD_PensionStateBenefits SET nVersion = nVersion + 1 WHERE lID = "
                                    "(SELECT MAX(lID) FROM BRIXMTD_PensionStateBenefits)");
    const HmrcApi::FetchResult result = fetch();
    ASSERT_EQ(result.errors->GetErrorCount(), 1);
    EXPECT_EQ(result.errors->GetGroups().at(0).errors.at(0).GetCode(), "CHANGED_BY_ANOTHER_USER");
    EXPECT_EQ(Query("SELECT COUNT(*) FROM BRIXMTD_PensionStateBenefits WHERE amtAmount <> 1"), "0") << "as they were";
    EXPECT_EQ(Query("SELECT COUNT(*) FROM BRIXMTD_NIC"), "1");
    EXPECT_EQ(result.staged, (HmrcApi::StagedCounts{1, 0, 0}));
}

#include "MorvUt/users/StaffRights.h"
#include "MorvUt/users/UsersTest.h"

namespace
{

using Numbers = std::vector<int>;
using Permissions = UsersTest;
ON_BOTH_DATABASES(Permissions);

} // namespace

TEST_P(Permissions, KeepTheirNamesAndStoredNumbers)
{
    constexpr char kPublished[] =
        "1 AssetRegisterSaveAllowed 2 AssetRegisterDeleteAllowed 3 ClientsSaveAllowed 4 ClientsDeleteAllowed "
        "5 ClientsAssignmentsAllowed 6 CTMAllowed 7 ClientsCanChangeDoNotSendTaxReturnElectronicallyAllowed "
        "8 ComputationParametersAllowed 9 CostingToolAllowed 10 CustomiseReportsEditAllowed "
        "11 CustomiseReportsManageUserThemesAllowed 12 CustomiseReportsManagePracticeThemesAllowed "
        "13 CustomiseReportsCustomiseReportThemeSelectionAllowed 14 CustomiseReportsSynchroniseReportsAllowed "
        "15 CustomiseReportsManageUserReportsAllowed 16 CustomiseReportsManagePracticeReportsAllowed "
        "17 CustomiseReportsCustomiseReportTemplateSelectionAllowed 18 DataImportAllowed 19 EditLettersAllowed "
        "20 EmailOrSaveFormsAllowed 21 FBIManagerAllowed 22 FormSA303SaveAllowed 23 FormSA303DeleteAllowed "
        "24 GlobalClientOperationsAllowed 26 QueryManagerAllowed 27 ReviewToolUseAllowed "
        "28 ReviewToolViewEventsLogAllowed 29 ReviewToolStartOrCompleteReviewsAssignedToAnotherUserAllowed "
        "30 ReviewToolFinaliseReviewsAllowed 31 ReviewToolEditTolerancesAllowed 32 TaxDistrictSaveAllowed "
        "33 TaxDistrictDeleteAllowed 34 TaxReturnSaveAllowed 35 TaxReturnDeleteAllowed 36 TaxReturnChangesAllowed "
        "37 TaxReturnEnableEditingAllowed 38 TaxReturnFinaliseAllowed "
        "39 TaxReturnFinaliseWithIncompleteReviewsAllowed 40 TrackerSaveAllowed 41 TrackerDeleteAllowed "
        "42 TrackerCustomiseAllowed 43 IntegrationAllowed 44 ReviewThresholdsAllowed 45 PensionPlannerAllowed "
        "46 EmployerManagerSaveAllowed 47 EmployerManagerDeleteAllowed 48 PaymentsAllowed 49 OptionsGeneralAllowed "
        "50 OptionsAppearanceAllowed 51 OptionsTaxInfoAllowed 52 OptionsReportsAllowed 53 OptionsFormsAllowed "
        "54 OptionsCorrespondenceAllowed 55 OptionsOnlineFilingTextAllowed 56 OnlineFilingAlternateUserAllowed "
        "57 TaxReturnChangeWhenSentToClientAllowed 58 TaxReturnAmendAllowed 59 TaxReturnNotesSaveGlobalAllowed "
        "60 TaxReturnNotesEditGlobalAllowed 61 TaxReturnNotesDeleteGlobalAllowed "
        "62 TaxReturnNotesSaveEmployerAllowed 63 TaxReturnNotesEditEmployerAllowed "
        "64 TaxReturnNotesDeleteEmployerAllowed 65 TaxReturnNotesEditLocalAllowed 66 OnlineFilingTestInLiveAllowed "
        "67 DisconnectClientsAllowed 68 OnlineFilingViewXMLAllowed 69 RemittanceBasisOverrideAllowed "
        "70 OnlineFilingSelectEmailAddressAllowed 71 SoleTradeEnabled 72 BudgetSummaryReportAllowed "
        "73 ClientFilesEnabled 74 TaxExchangeAllowed 75 P11DImportAllowed 76 DocumentScanningAllowed "
        "77 ClientsCreateAllowed 78 TaxReturnUserLockAllowed 79 TaxReturnUnlockAllowed "
        "80 OptionsDocumentmanagementAllowed 81 OptionsReportsDefaultsAllowed 82 IntegrationSelectAllowed "
        "83 TrackerGlobalCustomiseAllowed 84 AutomaticUpdateCheckAllowed 85 AutomaticUpdateDownloadAllowed "
        "86 OptionsHALVESSAAllowed 87 HMRCDataGetAllowed 88 HMRCDataAcceptAllowed 89 HMRCDataRejectAllowed "
        "90 OptionsOnlineFilingAttachmentsAllowed 91 TaxReturnManuallyAllocateAllowancesAndDeductionsAllowed "
        "92 UploadOTQToClientCentreAllowed 93 ImportDataFromOTQAllowed 95 PasswordProtectedClientsAllowed "
        "96 ClientUsageReportAllowed 97 CreateMTDTaxReturnAllowed 98 DeleteMTDTaxReturnAllowed "
        "99 ViewMTDTaxReturnAllowed ";
    std::string queries;
    for (const auto& [number, name, query] : CUserData::GetPermissionQueries())
        queries += std::to_string(number) + ' ' + name + ' ';
    EXPECT_EQ(queries, kPublished);
}

TEST_P(Permissions, AreReadByTheirNumbers)
{
    EXPECT_EQ(Allowed(), Numbers{}) << "before the login";
    const std::pair<int, bool (CUserData::*)(bool) const> rows[] = {
        {1, &CUserData::AssetRegisterSaveAllowed}, {24, &CUserData::GlobalClientOperationsAllowed},
        {26, &CUserData::QueryManagerAllowed},     {87, &CUserData::HMRCDataGetAllowed},
        {99, &CUserData::ViewMTDTaxReturnAllowed},
    };
    AddUser("Bob");
    for (const int nobodyAsksFor : {-1, 0, 25, 94, 100, 1'000'000})
        LetUser("Bob", nobodyAsksFor);
    Numbers expected;
    for (const auto& [number, query] : rows) {
        LetUser("Bob", number);
        expected.push_back(number);
    }
    CUserData::SetUser("Bob");
    for (const auto& [number, query] : rows)
        EXPECT_TRUE((TheUser().*query)(true)) << number;
    EXPECT_EQ(Allowed(), expected);
}

TEST_P(Permissions, ComeFromTheRoleOrTheUserAndStayUntilTheyAreCleared)
{
    AddUser("Bob", "", true, "Manager");
    AddUser("Eve");
    AddUser("Ian", "", true, "Nobody");
    LetRole("Manager", 3, false);
    LetRole("Manager", 3);
    LetRole("Manager", 4);
    LetRole("Manager", 5, false);
    LetUser("Eve", 4, false);
    for (const char* user : {"Bob", "Ian"})
        LetUser(user, 74);
    CUserData::SetUser("Bob");
    EXPECT_EQ(Allowed(), (Numbers{3, 4})) << "a role's user has nothing of his own";
    EXPECT_FALSE(FindStaff("Bob")->rights.at(4).isAllowed) << "a row that takes a right away";
    EXPECT_TRUE(FindStaff("Bob")->rights.at(2).isAllowed) << "of two rows the last counts";
    CUserData::SetUser("Eve");
    EXPECT_EQ(Allowed(), Numbers{3}) << "her rows do not mention 3";
    for (const char* user : {"Eve", "Ian"}) {
        CUserData::ClearPermissions();
        CUserData::SetUser(user);
        EXPECT_EQ(Allowed(), Numbers{}) << user;
    }
    AddUser("Élan", "", false);
    LetUser("Élan", 7);
    CUserData::SetUser("élan");
    EXPECT_EQ(Allowed(), Numbers{7}) << "by the id as stored, though not listed";
    LetUser("Élan", 27);
    EXPECT_EQ(CUserData::UserHasReviewToolUse("ÉLAN"), 1) << "of another user, too";
    EXPECT_FALSE(WhyNotNewStaff("ÉLAN", "Another", "").IsEmpty());
}

TEST_P(Permissions, AreRefusedWithAMessageWhenAsked)
{
    EXPECT_FALSE(TheUser().TaxReturnSaveAllowed(false));
    ::Test::Windows().Answer(1);
    EXPECT_FALSE(TheUser().TaxReturnSaveAllowed(true));
    ASSERT_EQ(::Test::Windows().Messages().size(), 1u);
    EXPECT_EQ(::Test::Windows().Messages()[0].text,
              "You do not have permission to do this.\n\nPlease contact your administrator for more details.");
    EXPECT_EQ(Afx::ResourceContext::Current(), nullptr) << "the caller's resources are back";
}

TEST_P(Permissions, OfOtherUsersAreReadFromTheDatabase)
{
    AddUser("Bob");
    AddUser("Eve", "", true, "Manager");
    const std::pair<int, int (*)(CString)> rows[] = {
        {74, CUserData::IsTaxExchangeAllowedForUser},
        {27, CUserData::UserHasReviewToolUse},
        {28, CUserData::UserHasReviewToolViewEventsLog},
        {29, CUserData::UserHasReviewToolStartOrCompleteReviewsAssignedToAnotherUser},
        {30, CUserData::UserHasReviewToolFinaliseReviews},
        {31, CUserData::UserHasReviewToolEditTolerances},
    };
    for (const auto& [number, query] : rows) {
        SCOPED_TRACE(number);
        LetUser("Eve", number); // counts for nothing: Eve has a role
        EXPECT_EQ(query("Bob"), 0) << "no row";
        LetUser("Bob", number);
        EXPECT_TRUE(query("Bob") == 1 && query("Eve") == 0 && query("Mallory") == 0);
        LetRole("Manager", number);
        EXPECT_EQ(query("Eve"), 1);
    }
    EXPECT_EQ(Allowed(), Numbers{}) << "nobody has logged in";
}

// Signing in, the list of clients, the roll-forward, what is remembered.

#include "apps/desk/DeskTest.h"
#include "ClientFinder.h"
#include "Password.h"

namespace
{

class Screens : public DeskTest
{};

} // namespace

TEST_F(Screens, FirstSignInSetsThePasswordAndLaterOnesAreCheckedAgainstIt)
{
    InNext([](Hands& hands) {
        hands.Choose(IDC_SIGN_IN_USER, 1);
        hands.Type(IDC_SIGN_IN_PASSWORD, "short");
        hands.Click(IDOK);
        hands.ExpectMessage("Please choose a password of at least 8 characters.");
        hands.ExpectFocus(IDC_SIGN_IN_PASSWORD);
        hands.Type(IDC_SIGN_IN_PASSWORD, kPassword);
        hands.Type(IDC_SIGN_IN_AGAIN, "correct house");
        hands.Click(IDOK);
        hands.ExpectMessage("The two passwords are not the same.");
        hands.Type(IDC_SIGN_IN_AGAIN, kPassword);
        hands.Click(IDOK);
    });
    InNext([](Hands& hands) { hands.Click(IDCANCEL); });
    Desk::Run({m_practice, {}, {}});
    EXPECT_EQ(CUserData::m_strUser, "ben");
    const std::string hash = Query("SELECT strPasswordHash FROM BRIXUser WHERE strUserID = 'ben'");
    EXPECT_TRUE(hash.starts_with("pbkdf2-sha256$600000$")) << hash;
    EXPECT_FALSE(Desk::IsPassword(kPassword, CString("pbkdf2-sha256$600000$00")) || Desk::IsPassword("", CString()));

    InNext([](Hands& hands) {
        hands.Choose(IDC_SIGN_IN_USER, 1);
        hands.Type(IDC_SIGN_IN_PASSWORD, "correct house");
        hands.Click(IDOK);
        hands.ExpectMessage("The password is not right.");
        hands.ExpectAllSelected();
        hands.Press('A', Afx::kControl);
        hands.Press('C', Afx::kControl);
        EXPECT_EQ(::Test::Windows().GetClipboard(), "") << "a password is not copied";
        hands.Click(IDCANCEL);
    });
    Desk::Run({m_practice, {}, {}});
}

TEST_F(Screens, PracticeThatCannotBeOpenedIsToldAndAskedForAgain)
{
    InNext([this](Hands& hands) {
        hands.ExpectText(IDC_OPEN_PRACTICE, m_practice + ".not");
        hands.Type(IDC_OPEN_PRACTICE, m_practice);
        hands.Click(IDOK);
    });
    InNext([](Hands& hands) { hands.Click(IDCANCEL); });
    ::Test::Windows().Answer(IDOK);
    Desk::Run({m_practice + ".not", {}, {}});
    ASSERT_EQ(::Test::Windows().Messages().size(), 1u);
    EXPECT_NE(::Test::Windows().Messages()[0].text.find(".not"), std::string::npos);
    EXPECT_TRUE(Quarry::HasConnection());
}

TEST_F(Screens, SearchFindsWordsOfNamesCodesAndReferencesAsTheyAreTyped)
{
    Run([](Hands& hands) {
        EXPECT_EQ(Rows(hands, IDC_CLIENTS_LIST).size(), 14u);
        const std::pair<const char*, const char*> rows[] = {{"ashw harr", "C0001 | Harriet Ashworth"},
                                                            {"c0002", "C0002"},
                                                            {"CEDAR", "P0002 | Cedar Advisory LLP | llp"}};
        for (const auto& [text, found] : rows) {
            hands.Type(IDC_CLIENTS_SEARCH, text);
            const auto list = Rows(hands, IDC_CLIENTS_LIST);
            ASSERT_EQ(list.size(), 1u) << text;
            EXPECT_TRUE(list[0].starts_with(found)) << list[0];
        }
        hands.Type(IDC_CLIENTS_SEARCH, "nobody at all");
        hands.ExpectText(IDC_CLIENTS_COUNT, "0 found.");
        hands.Press(VK_RETURN); // opens nothing
        hands.Click(IDC_CLIENTS_HELP);
        EXPECT_EQ(::Test::Windows().Helped(), std::vector<std::string>{"/help/desk.md#20104"});
    });
}

TEST_F(Screens, LongListOpensWithTheFirstOnesAndShowsMoreWhenAsked)
{
    Run([](Hands& hands) {
        ::Test::AddClients(450);
        hands.Click(IDC_CLIENTS_REFRESH);
        EXPECT_EQ(Rows(hands, IDC_CLIENTS_LIST).size(), 200u);
        hands.ExpectText(IDC_CLIENTS_COUNT, "The first 200 by name. Type more letters, or show more.");
        int whole = 0;
        Quarry::GetConnection().OnSent([&](std::string_view sent) {
            whole += sent.find("BRIXClient") != sent.npos && sent.find("WHERE") == sent.npos;
        });
        hands.Type(IDC_CLIENTS_SEARCH, "aa10044");
        Quarry::GetConnection().OnSent(nullptr);
        EXPECT_EQ(whole, 1) << "names are read once, not at each letter";
        EXPECT_EQ(Rows(hands, IDC_CLIENTS_LIST).size(), 10u);
        hands.Type(IDC_CLIENTS_SEARCH, "");
        hands.Type(IDC_CLIENTS_SEARCH, "aa");
        hands.Click(IDC_CLIENTS_MORE);
        EXPECT_EQ(Rows(hands, IDC_CLIENTS_LIST).size(), 400u);
        hands.ExpectFocus(IDC_CLIENTS_LIST);
    });
}

TEST_F(Screens, RollForwardIsPreviewedAndThenRun)
{
    Run([](Hands& hands) {
        hands.Pick(IDC_CLIENTS_YEAR, kYear);
        InNext([](Hands& roll) {
            roll.ExpectText(IDC_ROLL_YEAR, "2018/19");
            roll.Click(IDC_ROLL_PREVIEW);
            roll.ExpectText(IDC_ROLL_DONE,
                            "Preview into 2018/19, 14 clients: 14 sources, 140 tasks, 1 enquiry. Nothing was written.");
            EXPECT_TRUE(Text(roll, IDC_ROLL_REMAINING).starts_with("Estimated Time Remaining:"));
            EXPECT_EQ(Query("SELECT COUNT(*) FROM Source WHERE Year = 2019"), "0");
            roll.Answer(IDYES);
            roll.Click(IDC_ROLL_RUN);
            roll.ExpectMessage(
                "Sources, tasks and enquiries of all clients are carried into the new tax year.\n\nDo you "
                "want to continue?");
            EXPECT_EQ(Query("SELECT COUNT(*) FROM Source WHERE Year = 2019"), "14");
            roll.Click(IDCANCEL);
        });
        hands.Click(IDC_CLIENTS_ROLL);
    });
}

TEST_F(Screens, WidthsAndTheLastPageAreEachUsersOwn)
{
    const auto width = [](const Hands& hands, unsigned id) {
        return dynamic_cast<CListCtrl&>(hands.Control(id)).GetColumns()[0].width;
    };
    RunIn("C0001", [](Hands& hands) {
        dynamic_cast<CListCtrl&>(hands.Control(IDC_RETURN_SCHEDULES)).SetColumnWidth(0, 123);
        NextPage(hands);
        NextPage(hands);
    });
    RunIn("C0001", [&](Hands& hands) {
        EXPECT_EQ(dynamic_cast<CPropertySheet&>(hands.Window()).GetActiveIndex(), 2);
        NextPage(hands);
        NextPage(hands);
        EXPECT_EQ(width(hands, IDC_RETURN_SCHEDULES), 123);
    });
    m_hasPassword = false; // ben has none yet
    RunIn(
        "C0001",
        [&](Hands& hands) {
            EXPECT_EQ(dynamic_cast<CPropertySheet&>(hands.Window()).GetActiveIndex(), 0);
            EXPECT_NE(width(hands, IDC_RETURN_SCHEDULES), 123);
        },
        "ben");
}

TEST_F(Screens, YearOfAClientShowsItsStatusEnquiriesAndTasks)
{
    RunIn("C0008", [](Hands& hands) {
        EXPECT_NE(Text(hands, IDC_RETURN_STATUS).find("03/11/2017"), std::string::npos);
        NextPage(hands);
        NextPage(hands);
        NextPage(hands);
        const auto tasks = Rows(hands, IDC_YEAR_TRACKER);
        ASSERT_EQ(tasks.size(), 10u);
        EXPECT_TRUE(tasks[0].starts_with("Tax Return | ")) << tasks[0];
    });
}

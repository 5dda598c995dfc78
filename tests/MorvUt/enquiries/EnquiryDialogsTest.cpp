// The list of enquiries and the dialog for one, worked by scripts.

#include "MorvUt/enquiries/dialogs/ClientEnquiriesListDlg.h"
#include "MorvUt/enquiries/dialogs/ClientEnquiryDlg.h"
#include "MorvUt/res/layouts/Enquiries.h"
#include "MorvUt/users/UserData.h"
#include "support/Hands.h"
#include "support/Practice.h"

namespace
{

using ::Test::Hands;
using ::Test::InNext;
using ::Test::Work;

class EnquiryDialogs : public ::testing::Test, protected ::Test::Practice
{
protected:
    EnquiryDialogs()
    {
        ::Test::SetNow(2024, 3, 1);
        Script("INSERT INTO BRIXUser (lID, strUserID) VALUES (1, 'ANNA');"
               "INSERT INTO BRIXUserPermissions (lID, strUserID, nPermission, bAllowed) VALUES (1, 'ANNA', 34, 1);"
               "INSERT INTO BRIXClient (lID, strCode) VALUES (1, 'A');"
               "INSERT INTO Source (SourceID, ClientID, Year, SourceTypeID, Description) VALUES (10, 1, 2024, 1, "
               "'Return');"
               "INSERT INTO SourceTask (SourceID, TypeID, Description) VALUES (10, 6, 'Sign'), (10, 7, 'Send')");
        Script("INSERT INTO ClientEnquiry (lID, lClientID, nYear, strDescription, dtStart, dtDue, dtReceived) VALUES "
               "(1, 1, 2024, 'P60', '2024-02-01', '2024-02-29', NULL), (2, 1, 2024, 'Books', '2024-01-01', NULL, NULL),"
               "(3, 1, 2024, 'Answered', '2024-01-01', NULL, '2024-02-01'), (4, 1, 2023, 'Old', '2023-01-01', NULL, "
               "NULL)");
        CUserData::SetUser("ANNA");
    }
    ~EnquiryDialogs() override
    {
        CUserData::SetReadOnly(0);
        CUserData::ClearPermissions();
    }
    static std::string Listed(const Hands& hands)
    {
        const auto& list = dynamic_cast<const CListCtrl&>(hands.Control(IDC_ENQUIRIES_LIST));
        std::string text;
        for (int row = 0; row < list.GetItemCount(); ++row)
            text += std::to_string(list.GetItemImage(row)) + list.GetItemText(row, 2).Str() + " ";
        return text;
    }
    CClientEnquiriesListDlg list{Quarry::GetConnection(), 1, 0, 2024, false, 0, 0};
};

} // namespace

TEST_F(EnquiryDialogs, CheckANewEnquiryInOrderAndSaveIt)
{
    Work(list, [&](Hands& hands) {
        InNext([&](Hands& edit) {
            edit.ExpectText(IDC_ENQUIRY_START, "01/03/2024");
            edit.Type(IDC_ENQUIRY_DUE, "1/3/2024");
            edit.Click(IDOK);
            edit.ExpectMessage("Please enter a description");
            edit.ExpectFocus(IDC_ENQUIRY_DESCRIPTION);
            edit.Write("O'Brien's P11D");
            edit.Click(IDOK);
            edit.ExpectMessage("The due date should be after the start date");
            edit.ExpectFocus(IDC_ENQUIRY_DUE);
            edit.ExpectAllSelected();
            edit.Write("2/3/2024");
            edit.Click(IDC_ENQUIRY_HAS_REMINDER);
            edit.Click(IDOK);
            edit.ExpectMessage("Please specify a reminder date");
            edit.Write("1/3/2024");
            edit.Click(IDOK);
            edit.ExpectMessage("The reminder date should be after the start date");
            edit.Type(IDC_ENQUIRY_START, "1/1/2024");
            edit.Type(IDC_ENQUIRY_REMINDER, "2/1/2024");
            edit.Answer(IDYES);
            edit.Click(IDOK);
            edit.ExpectMessage("The reminder date has already passed and so no reminder will be set. Do you want to "
                               "change the reminder date?");
            edit.ExpectFocus(IDC_ENQUIRY_REMINDER);
            EXPECT_FALSE(edit.Control(IDC_ENQUIRY_SOURCE).IsWindowEnabled());
            edit.Click(IDC_ENQUIRY_LINKED);
            edit.Click(IDOK);
            edit.ExpectMessage("Please select the tracker source this enquiry should be linked to");
            EXPECT_EQ(::Test::Windows().Messages().back().style & MB_ICONWARNING, MB_ICONWARNING);
            edit.Pick(IDC_ENQUIRY_SOURCE, "Return (2024)");
            edit.Click(IDOK);
            edit.ExpectMessage("Please select the tracker task this enquiry should be linked to");
            edit.Pick(IDC_ENQUIRY_TASK, "Send");
            edit.Answer(IDNO);
            edit.Click(IDOK);
            edit.ExpectMessage("The reminder date has already passed and so no reminder will be set. Do you want to "
                               "change the reminder date?");
        });
        hands.Click(IDC_ENQUIRIES_NEW);
        EXPECT_EQ(Listed(hands), "0P60 1Answered 2Books 2O'Brien's P11D ") << "by status, then as they were made";
        const auto& shown = dynamic_cast<const CListCtrl&>(hands.Control(IDC_ENQUIRIES_LIST));
        EXPECT_EQ(shown.GetTip(3), "Linked to Return, Send which is outstanding");
        EXPECT_EQ(shown.GetItemText(3, 5) + " " + shown.GetItemText(3, 6), "Task incomplete 2023/24");
        hands.Click(IDCANCEL);
    });
    EXPECT_EQ(Query("SELECT lClientID, nYear, SourceID, TypeID, dtReminder FROM ClientEnquiry WHERE lID > 4"),
              "1|2024|10|7|2024-01-02");
}

TEST_F(EnquiryDialogs, LinkANewEnquiryToTheTaskThatTheListIsOf)
{
    CClientEnquiriesListDlg ofTask(Quarry::GetConnection(), 1, 0, 2024, false, 10, 7);
    Work(ofTask, [&](Hands& hands) {
        for (const int button : {IDCANCEL, IDOK}) {
            InNext([button](Hands& edit) {
                edit.Type(IDC_ENQUIRY_DESCRIPTION, "Signature");
                edit.Click(static_cast<unsigned>(button));
            });
            hands.Click(IDC_ENQUIRIES_NEW);
        }
        hands.Click(IDCANCEL);
    });
    EXPECT_EQ(Query("SELECT lID, SourceID, TypeID, strDescription FROM ClientEnquiry WHERE lID > 4"),
              "5|10|7|Signature");
}

TEST_F(EnquiryDialogs, EditByDoubleClickAndEmptyWhatNoBoxAsksFor)
{
    Work(list, [&](Hands& hands) {
        InNext([](Hands& edit) {
            edit.ExpectText(IDC_ENQUIRY_RECEIVED_DATE, "01/02/2024");
            edit.Click(IDC_ENQUIRY_RECEIVED);
            edit.ExpectText(IDC_ENQUIRY_RECEIVED_DATE, "");
            EXPECT_FALSE(edit.Control(IDC_ENQUIRY_RECEIVED_DATE).IsWindowEnabled());
            edit.Type(IDC_ENQUIRY_START, "31/4/2024");
            edit.Click(IDOK);
            edit.ExpectMessage("Please enter a valid date");
            edit.ExpectFocus(IDC_ENQUIRY_START);
            edit.Write("1/1/2024");
            edit.Click(IDOK);
        });
        Afx::UserActs::DoubleClick(hands.Control(IDC_ENQUIRIES_LIST), 1);
        EXPECT_EQ(Listed(hands), "0P60 2Books 2Answered ");
        hands.Click(IDC_ENQUIRIES_ALL_YEARS);
        EXPECT_EQ(Listed(hands), "0P60 2Books 2Answered 2Old ");
        {
            const ::Test::Trigger full(Quarry::GetConnection(), "BEFORE UPDATE", "BRIXClientEnquirySettings");
            hands.Click(IDC_ENQUIRIES_ALL_YEARS);
            EXPECT_EQ(Listed(hands), "0P60 2Books 2Answered ") << "although it cannot be kept";
        }
        hands.Click(IDC_ENQUIRIES_ALL_YEARS);
        hands.Click(IDCANCEL);
    });
    Work(list, [&](Hands& hands) {
        EXPECT_EQ(Listed(hands), "0P60 2Books 2Answered 2Old ") << "as it was left";
        hands.Click(IDCANCEL);
    });
}

TEST_F(EnquiryDialogs, DeleteManyAfterAskingAndRefuseWithoutTheRight)
{
    Work(list, [&](Hands& hands) {
        EXPECT_FALSE(hands.Control(IDC_ENQUIRIES_DELETE).IsWindowEnabled());
        CWnd& shown = hands.Control(IDC_ENQUIRIES_LIST);
        Afx::UserActs::Choose(shown, 0);
        hands.Press(VK_DOWN, Afx::kShift);
        EXPECT_FALSE(hands.Control(IDC_ENQUIRIES_EDIT).IsWindowEnabled());
        CUserData::SetReadOnly(1);
        hands.Press(VK_DELETE);
        hands.ExpectMessage("Operation cannot be performed. Client is read only.");
        CUserData::SetReadOnly(0);
        hands.Answer(IDNO);
        hands.Press(VK_DELETE);
        hands.ExpectMessage("Are you sure you want to delete the selected item(s)?");
        hands.Answer(IDYES);
        hands.Click(IDC_ENQUIRIES_DELETE);
        hands.ExpectMessage("Are you sure you want to delete the selected item(s)?");
        EXPECT_EQ(Listed(hands), "2Books ");
        hands.Click(IDCANCEL);
    });
    CClientEnquiriesListDlg readOnly(Quarry::GetConnection(), 1, 0, 2024, true, 0, 0);
    Work(readOnly, [&](Hands& hands) {
        Afx::UserActs::DoubleClick(hands.Control(IDC_ENQUIRIES_LIST), 0);
        EXPECT_FALSE(hands.Control(IDC_ENQUIRIES_NEW).IsWindowEnabled());
        hands.Click(IDCANCEL);
    });
}

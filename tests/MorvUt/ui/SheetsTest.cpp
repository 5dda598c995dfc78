// Sheets worked by scripts: their transaction, their furniture, their notes.

#include "Afx/windows/DataExchange.h"
#include "MorvUt/res/layouts/JointSpouse.h"
#include "MorvUt/res/layouts/Notes.h"
#include "MorvUt/taxyear/CurrentTaxYear.h"
#include "MorvUt/ui/sheets/JointSpouseIncomeDlg.h"
#include "MorvUt/ui/sheets/NotesSheet.h"
#include "MorvUt/ui/sheets/NotesStatusDlg.h"
#include "MorvUt/ui/sheets/TXDialog.h"
#include "support/Hands.h"
#include "support/Practice.h"
#include "support/Slots.h"

namespace
{

using ::Test::Hands;
using ::Test::Practice;
using ::Test::Work;
using Interest = Brix::CNewInterest;

constexpr unsigned kNameId = 501;
constexpr Afx::LayoutRow kNameRows[] = {{Afx::ControlKind::Label, 0, "&Name:", 0, 0},
                                        {Afx::ControlKind::Field, kNameId, "", 0, 1}};
constexpr Afx::DialogLayout kNamePage = Afx::LayoutOf("Name", kNameRows);

/// The name of an interest schedule; "bad" is refused.
class CNamePage : public TXPropertyPage
{
public:
    explicit CNamePage(Interest& list) : TXPropertyPage(kNamePage), m_list(list) {}
    bool OnKillActive() override { return GetDlgItem(kNameId)->Text() != "bad" && TXPropertyPage::OnKillActive(); }
    void OnOK() override
    {
        m_list.SetName(m_name);
        m_list.Update();
    }

protected:
    bool OnInitDialog() override
    {
        m_name = m_list.GetName();
        return TXPropertyPage::OnInitDialog();
    }
    void DoDataExchange(CDataExchange* exchange) override { DDX_Text(exchange, kNameId, m_name); }

private:
    Interest& m_list;
    CString m_name;
};

/// A sheet with all furniture, or with none.
class CInterestSheet : public TXPropertySheet
{
public:
    CInterestSheet(Interest& list, bool hasFurniture) : page(list), m_list(list), m_hasFurniture(hasFurniture)
    {
        AddPage(&page);
        if (hasFurniture)
            SetNotesRowHandling(&list, Interest::kNotesAudit, Interest::kNotesReturn, Interest::kNotesEstimate,
                                Interest::kNotesAvoidance, 0, 0);
    }
    CNamePage page;
    bool refusesStart = false;
    CString tooEarly;
    std::string told;

    void OnJointSpouseIncome() override { told += "joint "; }
    void OnJointSpouseShareKillFocus() override { told += "share "; }
    void OnJointSpouseView() override { told += "view "; }
    int EnableJointSpouseIncome(CString& reason) override
    {
        reason = told == "locked" ? "The spouse's return is finalised." : "";
        return told != "locked";
    }
    CString GetInfoLine(unsigned id) override { return m_hasFurniture && id == kInfoLine1Id ? "Line" : ""; }
    int ShowInfoLine(int page, unsigned id) override { return page == 0 && id == kInfoLine1Id; }
    int ShowCompletedCheckBox() override { return m_hasFurniture; }
    int ShowPartnershipNameBox() override { return m_hasFurniture; }
    int ShowJointSpouseIncome() override { return m_hasFurniture; }
    CString GetPartnershipName() override { return "Ann & Bob"; }
    CString GetSpecialNotesPanelText() override { return m_hasFurniture ? "Special" : ""; }
    bool UpdateMTDScheduleData() override { return !refusesStart; }
    void GetAvoidanceNotes(CString& reference, CString& notes, short& year) override
    {
        reference = m_list.GetSchemeReference();
        year = m_list.GetSchemeYear();
        GetNotes(NotesAvoidance, notes);
    }
    void SetAvoidanceNotes(const CString& reference, const CString& notes, const short& year) override
    {
        m_list.SetSchemeReference(reference);
        m_list.SetSchemeYear(year);
        SetNotes(NotesAvoidance, notes);
    }
    void GetAlternateValidationYearErrorMessage(CString& message) override { message = tooEarly; }
    CString HelpFilePath() const override { return "interest.html"; }

private:
    Interest& m_list;
    bool m_hasFurniture;
};

class Sheets : public ::testing::Test, protected Practice
{
protected:
    Sheets()
    {
        SetCurrentTaxYear(2018 - 1991);
        Sql("INSERT INTO BRIXNewInterest (lID, lTaxFormID, strName) VALUES (1, 1, 'Old')");
        list.Open();
    }
    ~Sheets() override { CCurrentTaxYearSingleton::Destroy(); }
    /// What another program sees.
    static std::string Stored()
    {
        return std::string(Open()->Queryf("SELECT strName FROM BRIXNewInterest").rows.at(0).at(0).View());
    }
    Interest list;
};

} // namespace

TEST(TXPropertySheetSlots, StandInTheOrderThatModulesAreBuiltFor)
{
    using S = TXPropertySheet;
    EXPECT_TRUE(::Test::AreConsecutive(
        &S::OnNotesClicked, &S::OnCompletedClicked, &S::EnableJointSpouseIncome, &S::OnJointSpouseIncome,
        &S::OnJointSpouseShareKillFocus, &S::OnJointSpouseView, &S::GetInfoLine, &S::ShowInfoLine,
        &S::ShowCompletedCheckBox, &S::ShowPartnershipNameBox, &S::ShowJointSpouseIncome, &S::GetJointSpouseIncome,
        &S::GetNotesTypes, &S::GetPartnershipName, &S::GetNotes, &S::SetNotes, &S::GetAvoidanceNotes,
        &S::SetAvoidanceNotes, &S::GetNotesDescription, &S::GetAvoidanceValidationYear,
        &S::GetAlternateValidationYearErrorMessage, &S::IsClientAPartnership, &S::GetSpecialNotesPanelText,
        &S::UpdateMTDScheduleData, &S::OnWindowPosChanging));
}

TEST_F(Sheets, CommitWhatAllPagesAcceptedAndNothingElse)
{
    struct Story
    {
        const char* why;
        std::function<void(Hands&)> acts;
        int result;
        const char* stored;
    };
    const auto type = [](const char* name) { return [name](Hands& hands) { hands.Type(kNameId, name); }; };
    for (const Story& story : {
             Story{"OK", [&](Hands& h) { type("New")(h), h.Click(IDOK); }, IDOK, "New"},
             {"Cancel", [&](Hands& h) { type("Other")(h), h.Click(IDCANCEL); }, IDCANCEL, "New"},
             {"a page that refuses", [&](Hands& h) { type("bad")(h), h.Click(IDOK), h.Click(IDCANCEL); }, IDCANCEL,
              "New"},
             {"Apply, then Cancel",
              [&](Hands& h) {
                  type("Applied")(h);
                  static_cast<TXPropertySheet&>(h.Window()).GetActivePage()->SetModified();
                  h.Click(ID_APPLY_NOW);
                  EXPECT_EQ(Stored(), "Applied") << "for others, too, while the sheet is open";
                  Sql("UPDATE BRIXNewInterest SET strName = 'Later'");
                  h.Click(IDCANCEL);
              },
              IDCANCEL, "Applied"},
         }) {
        SCOPED_TRACE(story.why);
        list.Open();
        CInterestSheet sheet(list, false);
        EXPECT_EQ(Work(sheet, story.acts), story.result);
        EXPECT_EQ(Stored(), story.stored);
        EXPECT_EQ(Quarry::GetConnection().GetLevel(), 0);
    }
    CInterestSheet refusing(list, false);
    refusing.refusesStart = true;
    EXPECT_EQ(refusing.DoModal(), IDCANCEL);
    EXPECT_EQ(Quarry::GetConnection().GetLevel(), 0);
}

TEST_F(Sheets, StayOpenWhileAnotherProgramWrites)
{
    Script("PRAGMA busy_timeout = 1");
    CInterestSheet sheet(list, true);
    sheet.SetNotesRowHandling(&list, Interest::kNotesAudit, -1, -1, -1, 0, 0);
    EXPECT_EQ(Work(sheet,
                   [&](Hands& hands) {
                       hands.Type(kNameId, "Typed");
                       const auto other = Open();
                       other->Begin(Cellar::Intent::Write);
                       hands.Click(IDOK);
                       hands.ExpectMessage("Another program is writing to the practice. Please try again in a moment.");
                       other->Rollback();
                       hands.ExpectText(kNameId, "Typed");
                       EXPECT_TRUE(hands.Control(ID_APPLY_NOW).IsWindowEnabled()) << "nothing was applied";
                       ::Test::Windows().Script([&](CDialog& open) {
                           Hands notes(open);
                           notes.Type(IDC_NOTES_TEXT, "Noted");
                           other->Begin(Cellar::Intent::Write);
                           notes.Click(IDOK);
                           notes.ExpectMessage(
                               "Another program is writing to the practice. Please try again in a moment.");
                           other->Rollback();
                           notes.Click(IDOK);
                       });
                       hands.Click(IDC_STATUS_NOTES);
                       hands.Click(IDOK);
                   }),
              IDOK);
    EXPECT_EQ(Query("SELECT strName, strNotesAudit FROM BRIXNewInterest"), "Typed|Noted");
}

TEST_F(Sheets, HaveNoFurnitureUnlessAsked)
{
    CInterestSheet plain(list, false);
    Work(plain, [&](Hands& hands) {
        for (const unsigned id : {kInfoLine1Id, kInfoLine2Id, kNotesStatusId, kJointSpouseId})
            EXPECT_EQ(plain.GetDlgItem(static_cast<int>(id)), nullptr);
        EXPECT_EQ(plain.GetNotesTypes(), 0u);
        EXPECT_TRUE(plain.ValidateJointSpouseIncome());
        EXPECT_EQ(plain.GetJointSpouseShare(), 0.0);
        hands.Press(VK_F1);
        EXPECT_EQ(::Test::Windows().Helped(), (std::vector<std::string>{"interest.html#501"}));
        hands.Click(IDCANCEL);
    });
    plain.SetNotesRowHandling(&list, -1, -1, -1, -1, 0, 0);
    EXPECT_EQ(plain.GetNotesTypes(), 0u);
    plain.SetNotesRowHandling(nullptr, 1, 1, 1, 1, 0, 0);
    EXPECT_EQ(plain.GetNotesTypes(), 0u);
    plain.SetNotesRowHandling(&list, 1, -1, -1, 0, 0, 0);
    EXPECT_EQ(plain.GetNotesTypes(), 9u);
}

TEST_F(Sheets, HaveTheirFurnitureWhereItIsSeen)
{
    CInterestSheet sheet(list, true);
    TXPropertyPage other(kNamePage), special(kNamePage);
    special.SetWindowText("Loans");
    sheet.AddPage(&other);
    Work(sheet, [&](Hands& hands) {
        hands.ExpectText(kInfoLine1Id, "Line");
        for (const int width : {400, 300}) {
            sheet.MoveWindow({0, 0, width, 200});
            EXPECT_EQ(sheet.GetDlgItem(kInfoLine1Id)->GetRect().right, width - kFurnitureGap);
        }
        sheet.page.ShowEdit(kNameId, false);
        EXPECT_FALSE(sheet.page.GetDlgItem(kNameId)->GetLabel()->IsShown());
        sheet.EnableNotes(false);
        EXPECT_FALSE(hands.Control(IDC_STATUS_NOTES).IsWindowEnabled());
        sheet.SetActivePage(1);
        EXPECT_FALSE(sheet.GetDlgItem(kInfoLine1Id)->IsShown());
        EXPECT_EQ(sheet.GetNextDlgTabItem(sheet.GetDlgItem(IDOK))->GetParent(), sheet.GetDlgItem(kNotesStatusId));
        hands.ExpectText(IDC_STATUS_NOTES_LABEL, "");
        sheet.AddSpecialNotesPage(&special);
        ::Test::Windows().Script([&](CDialog& open) {
            auto& notes = dynamic_cast<CPropertySheet&>(open);
            const std::vector<CString> tabs{"Audit", "Tax Return", "Estimates", "Avoidance", "Loans"};
            EXPECT_TRUE(notes.Text() == "Notes" && notes.GetTabControl().GetItems() == tabs);
            EXPECT_EQ(notes.GetActiveIndex(), 1) << "that of the kind which was clicked";
            Hands page(open);
            page.ExpectText(IDC_NOTES_DESCRIPTION, "Any information you type here about the current schedule will be "
                                                   "printed on the relevant tax form.");
            page.Press(VK_TAB, Afx::kControl);
            page.ExpectText(IDC_NOTES_DESCRIPTION, "Any information you type here about the estimated figures will be "
                                                   "printed on the Tax Return form.");
            notes.EndDialog(IDOK);
        });
        sheet.OnNotesClicked(NotesReturn);
        hands.ExpectText(IDC_STATUS_NOTES_LABEL, "Special");
        hands.Click(IDCANCEL);
    });
}

TEST_F(Sheets, AndDialogsCommitByOKAlone)
{
    struct Case
    {
        bool hasLevel;
        int button;
        const char* stored;
    };
    for (const Case& each : {Case{false, IDCANCEL, "1"}, {true, IDCANCEL, "1"}, {true, IDOK, "2"}}) {
        list.Open();
        TXDialog dialog(kNamePage);
        dialog.EnableQuarryTransactions(each.hasLevel);
        EXPECT_EQ(Work(dialog,
                       [&](Hands& hands) {
                           list.SetName(each.hasLevel ? "2" : "1");
                           list.Update();
                           hands.Click(static_cast<unsigned>(each.button));
                       }),
                  each.button);
        EXPECT_EQ(Stored(), each.stored);
    }
}

TEST_F(Sheets, CheckTheShareOfASpouse)
{
    CInterestSheet sheet(list, true);
    Work(sheet, [&](Hands& hands) {
        hands.ExpectText(IDC_STATUS_PARTNERSHIP, "Ann & Bob");
        EXPECT_FALSE(hands.Control(IDC_JOINT_SHARE).IsWindowEnabled());
        hands.Click(IDC_JOINT_BOX);
        for (const char* const refused : {"-0.01", "100.01", "x"}) {
            hands.Type(IDC_JOINT_SHARE, refused);
            hands.Click(IDOK);
            hands.ExpectMessage("Please enter a valid client share percentage.");
            hands.ExpectFocus(IDC_JOINT_SHARE);
            hands.ExpectAllSelected();
        }
        for (const char* const accepted : {"0", "100"}) {
            hands.Type(IDC_JOINT_SHARE, accepted);
            EXPECT_TRUE(sheet.ValidateJointSpouseIncome());
        }
        EXPECT_EQ(sheet.GetJointSpouseShare(), 100.0);
        hands.Pick(IDC_JOINT_VIEW, "Spouse's share");
        EXPECT_EQ(sheet.GetJointSpouseView(), 2);
        EXPECT_TRUE(sheet.told.starts_with("joint share ") && sheet.told.ends_with("view ")) << sheet.told;
        sheet.told = "locked";
        sheet.UpdateJointSpouseIncome();
        EXPECT_FALSE(hands.Control(IDC_JOINT_BOX).IsWindowEnabled());
        hands.ExpectText(IDC_JOINT_REASON, "The spouse's return is finalised.");
        hands.Click(IDCANCEL);
    });
}

TEST_F(Sheets, KeepNotesOfEveryKind)
{
    CInterestSheet sheet(list, true);
    EXPECT_EQ(Work(sheet,
                   [&](Hands& hands) {
                       hands.Click(IDC_STATUS_COMPLETED);
                       EXPECT_EQ(sheet.GetCompletedStatus(), 1);
                       ::Test::Windows().Script([&](CDialog& open) {
                           Hands notes(open);
                           notes.ExpectText(
                               IDC_NOTES_DESCRIPTION,
                               "Any information you type here about the current schedule will be included in "
                               "the Detailed Computation report. ");
                           notes.Type(IDC_NOTES_TEXT, "one");
                           notes.Press(VK_RETURN);
                           notes.Write("two");
                           for (int page = 1; page < 4; ++page)
                               notes.Press(VK_TAB, Afx::kControl);
                           notes.Click(IDOK);
                           notes.ExpectMessage("Please enter a scheme reference number.");
                           notes.ExpectFocus(IDC_AVOIDANCE_REFERENCE);
                           notes.Write("12345678");
                           EXPECT_EQ(notes.Control(IDC_AVOIDANCE_HAS_YEAR).GetAccessibleName(),
                                     "Expected advantage to the partners arises in tax year ended 5 April");
                           notes.Click(IDC_AVOIDANCE_HAS_YEAR);
                           notes.Click(IDC_AVOIDANCE_OTHER_YEAR);
                           notes.Type(IDC_AVOIDANCE_YEAR, "17");
                           notes.Click(IDOK);
                           notes.ExpectMessage("The tax year cannot be earlier than the current tax year.");
                           notes.ExpectFocus(IDC_AVOIDANCE_YEAR);
                           notes.ExpectText(IDC_AVOIDANCE_YEAR, "2017");
                           notes.ExpectAllSelected();
                           notes.Write("19");
                           notes.Click(IDOK);
                       });
                       hands.Click(IDC_STATUS_NOTES);
                       hands.ExpectText(IDC_STATUS_NOTES_LABEL, "Audit, Avoidance");
                       hands.Click(IDOK);
                   }),
              IDOK);
    EXPECT_EQ(Query("SELECT strNotesAudit, strNotesReturn, strSchemeReference, nSchemeYear FROM BRIXNewInterest"),
              "one\ntwo|-|12345678|2019");
    // Notes on estimates that do not apply to the form are shown, and not written back; Cancel writes nothing.
    sheet.SetNotesRowHandling(&list, -1, -1, Interest::kNotesEstimate, -1, 1, 0);
    for (const int button : {IDOK, IDCANCEL}) {
        ::Test::Windows().Script([&](CDialog& open) {
            Hands notes(open);
            notes.ExpectText(IDC_NOTES_DESCRIPTION,
                             "Estimate notes are not appropriate to the current form. Any entries made on this dialog "
                             "will not be written back to the form.");
            notes.Type(IDC_NOTES_TEXT, "lost");
            notes.Click(static_cast<unsigned>(button));
        });
        sheet.OnNotesClicked(NotesEstimate);
    }
    EXPECT_EQ(Query("SELECT strNotesEstimate FROM BRIXNewInterest"), "-");
}

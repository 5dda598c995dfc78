// Sheets: what their stories need, their furniture, and their slots.

#include "Afx/windows/DataExchange.h"
#include "MorvUt/res/layouts/JointSpouse.h"
#include "MorvUt/res/layouts/Notes.h"
#include "MorvUt/taxyear/CurrentTaxYear.h"
#include "MorvUt/ui/sheets/JointSpouseIncomeDlg.h"
#include "MorvUt/ui/sheets/NotesSheet.h"
#include "MorvUt/ui/sheets/NotesStatusDlg.h"
#include "MorvUt/ui/sheets/TXDialog.h"
#include "support/Practice.h"
#include "support/Slots.h"
#include "support/Story.h"

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
    CString HelpFilePath() const override { return "interest.html"; }

private:
    Interest& m_list;
    bool m_hasFurniture;
};

class Sheets : public ::testing::Test, protected Practice, protected ::Test::Stories
{
protected:
    Sheets()
    {
        SetCurrentTaxYear(2018 - 1991);
        Sql("INSERT INTO BRIXNewInterest (lID, lTaxFormID, strName) VALUES (1, 1, 'Old')");
        list.Open();
        Around("Sheet", [this](const ::Test::Acts& inside) { WorkInSheet(false, inside); });
        Around("Sheet with furniture", [this](const ::Test::Acts& inside) { WorkInSheet(true, inside); });
        Around("Dialog", [this](const ::Test::Acts& inside) { WorkInDialog(false, inside); });
        Around("Dialog with a level", [this](const ::Test::Acts& inside) { WorkInDialog(true, inside); });
        On("The program writes", [this](const std::string& name) {
            list.SetName(name);
            list.Update();
        });
        On("The page has changed", [this] { m_sheet->GetActivePage()->SetModified(); });
        On("Others see", [](const std::string& name) { EXPECT_EQ(Name(), name); });
        On("Sql", Script);
        On("Stored", InTable);
        On("Another program begins to write", [this] {
            m_other = Open();
            m_other->Begin(Cellar::Intent::Write);
        });
        On("Another program ends", [this] { m_other.reset(); });
        On("The share is taken", [this](const std::string& share) {
            EXPECT_TRUE(m_sheet->ValidateJointSpouseIncome());
            EXPECT_EQ(m_sheet->GetJointSpouseShare(), std::stod(share));
        });
        On("The sheet was told", [this] { return m_sheet->told; });
        On("The spouse's return is finalised", [this] {
            m_sheet->told = "locked";
            m_sheet->UpdateJointSpouseIncome();
        });
        On("Completed is",
           [this](const std::string& state) { EXPECT_EQ(std::to_string(m_sheet->GetCompletedStatus()), state); });
        On("There are notes on loans, too", [this] {
            m_loans.SetWindowText("Loans");
            m_sheet->AddSpecialNotesPage(&m_loans);
        });
        On("The program opens the notes on the return", [this] { m_sheet->OnNotesClicked(NotesReturn); });
        On("The pages are called", [this](const std::string& names) {
            std::string all = Here().Window().Text().Str() + ":";
            for (const CString& name : dynamic_cast<CPropertySheet&>(Here().Window()).GetTabControl().GetItems())
                all += ' ' + name.Str() + ',';
            EXPECT_EQ(all, names + ',');
        });
        On("Only notes on estimates, which do not apply",
           [this] { m_sheet->SetNotesRowHandling(&list, -1, -1, Interest::kNotesEstimate, -1, 1, 0); });
    }
    ~Sheets() override { CCurrentTaxYearSingleton::Destroy(); }
    /// What another program sees.
    static std::string Name()
    {
        return std::string(Open()->Queryf("SELECT strName FROM BRIXNewInterest").rows.at(0).at(0).View());
    }
    Interest list;

private:
    void WorkInSheet(bool hasFurniture, const ::Test::Acts& inside)
    {
        list.Open();
        m_sheet.emplace(list, hasFurniture);
        Work(*m_sheet, inside);
        EXPECT_EQ(Quarry::GetConnection().GetLevel(), 0);
    }

    void WorkInDialog(bool hasLevel, const ::Test::Acts& inside)
    {
        list.Open();
        TXDialog dialog(kNamePage);
        dialog.EnableQuarryTransactions(hasLevel);
        Work(dialog, inside);
    }

    std::optional<CInterestSheet> m_sheet;
    std::unique_ptr<Cellar::CConnection> m_other;
    TXPropertyPage m_loans{kNamePage};
};

STORIES(Sheets, "MorvUt/ui/Sheets.story");

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

TEST_F(Sheets, DoNotOpenWithoutTheirData)
{
    CInterestSheet refusing(list, false);
    refusing.refusesStart = true;
    EXPECT_EQ(refusing.DoModal(), IDCANCEL);
    EXPECT_EQ(Quarry::GetConnection().GetLevel(), 0);
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
    plain.SetNotesRowHandling(&list, 1, -1, -1, 0, 0, 0);
    EXPECT_EQ(plain.GetNotesTypes(), 9u);
}

TEST_F(Sheets, HaveTheirFurnitureWhereItIsSeen)
{
    CInterestSheet sheet(list, true);
    TXPropertyPage other(kNamePage);
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
        hands.Click(IDCANCEL);
    });
}

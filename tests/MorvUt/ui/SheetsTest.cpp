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

/// A sheet with all furniture.
class CInterestSheet : public TXPropertySheet
{
public:
    explicit CInterestSheet(Interest& list) : page(list), m_list(list)
    {
        AddPage(&page);
        AddPage(&other);
        SetNotesRowHandling(&list, Interest::kNotesAudit, Interest::kNotesReturn, Interest::kNotesEstimate,
                            Interest::kNotesAvoidance, 0, 0);
    }
    CNamePage page;
    TXPropertyPage other{kNamePage};
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
    CString GetInfoLine(unsigned id) override { return id == kInfoLine1Id ? "Line" : ""; }
    int ShowInfoLine(int page, unsigned id) override { return page == 0 && id == kInfoLine1Id; }
    int ShowCompletedCheckBox() override { return 1; }
    int ShowPartnershipNameBox() override { return 1; }
    int ShowJointSpouseIncome() override { return 1; }
    CString GetPartnershipName() override { return "Ann & Bob"; }
    CString GetSpecialNotesPanelText() override { return "Special"; }
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
};

class Sheets : public ::testing::Test, protected Practice, protected ::Test::Stories
{
protected:
    Sheets()
    {
        SetCurrentTaxYear(2018 - 1991);
        Sql("INSERT INTO BRIXNewInterest (lID, lTaxFormID, strName) VALUES (1, 1, 'Old')");
        list.Open();
        Around("Sheet", [this](const ::Test::Acts& inside) {
            list.Open();
            m_sheet.emplace(list);
            Work(*m_sheet, inside);
            EXPECT_EQ(Quarry::GetConnection().GetLevel(), 0);
        });
        Around("Plain sheet", [this](const ::Test::Acts& inside) {
            TXPropertySheet plain;
            CNamePage page(list);
            plain.AddPage(&page);
            Work(plain, inside);
        });
        Around("Dialog", [this](const std::string& level, const ::Test::Acts& inside) {
            list.Open();
            TXDialog dialog(kNamePage);
            dialog.EnableQuarryTransactions(level == "with a level");
            Work(dialog, inside);
        });
        On("The program writes", [this](const std::string& name) {
            list.SetName(name);
            list.Update();
        });
        Is("Others see",
           [] { return std::string(Open()->Queryf("SELECT strName FROM BRIXNewInterest").rows.at(0).at(0).View()); });
        On("Sql", Script);
        On("Stored", InTable);
        On("Another program begins to write", [this] {
            m_other = Open();
            m_other->Begin(Cellar::Intent::Write);
        });
        On("Another program ends", [this] { m_other.reset(); });
        On("The share is taken", [this](const std::string& share) {
            auto& sheet = dynamic_cast<TXPropertySheet&>(Here().Window());
            EXPECT_TRUE(sheet.ValidateJointSpouseIncome());
            EXPECT_EQ(sheet.GetJointSpouseShare(), std::stod(share));
        });
        On("The sheet was told", [this] { return m_sheet->told; });
        On("The spouse's return is finalised", [this] {
            m_sheet->told = "locked";
            m_sheet->UpdateJointSpouseIncome();
        });
        Is("Completed is", [this] { return m_sheet->GetCompletedStatus(); });
        On("Furniture", [this] {
            std::string shown;
            for (const auto& [id, name] : {std::pair(kInfoLine1Id, "line 1 "),
                                           {kInfoLine2Id, "line 2 "},
                                           {kNotesStatusId, "notes "},
                                           {kJointSpouseId, "spouse "}})
                if (const CWnd* const furniture = Here().Window().GetDlgItem(static_cast<int>(id)))
                    shown += furniture->IsShown() ? name : "";
            return shown + "are shown";
        });
        On("The line ends before the sheet does, whose width is", [this](const std::string& width) {
            m_sheet->MoveWindow({0, 0, std::stoi(width), 200});
            EXPECT_EQ(m_sheet->GetDlgItem(kInfoLine1Id)->GetRect().right, std::stoi(width) - kFurnitureGap);
        });
        On("The page hides its name and the label", [this] {
            m_sheet->page.ShowEdit(kNameId, false);
            EXPECT_FALSE(m_sheet->page.GetDlgItem(kNameId)->GetLabel()->IsShown());
        });
        On("The program disables the notes", [this] { m_sheet->EnableNotes(false); });
        On("There are notes on loans, too", [this] {
            m_loans.SetWindowText("Loans");
            for (TXPropertyPage* const page : {&m_loans, &m_loans, static_cast<TXPropertyPage*>(nullptr)})
                m_sheet->AddSpecialNotesPage(page);
        });
        On("The program opens the notes on the return", [this] { m_sheet->OnNotesClicked(NotesReturn); });
        On("The pages are called", [this] {
            CString all;
            for (const CString& name : dynamic_cast<CPropertySheet&>(Here().Window()).GetTabControl().GetItems())
                all += name + "\n";
            return all;
        });
        On("Only notes on estimates, which do not apply",
           [this] { m_sheet->SetNotesRowHandling(&list, -1, -1, Interest::kNotesEstimate, -1, 1, 0); });
    }
    ~Sheets() override { CCurrentTaxYearSingleton::Destroy(); }
    Interest list;

private:
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

TEST_F(Sheets, LeaveNothingWhenTheyAreRefusedOrFail)
{
    CInterestSheet sheet(list);
    sheet.refusesStart = true;
    EXPECT_EQ(sheet.DoModal(), IDCANCEL);
    EXPECT_EQ(Quarry::GetConnection().GetLevel(), 0);
    sheet.refusesStart = false;
    EXPECT_ANY_THROW(Work(sheet, [](::Test::Hands&) { throw std::runtime_error("lost"); }));
    EXPECT_TRUE(Quarry::GetConnection().GetLevel() == 0 && sheet.Children().empty());
}

#include <gtest/gtest.h>

#include "Afx/windows/DataExchange.h"
#include "Afx/windows/ListCtrl.h"
#include "Afx/windows/PropertySheet.h"
#include "support/Story.h"

namespace
{

using Afx::ControlKind;

constexpr unsigned kName = 101, kAge = 102, kTick = 103, kKind = 104, kNotes = 105, kHidden = 106;

constexpr Afx::LayoutRow kPersonRows[] = {
    {ControlKind::Label, 0, "&Name:", 0, 0},
    {ControlKind::Field, kName, "", 0, 1},
    {ControlKind::Label, 0, "A&ge:", 1, 0},
    {ControlKind::Field, kAge, "", 1, 1},
    {ControlKind::Field, kHidden, "", 1, 2, 1, Afx::kHiddenControl},
    {ControlKind::CheckBox, kTick, "&Tick", 2, 0, 2},
    {ControlKind::Combo, kKind, "", 3, 1},
    {ControlKind::Notes, kNotes, "", 4, 0, 2, 0, 120, 3},
    {ControlKind::Default, IDOK, "OK", 5, 0},
    {ControlKind::Push, IDCANCEL, "Cancel", 5, 1},
};
constexpr Afx::DialogLayout kPerson = Afx::LayoutOf("Person", kPersonRows);

/// A field that takes the Enter key for itself, put in the place of the layout's own.
class CLinesEdit : public CEdit
{
public:
    unsigned OnGetDlgCode() override { return DLGC_WANTALLKEYS; }
};

class CPersonDialog : public CDialog
{
public:
    CPersonDialog() : CDialog(kPerson) {}
    CString name = "Ann";
    int age = 7, tick = 0, kind = 1;
    CLinesEdit notes;

protected:
    bool OnInitDialog() override
    {
        for (const char* const text : {"red", "green", "blue"})
            static_cast<CComboBox*>(GetDlgItem(kKind))->AddString(text);
        return CDialog::OnInitDialog();
    }
    void DoDataExchange(CDataExchange* exchange) override
    {
        DDX_Control(exchange, kNotes, notes);
        DDX_Text(exchange, kName, name);
        DDX_Text(exchange, kAge, age);
        DDX_Check(exchange, kTick, tick);
        DDX_CBIndex(exchange, kKind, kind);
    }
};

/// One field, which must not say "bad" when the page is left, nor "late" when the sheet is applied.
constexpr Afx::LayoutRow kPageRows[] = {{ControlKind::Label, 0, "&Name:", 0, 0}, {ControlKind::Field, kName, "", 0, 1}};
constexpr Afx::DialogLayout kPage = Afx::LayoutOf("Page", kPageRows);

class CRefusingPage : public CPropertyPage
{
public:
    CRefusingPage() : CPropertyPage(kPage) {}
    int applied = 0;
    bool closesSheet = false;
    bool OnKillActive() override { return GetDlgItem(kName)->Text() != "bad" && CPropertyPage::OnKillActive(); }
    bool OnApply() override
    {
        if (closesSheet)
            GetSheet()->EndDialog(IDCANCEL);
        const bool accepts = GetDlgItem(kName)->Text() != "late";
        applied += accepts;
        return accepts && CPropertyPage::OnApply();
    }
};

class WindowsByHand : public ::testing::Test, protected ::Test::Stories
{
protected:
    WindowsByHand()
    {
        Around("Person", [this](::Test::Acts inside) {
            EXPECT_EQ(::Test::Work(m_person, inside), IDOK);
            EXPECT_EQ(CWnd::GetFocus(), nullptr);
        });
        Around("Another person", [](::Test::Acts inside) {
            CPersonDialog another;
            EXPECT_EQ(::Test::Work(another, std::move(inside)), IDCANCEL);
        });
        On("The first person's dialog takes nothing", [this] {
            EXPECT_FALSE(Afx::UserActs::Click(*m_person.GetDlgItem(IDOK)));
            EXPECT_FALSE(m_person.DeliverCommand(IDOK));
        });
        On("The program disables", [this](const std::string& name) { Control(name).EnableWindow(false); });
        On("The program hides", [this](const std::string& name) { Control(name).ShowWindow(false); });
        On("No kind is chosen", [this] { Control<CComboBox>("#104").SetCurSel(CComboBox::kNone); });
        On("The list of kinds grows while it drops", [this] {
            auto& kinds = Control<CComboBox>("#104");
            Afx::UserActs::Drop(kinds, true);
            kinds.InsertString(0, "new");
        });
        On("The person is", [this] {
            return m_person.name.Str() + ", " + std::to_string(m_person.age) + ", tick " +
                   std::to_string(m_person.tick) + ", kind " + std::to_string(m_person.kind);
        });
        m_sheet.AddPage(&m_first);
        m_sheet.AddPage(&m_second);
        Around("Sheet", [this](const std::string& result, ::Test::Acts inside) {
            EXPECT_EQ(std::to_string(::Test::Work(m_sheet, inside)), result);
        });
        On("The program goes to page", [this](const std::string& page) { m_sheet.SetActivePage(std::stoi(page)); });
        Is("On page", [this] { return m_sheet.GetActiveIndex(); });
        On("The page has not changed", [this] { m_sheet.GetActivePage()->SetModified(false); });
        On("The program removes the first page", [this] { m_sheet.RemovePage(&m_first); });
        On("Not accepted", [this] { EXPECT_FALSE(m_sheet.WasAccepted()); });
        On("Accepted", [this] { EXPECT_TRUE(m_sheet.WasAccepted() && m_sheet.IsOpen()); });
        On("Pages applied",
           [this] { return std::to_string(m_first.applied) + " and " + std::to_string(m_second.applied); });
        On("The first page closes its sheet when it is applied", [this] { m_first.closesSheet = true; });
    }

private:
    CPersonDialog m_person;
    CPropertySheet m_sheet{"Sheet"};
    CRefusingPage m_first, m_second;
};

STORIES(WindowsByHand, "Afx/Windows.story");

} // namespace

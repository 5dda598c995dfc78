// What the stories of hard use need beside the window that is used.

#include <gtest/gtest.h>

#include <utility>

#include "Afx/windows/DataExchange.h"
#include "Afx/windows/PropertySheet.h"
#include "Kiln/controls/AmtEdit.h"
#include "Kiln/controls/DateEdit.h"
#include "support/Story.h"

namespace
{

using Afx::ControlKind;
using Shown = Afx::HeadlessWindowSystem::Shown;

constexpr unsigned kAmount = 101, kKind = 102, kText = 103, kAsk = 104, kEnding = 105, kDate = 106;
constexpr Afx::LayoutRow kRoughRows[] = {
    {ControlKind::Label, 0, "&Amount:", 0, 0}, {ControlKind::Custom, kAmount, "", 0, 1},
    {ControlKind::Label, 0, "&Kind:", 1, 0},   {ControlKind::Combo, kKind, "", 1, 1},
    {ControlKind::Label, 0, "&Text:", 2, 0},   {ControlKind::Field, kText, "", 2, 1},
    {ControlKind::Label, 0, "&Date:", 3, 0},   {ControlKind::Custom, kDate, "", 3, 1},
    {ControlKind::Push, kAsk, "As&k", 4, 1},
};
constexpr Afx::DialogLayout kRough = Afx::LayoutOf("Rough", kRoughRows);

/// Ends itself when it is clicked.
class CButtonThatEnds : public CButton
{
public:
    bool OnClicked() override
    {
        DestroyWindow();
        return false;
    }
};

/// Ends itself when something is typed into it.
class CFieldThatEnds : public CEdit
{
public:
    void OnChar(unsigned, unsigned, unsigned) override { DestroyWindow(); }
};

/// A field whose dates lie in 2021, as a screen's own field would do it.
class COwnYearEdit : public Kiln::CDateEdit
{
protected:
    void OnKillFocus(CWnd* newFocus) override
    {
        const YearHandlerScope scope([](int, int) { return 2021; });
        CDateEdit::OnKillFocus(newFocus);
    }
};

/// Asks something when its button is pressed; its list is filled anew when it drops.
class CRoughPage : public CPropertyPage
{
public:
    CRoughPage() : CPropertyPage(kRough) {}

protected:
    bool OnCommand(WPARAM wParam, LPARAM lParam) override
    {
        if (wParam == kAsk)
            AfxMessageBox("Is this so?");
        if (wParam >> Afx::kCommandIdBits == CBN_DROPDOWN)
            Fill();
        return CPropertyPage::OnCommand(wParam, lParam);
    }
    void DoDataExchange(CDataExchange* exchange) override
    {
        DDX_Control(exchange, kAmount, m_amount);
        DDX_Control(exchange, kDate, m_date);
        m_date.DDX(exchange, m_day, Kiln::kDateRequired);
    }

private:
    void Fill() const
    {
        auto& combo = static_cast<CComboBox&>(*GetDlgItem(kKind));
        combo.ResetContent();
        for (const char* const text : {"first", "second", "third"})
            combo.AddString(text);
    }

    Kiln::CAmtEdit m_amount;
    COwnYearEdit m_date;
    Kiln::CDate m_day;
};

class HardUse : public ::testing::Test, protected ::Test::Stories
{
protected:
    HardUse()
    {
        m_sheet.AddPage(&m_page);
        Around("Sheet", [this](const ::Test::Acts& inside) {
            ::Test::Work(m_sheet, [&](::Test::Hands& hands) {
                inside(hands);
                if (m_sheet.IsOpen())
                    hands.Click(IDCANCEL);
            });
            EXPECT_FALSE(m_sheet.IsOpen());
            EXPECT_EQ(CWnd::GetFocus(), nullptr);
        });
        On("A button that ends is put there", [this] { m_page.Adopt(std::make_unique<CButtonThatEnds>(), kEnding); });
        On("A field that ends is put there",
           [this] { m_page.Adopt(std::make_unique<CFieldThatEnds>(), kEnding).SetAccessibleName("Ends"); });
        On("While asked: another box is shown", [] { WhileAsked([] { AfxMessageBox("Another one."); }); });
        On("While asked: the sheet is closed", [this] { WhileAsked([this] { m_sheet.EndDialog(IDOK); }); });
        On("While asked: the sheet is destroyed", [this] { WhileAsked([this] { m_sheet.DestroyWindow(); }); });
        Is("The sheet is", [this] { return m_sheet.IsOpen() ? "open" : "closed"; });
        On("The list of kinds is emptied", [this] { Control<CComboBox>("Kind").ResetContent(); });
        Is("The list of kinds is", [this] { return Control<CComboBox>("Kind").GetDroppedState() ? "open" : "closed"; });
        On("No amount", [this] { EXPECT_FALSE(Control<Kiln::CAmtEdit>("Amount").GetAmt().IsValid()); });
        On("At once",
           [this](const std::string& name, const std::string& text) { Afx::UserActs::Edit(Control(name), text, 0); });
    }

private:
    /// What the application does while the next message box is shown.
    static void WhileAsked(std::function<void()> act)
    {
        ::Test::Windows().OnUnexpected([act, asked = false](const Shown& shown) mutable {
            if (!std::exchange(asked, true))
                act();
            return Afx::SafeAnswer(shown.style);
        });
    }

    const Kiln::CDateEdit::YearHandlerScope m_year{[](int, int) { return 2024; }}; // which has each day
    CRoughPage m_page;
    CPropertySheet m_sheet{"Sheet"};
};

STORIES(HardUse, "Kiln/HardUse.story");

} // namespace

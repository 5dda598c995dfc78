// What must bring no program down, whatever the user, the application or the desktop does meanwhile.

#include <gtest/gtest.h>

#include <utility>

#include "Afx/windows/DataExchange.h"
#include "Afx/windows/PropertySheet.h"
#include "Kiln/controls/AmtEdit.h"
#include "support/Hands.h"

namespace
{

using Afx::ControlKind;
using ::Test::Hands;
using Shown = Afx::HeadlessWindowSystem::Shown;

constexpr unsigned kAmount = 101, kKind = 102, kText = 103, kAsk = 104, kEnding = 105;
constexpr Afx::LayoutRow kRoughRows[] = {
    {ControlKind::Label, 0, "&Amount:", 0, 0}, {ControlKind::Custom, kAmount, "", 0, 1},
    {ControlKind::Label, 0, "&Kind:", 1, 0},   {ControlKind::Combo, kKind, "", 1, 1},
    {ControlKind::Label, 0, "&Text:", 2, 0},   {ControlKind::Field, kText, "", 2, 1},
    {ControlKind::Push, kAsk, "As&k", 3, 1},
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
    void DoDataExchange(CDataExchange* exchange) override { DDX_Control(exchange, kAmount, m_amount); }

private:
    void Fill() const
    {
        auto& combo = static_cast<CComboBox&>(*GetDlgItem(kKind));
        combo.ResetContent();
        for (const char* const text : {"first", "second", "third"})
            combo.AddString(text);
    }

    Kiln::CAmtEdit m_amount;
};

/// What the application does while the next message box is shown.
template<class Act>
void WhileAsked(Act act)
{
    ::Test::Windows().OnUnexpected([act, asked = false](const Shown& shown) mutable {
        if (!std::exchange(asked, true))
            act();
        return Afx::SafeAnswer(shown.style);
    });
}

constexpr char kMegabyteRefused[] = "The text is too long: this field takes 32767 characters. Nothing was pasted.";
// A Hebrew letter, an e with an accent of its own, and one beyond two bytes.
constexpr char kMixed[] = "\u05d0e\u0301\U0001F600";

struct HardUse
{
    const char* what;
    void (*act)(Hands&, CPropertySheet&, CRoughPage&);
};

const HardUse kUses[] = {
    {"a button ends in its own handler",
     [](Hands& hands, CPropertySheet&, CRoughPage& page) {
         page.Adopt(std::make_unique<CButtonThatEnds>(), kEnding);
         hands.Click(kEnding);
         EXPECT_EQ(page.GetDlgItem(kEnding), nullptr);
     }},
    {"a field ends while it is typed into",
     [](Hands& hands, CPropertySheet&, CRoughPage& page) {
         page.Adopt(std::make_unique<CFieldThatEnds>(), kEnding).SetAccessibleName("Ends");
         hands.Click(kEnding);
         hands.Write("12");
         EXPECT_EQ(page.GetDlgItem(kEnding), nullptr);
     }},
    {"a message is shown during a message",
     [](Hands& hands, CPropertySheet& sheet, CRoughPage&) {
         WhileAsked([] { AfxMessageBox("Another one."); });
         hands.Click(kAsk);
         hands.ExpectMessage("Is this so?");
         hands.ExpectMessage("Another one.");
         EXPECT_TRUE(sheet.IsOpen());
         hands.Type(kText, "still there");
         hands.ExpectText(kText, "still there");
     }},
    {"the application closes the sheet during a message of its page",
     [](Hands& hands, CPropertySheet& sheet, CRoughPage&) {
         WhileAsked([&sheet] { sheet.EndDialog(IDOK); });
         hands.Click(kAsk);
         hands.ExpectMessage("Is this so?");
         EXPECT_FALSE(sheet.IsOpen());
     }},
    {"the application destroys the sheet during a message of its page",
     [](Hands& hands, CPropertySheet& sheet, CRoughPage&) {
         WhileAsked([&sheet] { sheet.DestroyWindow(); });
         hands.Click(kAsk);
         hands.ExpectMessage("Is this so?");
         EXPECT_FALSE(sheet.IsOpen());
     }},
    {"a list is filled anew while it drops",
     [](Hands& hands, CPropertySheet&, CRoughPage& page) {
         auto& combo = dynamic_cast<CComboBox&>(hands.Control(kKind));
         for (const char* const chosen : {"second", "second"}) {
             hands.Press('K', Afx::kAlt);
             hands.Press(VK_F4);
             hands.Press(VK_DOWN);
             hands.Press(VK_DOWN);
             hands.Press(VK_RETURN);
             hands.ExpectText(kKind, chosen);
         }
         hands.Press(VK_F4);
         combo.ResetContent(); // by something else in the program
         hands.Press(VK_DOWN);
         hands.Press(VK_ESCAPE);
         EXPECT_FALSE(combo.GetDroppedState());
         EXPECT_NE(page.GetDlgItem(kKind), nullptr);
     }},
    {"an amount is a megabyte long, and typed as no amount is",
     [](Hands& hands, CPropertySheet&, CRoughPage&) {
         hands.Click(kAmount);
         auto& amount = dynamic_cast<Kiln::CAmtEdit&>(hands.Control(kAmount));
         Afx::UserActs::Edit(amount, std::string(1 << 20, '7'), 3);
         hands.ExpectMessage("The text is too long: this field takes 200 characters. Nothing was pasted.");
         hands.ExpectText(kAmount, "");
         Afx::UserActs::Edit(amount, std::string(200, '7'), 0);
         EXPECT_FALSE(amount.GetAmt().IsValid());
         hands.Type(kAmount, "");
         Afx::UserActs::Edit(amount, kMixed, 0);
         EXPECT_FALSE(amount.GetAmt().IsValid());
         hands.Type(kAmount, "12.5");
         hands.Press(VK_TAB);
         hands.ExpectText(kAmount, "12.50");
     }},
    {"letters run from right to left and combine",
     [](Hands& hands, CPropertySheet&, CRoughPage&) {
         auto& text = dynamic_cast<CEdit&>(hands.Control(kText));
         hands.Click(kText);
         Afx::UserActs::Edit(text, std::string(1 << 20, '7'), 3);
         hands.ExpectMessage(kMegabyteRefused);
         hands.ExpectText(kText, "");
         hands.Write(kMixed);
         hands.ExpectText(kText, kMixed);
         hands.Press(VK_END);
         hands.Write("\b\b");
         hands.ExpectText(kText, "\u05d0e");
     }},
};

} // namespace

TEST(HardUse, BringsNoWindowDown)
{
    for (const HardUse& use : kUses) {
        SCOPED_TRACE(use.what);
        CRoughPage page;
        CPropertySheet sheet("Sheet");
        sheet.AddPage(&page);
        ::Test::Work(sheet, [&](Hands& hands) {
            use.act(hands, sheet, page);
            if (sheet.IsOpen())
                hands.Click(IDCANCEL);
        });
        EXPECT_FALSE(sheet.IsOpen());
        EXPECT_EQ(CWnd::GetFocus(), nullptr);
    }
}

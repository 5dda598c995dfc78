#include <gtest/gtest.h>

#include "Afx/windows/DataExchange.h"
#include "Afx/windows/ListCtrl.h"
#include "Afx/windows/PropertySheet.h"
#include "support/Hands.h"

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
constexpr Afx::LayoutRow kPageRows[] = {{ControlKind::Field, kName, "", 0, 0}};
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

} // namespace

TEST(CDialog, IsWorkedByKeyboardAlone)
{
    CPersonDialog dialog;
    for (int round = 0; round < 2; ++round) { // the controls are made anew
        EXPECT_EQ(::Test::Work(dialog,
                               [&](::Test::Hands& hands) {
                                   hands.ExpectFocus(kName);
                                   hands.Write("Bob");
                                   EXPECT_TRUE(hands.Press(VK_TAB));
                                   hands.Write("x");
                                   EXPECT_TRUE(hands.Press(VK_RETURN));
                                   hands.ExpectMessage("Please enter a whole number.");
                                   hands.ExpectFocus(kAge);
                                   hands.ExpectAllSelected();
                                   hands.Write("41");
                                   EXPECT_TRUE(hands.Press(VK_TAB)) << "over what is hidden";
                                   hands.Write(" ");
                                   hands.Press(VK_TAB);
                                   hands.Press(VK_DOWN);
                                   hands.Press(VK_DOWN);
                                   hands.Write("r"); // the next that begins so, from the start again
                                   hands.Press(VK_TAB);
                                   hands.Write("one");
                                   hands.Press(VK_RETURN);
                                   hands.Write("two");
                                   hands.ExpectText(kNotes, "one\ntwo");
                                   hands.Press('N', Afx::kAlt);
                                   hands.ExpectFocus(kName);
                                   EXPECT_EQ(hands.Control(kAge).GetAccessibleName(), "Age");
                                   hands.Press(VK_TAB, Afx::kShift);
                                   hands.ExpectFocus(IDCANCEL);
                                   hands.Press('G', Afx::kAlt);
                                   hands.Press(VK_RETURN);
                               }),
                  IDOK);
        EXPECT_EQ(dialog.name, "Bob");
        EXPECT_EQ(dialog.age, 41);
        EXPECT_EQ(dialog.tick, 1 - round) << "ticked, and ticked again";
        EXPECT_EQ(dialog.kind, 0);
    }
}

TEST(CPropertySheet, IsAcceptedByAllPagesOrStaysOpen)
{
    CPropertySheet sheet("Sheet");
    CRefusingPage first, second;
    sheet.AddPage(&first);
    sheet.AddPage(&second);
    EXPECT_EQ(::Test::Work(sheet,
                           [&](::Test::Hands& hands) {
                               hands.Type(kName, "bad");
                               EXPECT_FALSE(sheet.SetActivePage(1));
                               hands.Click(IDOK);
                               EXPECT_FALSE(sheet.WasAccepted());
                               hands.Type(kName, "late");
                               EXPECT_TRUE(hands.Press(VK_TAB, Afx::kControl));
                               EXPECT_EQ(sheet.GetActivePage(), &second);
                               second.SetModified();
                               hands.Click(ID_APPLY_NOW);
                               EXPECT_FALSE(sheet.WasAccepted());
                               EXPECT_EQ(sheet.GetActivePage(), &first) << "the one that refused";
                               hands.Type(kName, "good");
                               hands.Click(ID_APPLY_NOW);
                               EXPECT_TRUE(sheet.WasAccepted());
                               EXPECT_TRUE(sheet.IsOpen());
                               EXPECT_FALSE(sheet.GetDlgItem(ID_APPLY_NOW)->IsWindowEnabled());
                               hands.Press(VK_RETURN);
                           }),
              IDOK);
    EXPECT_EQ(first.applied, 2);
    EXPECT_EQ(second.applied, 2);
    first.closesSheet = true;
    EXPECT_EQ(::Test::Work(sheet, [](::Test::Hands& hands) { hands.Click(IDOK); }), IDCANCEL) << "the program's word";
    EXPECT_EQ(second.applied, 2);
}

TEST(CComboBox, KeepsItsChoiceWhileItsListGrows)
{
    CDialog dialog(kPerson);
    ::Test::Work(dialog, [&](::Test::Hands& hands) {
        auto& combo = dynamic_cast<CComboBox&>(hands.Control(kKind));
        for (const char* const text : {"red", "green"})
            combo.AddString(text);
        for (const int chosen : {CComboBox::kNone, 0}) {
            combo.SetCurSel(chosen);
            Afx::UserActs::Drop(combo, true);
            combo.InsertString(0, "new");
            hands.Press(VK_DOWN);
            hands.Press(VK_ESCAPE);
            EXPECT_EQ(combo.GetCurSel(), chosen == 0 ? 1 : chosen) << "as before it dropped, though its list grew";
        }
        dialog.EndDialog(5);
    });
}

TEST(CDialog, KeepsOthersWaiting)
{
    CPersonDialog outer;
    ::Test::Work(outer, [&](::Test::Hands& hands) {
        CPersonDialog inner;
        EXPECT_EQ(::Test::Work(inner,
                               [&](::Test::Hands&) {
                                   EXPECT_FALSE(Afx::UserActs::Click(*outer.GetDlgItem(IDOK)));
                                   EXPECT_FALSE(outer.DeliverCommand(IDOK));
                                   inner.EndDialog(4);
                               }),
                  4);
        hands.ExpectFocus(kName);
        outer.GetDlgItem(kName)->ShowWindow(false);
        hands.ExpectFocus(kAge);
        hands.Press(VK_ESCAPE);
    });
}

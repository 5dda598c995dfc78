// Date fields, combo boxes of lists and countries, links.

#include "Afx/system/Application.h"
#include "MorvUt/taxyear/CurrentTaxYear.h"
#include "MorvUt/ui/countries/CountryCombos.h"
#include "MorvUt/ui/edits/DateEdits.h"
#include "MorvUt/ui/edits/HyperClick.h"
#include "MorvUt/ui/edits/TextExtents.h"
#include "MorvUt/ui/lists/BanksComboBox.h"
#include "MorvUt/ui/lists/ListCombos.h"
#include "support/Hands.h"
#include "support/Practice.h"

namespace
{

using ::Test::Hands;
using ::Test::Work;

constexpr unsigned kFirst = 801, kSecond = 802, kThird = 803, kFourth = 804;

struct PairOfDates : CDialog
{
    PairOfDates()
    {
        from.Create(this, kFirst);
        to.Create(this, kSecond);
        underwriting.Create(this, kThird);
        plain.Create(this, kFourth);
    }
    CPairedDateEdit from{to, false}, to{from, true};
    CUnderwritingDateEdit underwriting;
    CSystemDateEdit plain;
};

class UiControls : public ::testing::Test, protected ::Test::Practice
{
protected:
    UiControls() { SetCurrentTaxYear(2024 - 1991); }
    ~UiControls() override { CCurrentTaxYearSingleton::Destroy(); }
    static std::string Items(const CComboBox& combo)
    {
        std::string items;
        CString text;
        for (int i = 0; combo.GetLBText(i, text); ++i)
            items += (i ? "|" : "") + text.Str();
        return items;
    }
};

} // namespace

TEST_F(UiControls, DatesWithoutAYearTakeTheirPlaceBesideEachOther)
{
    const Kiln::CDate::YearHandler outer = Kiln::CDate::SetYearHandler([](int, int) { return 1999; });
    PairOfDates dialog;
    Work(dialog, [&](Hands& hands) {
        hands.Type(kFirst, "1/6");
        hands.Type(kSecond, "1/5"); // leaves the first
        hands.ExpectText(kFirst, "01/06/2023");
        hands.Type(kThird, "1/5"); // leaves the second
        hands.ExpectText(kSecond, "01/05/2024");
        hands.Type(kFirst, "2/5");
        hands.ExpectText(kThird, "01/05/2023");
        Afx::UserActs::Focus(dialog.to);
        hands.ExpectText(kFirst, "02/05/2023");
        dialog.underwriting.m_bUnderwriting = false;
        hands.Type(kThird, "1/1");
        ::Test::Windows().Leave();
        hands.ExpectText(kThird, "01/01/2024");
        hands.Type(kFourth, "6/4");
        ::Test::Windows().Leave();
        hands.ExpectText(kFourth, "06/04/2023");
        dialog.EndDialog(IDOK);
    });
    EXPECT_EQ(CPairedDateEdit::m_pStaticPairedEdit, nullptr);
    EXPECT_EQ(Kiln::CDate::SetYearHandler(outer)(1, 1), 1999) << "what was there before is back";
}

TEST_F(UiControls, CombosHaveTheirListsAndKeepWhatWasTyped)
{
    CWinApp app;
    app.WriteProfileString("Preferences", "DataDirectory", ::Test::TempDir().c_str());
    ::Test::WriteFile("BBSList.txt", "Abbey\nZeta\n");
    ::Test::WriteFile("CharList.txt", "Oxfam");
    ::Test::WriteFile("FBBSList.txt", "Banque");
    Sql("INSERT INTO BRIXBank (lID, strName) VALUES (1, 'Own bank')");
    TXBanksComboBox banks;
    banks.SetWindowText("zeta");
    banks.SetType(TXBanksComboBox::kSocieties);
    EXPECT_EQ(Items(banks), "Abbey|Zeta");
    EXPECT_EQ(banks.GetCurSel(), 1);
    EXPECT_EQ(banks.Text(), "zeta");
    banks.ResetContent();
    banks.SetType(TXBanksComboBox::kSocieties);
    EXPECT_EQ(Items(banks), "") << "the type is the one it has";
    banks.SetType(TXBanksComboBox::kForeignSocieties);
    EXPECT_EQ(Items(banks), "Banque");
    banks.SetType(TXBanksComboBox::kRecords);
    EXPECT_EQ(Items(banks), "Own bank");
    CWnd around;
    around.Adopt(std::make_unique<CComboBox>(), kFirst);
    TXCharityComboBox charities;
    charities.SubclassDlgItem(kFirst, &around);
    EXPECT_EQ(Items(charities), "Oxfam");
}

TEST_F(UiControls, CountriesAreChosenByTheirNames)
{
    Sql("INSERT INTO BRIXCountry (lID, strName, strAbbr, strCurrency, strCurrencyAbbr, bEU) VALUES "
        "(1, 'Jersey', 'JEY', 'Pound', 'GBP', 0), (2, 'France', 'FRA', 'Euro', 'EUR', 1)");
    CDialog dialog;
    dialog.Adopt(std::make_unique<CComboBox>(), kFirst);
    dialog.Adopt(std::make_unique<CComboBox>(), kSecond);
    TXCountryComboBox plain;
    TXCountryCoolComboBox cool;
    plain.SubclassDlgItem(kFirst, &dialog);
    cool.SubclassDlgItem(kSecond, &dialog);
    Work(dialog, [&](Hands& hands) {
        EXPECT_EQ(Items(plain), "Unassigned|France|Jersey");
        hands.Pick(kFirst, "jersey");
        EXPECT_EQ(plain.GetCurSelCountry() + plain.GetCurSelCountryAbbr() + plain.GetCurSelCurrencyAbbr(),
                  "JerseyJEYGBP");
        plain.SetShowEUCountriesOnly(1);
        EXPECT_EQ(Items(plain), "France");
        EXPECT_EQ(plain.GetCurSelCountry(), "");
        plain.SetShowEUCountriesOnly(0);
        hands.Pick(kFirst, "Unassigned");
        EXPECT_EQ(plain.GetCurSelCurrency(), "");
        Afx::UserActs::Focus(cool);
        hands.Write("fr");
        Afx::UserActs::Drop(cool, true);
        cool.BuildCountryList();
        EXPECT_TRUE(cool.Text() == "fr" && cool.GetDroppedState()) << "what is being typed";
        hands.Press(VK_TAB);
        EXPECT_FALSE(cool.GetDroppedState());
        EXPECT_EQ(cool.GetCurSelCurrency() + " " + cool.GetCurSelCountryAbbr(), "Euro FRA") << "completed";
        dialog.EndDialog(IDOK);
    });
}

TEST(CHyperClick, FollowsItselfAndMeasures)
{
    struct Linked : CDialog
    {
        Linked()
        {
            link.SetWindowText("&More");
            link.Create(this, kFirst);
        }
        bool OnCommand(WPARAM command, LPARAM) override { return followed += command == 99, true; }
        CHyperClick link{99};
        int followed = 0;
    } dialog;
    Work(dialog, [&](Hands& hands) {
        hands.Click(kFirst);
        hands.Press(VK_RETURN);
        hands.Press('M', Afx::kAlt);
        EXPECT_EQ(dialog.followed, 3);
        dialog.EndDialog(IDOK);
    });
    CDC dc;
    dialog.link.OnDraw(&dc, {0, 0, 100, 20}, 0);
    ASSERT_EQ(dc.GetWritten().size(), 1u);
    EXPECT_TRUE(dc.GetWritten()[0].underlined && dc.GetWritten()[0].text == "More");
    EXPECT_EQ(GetMultilineTextExtents(dc.GetSafeHdc(), "ab\n\tc\n"), (CSize{9 * 8, 3 * 16}));
    CFont large;
    large.percent = 150;
    EXPECT_EQ(GetTextHeight(&dialog, &large), 24);
}

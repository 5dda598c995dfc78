// Date fields, combo boxes of lists and countries, links.

#include "Afx/system/Application.h"
#include "MorvUt/taxyear/CurrentTaxYear.h"
#include "MorvUt/ui/countries/CountryCombos.h"
#include "MorvUt/ui/edits/DateEdits.h"
#include "MorvUt/ui/edits/HyperClick.h"
#include "MorvUt/ui/edits/TextExtents.h"
#include "MorvUt/ui/lists/BanksComboBox.h"
#include "MorvUt/ui/lists/ListCombos.h"
#include "support/Practice.h"
#include "support/Story.h"

namespace
{

using ::Test::Work;

struct PairOfDates : CDialog
{
    PairOfDates()
    {
        ::Test::Put(from, *this, 801, "From");
        ::Test::Put(to, *this, 802, "To");
        ::Test::Put(underwriting, *this, 803, "Underwriting");
        ::Test::Put(plain, *this, 804, "Plain");
    }
    CPairedDateEdit from{to, false}, to{from, true};
    CUnderwritingDateEdit underwriting;
    CSystemDateEdit plain;
};

struct Countries : CDialog
{
    Countries()
    {
        for (const unsigned id : {801u, 802u})
            Adopt(std::make_unique<CComboBox>(), id);
        plain.SubclassDlgItem(801, this);
        cool.SubclassDlgItem(802, this);
        plain.SetAccessibleName("Plain");
        cool.SetAccessibleName("Cool");
    }
    TXCountryComboBox plain;
    TXCountryCoolComboBox cool;
};

/// In place of the boxes of a layout.
struct Lists : CDialog
{
    Lists()
    {
        ::Test::Put(banks, *this, 801, "Bank");
        Adopt(std::make_unique<CComboBox>(), 802);
        charities.SubclassDlgItem(802, this);
        charities.SetAccessibleName("Charity");
    }
    TXBanksComboBox banks;
    TXCharityComboBox charities;
};

struct Linked : CDialog
{
    Linked()
    {
        link.SetWindowText("&More");
        link.Create(this, 801);
    }
    bool OnCommand(WPARAM command, LPARAM lParam) override
    {
        followed += command == 99;
        return CDialog::OnCommand(command, lParam);
    }
    CHyperClick link{99};
    int followed = 0;
};

class UiControls : public ::testing::Test, protected ::Test::Practice, protected ::Test::Stories
{
protected:
    UiControls()
    {
        SetCurrentTaxYear(2024 - 1991);
        Around("Dates", [](::Test::Acts inside) {
            const Kiln::CDate::YearHandler outer = Kiln::CDate::SetYearHandler([](int, int) { return 1999; });
            PairOfDates dialog;
            Work(dialog, std::move(inside));
            EXPECT_EQ(CPairedDateEdit::m_pStaticPairedEdit, nullptr);
            EXPECT_EQ(Kiln::CDate::SetYearHandler(outer)(1, 1), 1999) << "what was there before is back";
        });
        On("Another return than of underwriting",
           [this] { Control<CUnderwritingDateEdit>("Underwriting").m_bUnderwriting = false; });
        On("Sql", Script);
        Opens<Countries>("Countries");
        On("Plain is of the EU alone", [this](const std::string& yes) {
            Control<TXCountryComboBox>("Plain").SetShowEUCountriesOnly(yes == "yes");
        });
        On("Plain cannot be of the EU alone", [this] {
            EXPECT_THROW(Control<TXCountryComboBox>("Plain").SetShowEUCountriesOnly(1), Cellar::DatabaseError);
        });
        On("In", [](const std::string& year) { SetCurrentTaxYear(static_cast<short>(std::stoi(year) - 1991)); });
        On("Chosen in Plain", [this] { return Chosen(Control<TXCountryComboBox>("Plain")); });
        On("Chosen in Cool", [this] { return Chosen(Control<TXCountryCoolComboBox>("Cool")); });
        On("Cool drops while it is built anew", [this] {
            auto& cool = Control<TXCountryCoolComboBox>("Cool");
            Afx::UserActs::Drop(cool, true);
            cool.BuildCountryList();
            EXPECT_TRUE(cool.GetDroppedState());
        });
        On("Cool is closed", [this] { EXPECT_FALSE(Control<CComboBox>("Cool").GetDroppedState()); });
        m_app.WriteProfileString("Preferences", "DataDirectory", ::Test::TempDir().c_str());
        On("List", [](const std::string& name, const std::string& lines) { ::Test::WriteFile(name, lines); });
        Opens<Lists>("Lists");
        for (const auto& [words, type] : {std::pair("Societies", TXBanksComboBox::kSocieties),
                                          {"Foreign societies", TXBanksComboBox::kForeignSocieties},
                                          {"Records", TXBanksComboBox::kRecords}})
            On(words, [this, type = type] { Control<TXBanksComboBox>("Bank").SetType(type); });
        On("Records cannot be read", [this] {
            auto& banks = Control<TXBanksComboBox>("Bank");
            EXPECT_THROW(banks.SetType(TXBanksComboBox::kRecords), Cellar::DatabaseError);
            EXPECT_TRUE(banks.IsDrawing());
        });
        Is("Chosen bank", [this] { return Control<TXBanksComboBox>("Bank").GetCurSel(); });
        On("The program empties Bank", [this] { Control<TXBanksComboBox>("Bank").ResetContent(); });
        Around("A link", [](const std::string& followed, ::Test::Acts inside) {
            Linked dialog;
            Work(dialog, std::move(inside));
            EXPECT_EQ(std::to_string(dialog.followed), followed);
        });
    }
    ~UiControls() override { CCurrentTaxYearSingleton::Destroy(); }
    static std::string Chosen(const auto& combo)
    {
        return (combo.GetCurSelCountry() + " " + combo.GetCurSelCountryAbbr() + " " + combo.GetCurSelCurrency() + " " +
                combo.GetCurSelCurrencyAbbr())
            .Str();
    }
    CWinApp m_app;
};

STORIES(UiControls, "MorvUt/ui/Controls.story");

} // namespace

TEST(CHyperClick, IsDrawnUnderlinedAndMeasuredByLines)
{
    Linked dialog;
    CDC dc;
    dialog.link.OnDraw(&dc, {0, 0, 100, 20}, 0);
    ASSERT_EQ(dc.GetWritten().size(), 1u);
    EXPECT_TRUE(dc.GetWritten()[0].underlined && dc.GetWritten()[0].text == "More");
    EXPECT_EQ(GetMultilineTextExtents(dc.GetSafeHdc(), "ab\n\tc\n"), (CSize{9 * 8, 3 * 16}));
    CFont large;
    large.percent = 150;
    EXPECT_EQ(GetTextHeight(&dialog, &large), 24);
}

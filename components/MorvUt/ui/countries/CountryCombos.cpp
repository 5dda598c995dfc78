#include "MorvUt/ui/countries/CountryCombos.h"

using Kiln::CCoolComboBox;
using Kiln::CExComboBox;

namespace
{

void Fill(CComboBox& combo, bool euOnly, bool unassigned)
{
    const CArray<CCountryData>& countries = TXCountryComboData::GetCountries(); // first: the list stays when it throws
    const CString chosen = combo.Text();
    combo.SetRedraw(false);
    combo.ResetContent();
    for (int i = 0; i < countries.GetSize(); ++i)
        if (i == 0 ? unassigned && !euOnly : !euOnly || countries[i].isEU)
            combo.AddString(countries[i].name);
    if (combo.IsEditable())
        combo.SetWindowText(chosen); // also what is no country yet, since the user may be typing
    else
        combo.SelectString(chosen);
    combo.SetRedraw(true);
}

/// The chosen country's data; empty texts when none is chosen.
struct Chosen
{
    CString country, abbr, currency, currencyAbbr;

    explicit Chosen(const CComboBox& combo)
    {
        if (combo.GetLBText(combo.GetCurSel(), country))
            TXCountryComboData::GetCountryData(country, abbr, currency, currencyAbbr);
    }
};

/// Tab closes a list that is dropped, with what is chosen in it, and goes on.
void CloseBeforeTab(CComboBox& combo, const MSG& message)
{
    if (message.message == WM_KEYDOWN && message.wParam == VK_TAB)
        combo.ShowDropDown(false);
}

} // namespace

IMPLEMENT_DYNCREATE(TXCountryComboBox, CExComboBox)

void TXCountryComboBox::BuildCountryList() { Fill(*this, m_euOnly != 0, m_unassigned != 0); }
CString TXCountryComboBox::GetCurSelCountry() const { return Chosen(*this).country; }
CString TXCountryComboBox::GetCurSelCountryAbbr() const { return Chosen(*this).abbr; }
CString TXCountryComboBox::GetCurSelCurrency() const { return Chosen(*this).currency; }
CString TXCountryComboBox::GetCurSelCurrencyAbbr() const { return Chosen(*this).currencyAbbr; }

void TXCountryComboBox::SetShowEUCountriesOnly(int euOnly)
{
    if ((euOnly != 0) == (m_euOnly != 0))
        return;
    Fill(*this, euOnly != 0, m_unassigned != 0);
    m_euOnly = euOnly;
}

bool TXCountryComboBox::PreTranslateMessage(MSG* message)
{
    CloseBeforeTab(*this, *message);
    return CExComboBox::PreTranslateMessage(message);
}

void TXCountryComboBox::PreSubclassWindow()
{
    CExComboBox::PreSubclassWindow();
    BuildCountryList();
}

IMPLEMENT_DYNCREATE(TXCountryCoolComboBox, CCoolComboBox)

void TXCountryCoolComboBox::BuildCountryList() { Fill(*this, false, m_unassigned != 0); }
CString TXCountryCoolComboBox::GetCurSelCountry() const { return Chosen(*this).country; }
CString TXCountryCoolComboBox::GetCurSelCountryAbbr() const { return Chosen(*this).abbr; }
CString TXCountryCoolComboBox::GetCurSelCurrency() const { return Chosen(*this).currency; }
CString TXCountryCoolComboBox::GetCurSelCurrencyAbbr() const { return Chosen(*this).currencyAbbr; }

bool TXCountryCoolComboBox::PreTranslateMessage(MSG* message)
{
    CloseBeforeTab(*this, *message);
    return CCoolComboBox::PreTranslateMessage(message);
}

void TXCountryCoolComboBox::PreSubclassWindow()
{
    CCoolComboBox::PreSubclassWindow();
    BuildCountryList();
}

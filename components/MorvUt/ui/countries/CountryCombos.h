#pragma once

// Combo boxes of countries.

#include "Kiln/controls/ExComboBox.h"
#include "MorvUt/Export.h"
#include "MorvUt/ui/countries/CountryComboData.h"

/// Chooses a country of the current tax year. It is filled when it takes its place in a dialog.
class MORVUT_API TXCountryComboBox : public Kiln::CExComboBox
{
    DECLARE_DYNCREATE(TXCountryComboBox)

    /// `euOnly` not 0: members of the EU alone. `unassigned` 0: without the entry "Unassigned".
    explicit TXCountryComboBox(int euOnly = 0, int unassigned = 1) noexcept : m_euOnly(euOnly), m_unassigned(unassigned)
    {}

    /// Fills the list from the practice; the choice stays where there is that country still, a text in an edit always.
    /// Throws Cellar::DatabaseError.
    void BuildCountryList();
    /// Of the chosen country; empty when none is.
    CString GetCurSelCountry() const;
    CString GetCurSelCountryAbbr() const;
    CString GetCurSelCurrency() const;
    CString GetCurSelCurrencyAbbr() const;
    /// A change fills the list anew; when that throws, nothing has changed.
    void SetShowEUCountriesOnly(int euOnly);
    int GetShowEUCountriesOnly() const noexcept { return m_euOnly; }

    bool PreTranslateMessage(MSG* message) override;

protected:
    void PreSubclassWindow() override;

private:
    int m_euOnly;
    int m_unassigned;
};

/// The same with an edit, which completes what is typed.
class MORVUT_API TXCountryCoolComboBox : public Kiln::CCoolComboBox
{
    DECLARE_DYNCREATE(TXCountryCoolComboBox)

    explicit TXCountryCoolComboBox(int unassigned = 1) noexcept : m_unassigned(unassigned) {}

    void BuildCountryList();
    CString GetCurSelCountry() const;
    CString GetCurSelCountryAbbr() const;
    CString GetCurSelCurrency() const;
    CString GetCurSelCurrencyAbbr() const;

    bool PreTranslateMessage(MSG* message) override;

protected:
    void PreSubclassWindow() override;

private:
    int m_unassigned;
};

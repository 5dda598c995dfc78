// A dividend from abroad, and the rate of the double taxation agreement that limits the credit for its tax.

#include <algorithm>

#include "Afx/windows/DataExchange.h"
#include "Kiln/controls/AmtEdit.h"
#include "layouts/Sheets.h"
#include "MorvUt/ui/countries/CountryCombos.h"
#include "sheets/RecordPage.h"
#include "sheets/ScheduleSheet.h"
#include "sheets/Sheets.h"

namespace Desk
{
namespace
{

using Dividend = Brix::CForeignDividend;
using Kiln::CAmt;

constexpr RecordField kDividendFields[] = {
    {IDC_DIVIDEND_COMPANY, Dividend::kCompany, FieldKind::Text, true},
    {IDC_DIVIDEND_PAID, Dividend::kPaid, FieldKind::Date},
    {IDC_DIVIDEND_NET, Dividend::kNet, FieldKind::Amount},
    {IDC_DIVIDEND_TAX, Dividend::kForeignTax, FieldKind::Amount},
};

/// One more than the highest of the return's dividends.
int NextOrdering(const Brix::CTaxForm& form)
{
    Dividend last;
    const bool isAny =
        last.Open({{Dividend::kTaxFormID, form.GetID()}}, {{Dividend::kOrdering, true}}, {{0, Dividend::kOrdering}, 1});
    return isAny ? last.GetOrdering() + 1 : 1;
}

/// Foreign tax as far as `rate` per cent of the gross dividend.
CAmt CreditOf(const CAmt& net, const CAmt& tax, double rate)
{
    constexpr int kToThePenny = 1;
    if (!net.IsValid() || !tax.IsValid())
        return CAmt();
    const CAmt most = (net + tax).PercentOf(rate, kToThePenny);
    return most < tax ? most : tax;
}

CString NameOfCountry(const CString& abbreviation)
{
    const CArray<CCountryData>& countries = TXCountryComboData::GetCountries();
    for (int i = 0; i < countries.GetSize(); ++i)
        if (countries[i].abbreviation == abbreviation)
            return countries[i].name;
    return {};
}

class CDividendPage : public CRecordPage
{
public:
    CDividendPage(Dividend& dividend, const ScheduleOwner& owner)
        : CRecordPage(kDividendLayout, dividend, kDividendFields), m_dividend(dividend), m_owner(owner)
    {}

protected:
    void DoDataExchange(CDataExchange* exchange) override
    {
        CRecordPage::DoDataExchange(exchange);
        DDX_Control(exchange, IDC_DIVIDEND_COUNTRY, m_country);
        if (!exchange->m_bSaveAndValidate)
            m_country.SelectString(NameOfCountry(m_dividend.GetCountryAbbr()));
        else if (m_country.GetCurSel() != CComboBox::kNone) // a country that is not in the list stays what it is
            m_dividend.SetCountryAbbr(m_country.GetCurSelCountryAbbr());
    }
    void OnEdited() override
    {
        double rate = 100.0;
        TXCountryComboData::GetCountryAbbrDTADividendRate(m_country.GetCurSelCountryAbbr(), DateIn(IDC_DIVIDEND_PAID),
                                                          rate);
        CString text;
        text.Format("%g", rate);
        GetDlgItem(IDC_DIVIDEND_RATE)->SetWindowText(text);
        GetDlgItem(IDC_DIVIDEND_CREDIT)
            ->SetWindowText(
                Kiln::FormatAmountShown(CreditOf(AmountIn(IDC_DIVIDEND_NET), AmountIn(IDC_DIVIDEND_TAX), rate)));
    }
    void BeforeSave() override { PutIntoReturn(m_dividend, m_owner, &NextOrdering); }

private:
    Dividend& m_dividend;
    const ScheduleOwner& m_owner;
    TXCountryComboBox m_country;
};

} // namespace

bool OpenForeignDividend(const ScheduleOwner& owner, long id)
{
    Dividend record;
    if (!StandOn(record, owner, id))
        return false;
    CDividendPage page(record, owner);
    CScheduleSheet sheet(owner, ScheduleKind::ForeignDividend, record);
    return RunSheet(sheet, {&page});
}

} // namespace Desk

#include "MorvUt/hmrc/detail/PayeAnswer.h"
#include "Quarry/Session.h"

namespace HmrcApi
{
namespace
{

using Brix::CMTD_PensionStateBenefits;
using Brix::CMTD_TaxFreeAllowances;

constexpr char kStatePension[] = "State Pension";
constexpr char kLumpSum[] = "State Pension lump sum";

std::vector<StagedPsb> MapPensions(const CPayeResponse& response)
{
    std::vector<PayeIdentity> identities;
    for (int i = 0; i <= response.GetPrivatePensionUpperBound(); ++i) {
        const auto pension = response.GetPrivatePensionAt(i);
        identities.push_back({pension->employerPayeReference, pension->worksNumber});
    }
    const std::vector<std::string> keys = StagingKeys(identities);
    std::vector<StagedPsb> staged;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const auto pension = response.GetPrivatePensionAt(static_cast<int>(i));
        staged.push_back({CPAYEPrepop::MTD_PrivatePension, identities[i], keys[i], pension->employerName,
                          pension->startDate, pension->taxablePayTotal, pension->taxTotal});
    }
    return staged;
}

/// Benefits of a kind that is not known are left out: a row of type 0 would be taken for a state pension.
std::vector<StagedPsb> MapBenefits(const CPayeResponse& response)
{
    std::vector<StagedPsb> staged;
    for (int i = 0; i <= response.GetTaxableSocialSecurityBenefitUpperBound(); ++i) {
        const auto benefit = response.GetTaxableSocialSecurityBenefitAt(i);
        const long type = CPAYEPrepop::MapTSSBBenefitTypeToMTD_PSBType(benefit->benefitType);
        if (type != CPAYEPrepop::MTD_None)
            staged.push_back({type,
                              {},
                              benefit->employerPayeReference,
                              {},
                              benefit->startDate.IsValid() ? benefit->startDate : benefit->endDate,
                              benefit->taxablePayTotal,
                              benefit->taxTotal});
    }
    return staged;
}

std::vector<StagedPsb> MapOther(const CPayeResponse& response)
{
    std::vector<StagedPsb> staged;
    const auto pension = response.getStatePension();
    if (!pension)
        return staged;
    const bool isLumpSumAlone = pension->lumpSum && pension->typeDescription.empty() && !pension->grossAmount.IsValid();
    if (!isLumpSumAlone) {
        const CString text = pension->typeDescription.empty() ? CString(kStatePension) : pension->typeDescription;
        staged.push_back({CPAYEPrepop::MTD_None, {}, text, {}, {}, pension->grossAmount, {}});
    }
    if (const auto& lump = pension->lumpSum)
        staged.push_back({CPAYEPrepop::MTD_None,
                          {},
                          kLumpSum,
                          {},
                          lump->startDate.IsValid() ? lump->startDate : lump->endDate,
                          lump->taxablePayTotal,
                          lump->taxTotal});
    return staged;
}

void Fill(CMTD_PensionStateBenefits& list, const StagedPsb& item)
{
    using List = CMTD_PensionStateBenefits;
    Assign(list, &List::GetMTDType, &List::SetMTDType, static_cast<int>(item.mtdType));
    Assign(list, &List::GetPayer, &List::SetPayer, item.payer);
    Assign(list, &List::GetStart, &List::SetStart, item.date);
    Assign(list, &List::GetAmount, &List::SetAmount, item.amount);
    Assign(list, &List::GetTax, &List::SetTax, item.tax);
}

bool HasFigures(const CMTD_PensionStateBenefits& row, const StagedPsb& item)
{
    return row.GetAmount() == item.amount && row.GetTax() == item.tax;
}

/// A pension's row keeps its reference when HMRC begins, or ceases, to send a second pension of that payer: its
/// schedule is found by it. So a pension looks for its reference with works number (and "#2" where it would have one),
/// then as it would be new, then bare.
bool FitsPension(int pass, const CMTD_PensionStateBenefits& row, const StagedPsb& item)
{
    const CString& reference = row.GetReference();
    if (pass == 0) {
        const std::string withWorks = item.identity.reference + ' ' + item.identity.worksNumber;
        return !item.identity.worksNumber.empty() &&
               reference == (item.reference.Str().starts_with(withWorks) ? item.reference : CString(withWorks));
    }
    return reference == (pass == 1 ? item.reference : CString(item.identity.reference));
}

void KeepReferences(std::vector<StagedPsb>& pensions, ClientId client, short year)
{
    using List = CMTD_PensionStateBenefits;
    RowsUnder<List> rows(StagedYearIds(client, year), List::kMTD_TaxYearID);
    rows.Filter([](List& list) { return CPAYEPrepop::IsPrivatePension(list.GetMTDType()); });
    std::vector<std::string> references;
    std::vector<PayeIdentity> identities;
    for (const StagedPsb& pension : pensions) {
        references.push_back(pension.reference.Str());
        identities.push_back(pension.identity);
    }
    KeepKeys(references, identities, [&](std::size_t item, const std::string& reference) {
        for (int row = 0; row < rows.GetCount(); ++row)
            if (rows[row].GetReference().Str() == reference && rows[row].GetStart() == pensions[item].date &&
                HasFigures(rows[row], pensions[item]))
                return true;
        return false;
    });
    for (std::size_t item = 0; item < references.size(); ++item)
        pensions[item].reference = references[item];
}

/// A benefit is known by kind and date; among several of one date the one with the same figures comes first.
bool FitsBenefit(int pass, const CMTD_PensionStateBenefits& row, const StagedPsb& item)
{
    return row.GetMTDType() == item.mtdType && row.GetStart() == item.date &&
           (pass > 1 || (!row.GetWithdrawn() && (pass > 0 || HasFigures(row, item))));
}

bool FitsOther(int pass, const CMTD_PensionStateBenefits& row, const StagedPsb& item)
{
    return row.GetReference() == item.reference && (pass > 0 || !row.GetWithdrawn());
}

/// Brings the rows whose type `isOfKind` into line with the items.
template<class IsOfKind, class Fits>
void UpdatePsb(ClientId client, short year, const std::vector<StagedPsb>& items, StagedCounts& counts,
               IsOfKind isOfKind, int passes, Fits fits)
{
    using List = CMTD_PensionStateBenefits;
    Quarry::CTransaction transaction;
    RowsUnder<List> rows(EnsureStagedYear(client, year), List::kMTD_TaxYearID);
    rows.Filter([&](List& list) { return isOfKind(list.GetMTDType()); });
    const auto rowOf = PairUp(items.size(), rows.GetCount(), passes,
                              [&](int pass, std::size_t item, int row) { return fits(pass, rows[row], items[item]); });
    BringIntoLine(
        rows, rowOf,
        [&](List& list, std::size_t item, bool isNew) {
            if (isNew || !CPAYEPrepop::IsPrivatePension(items[item].mtdType))
                Assign(list, &List::GetReference, &List::SetReference, items[item].reference);
            Fill(list, items[item]);
        },
        counts);
    transaction.Commit();
}

bool IsSameAllowance(const CMTD_TaxFreeAllowances& row, const TaxFreeAllowance_t& allowance)
{
    const int number = allowance.allowanceNumber;
    return (number != 0 && row.GetAllowanceType() == number) ||
           row.GetAllowanceTypeName() == CString(allowance.allowanceType);
}

void Fill(CMTD_TaxFreeAllowances& list, const TaxFreeAllowance_t& allowance)
{
    using List = CMTD_TaxFreeAllowances;
    Assign(list, &List::GetAllowanceTypeName, &List::SetAllowanceTypeName, allowance.allowanceType);
    Assign(list, &List::GetAllowanceType, &List::SetAllowanceType, allowance.allowanceNumber);
    Assign(list, &List::GetAmount, &List::SetAmount, allowance.amount);
}

} // namespace

void CPAYEPrepop::MapPaye(ClientId client, TaxYear taxYear, const CPayeResponse& response)
{
    m_answer = std::make_unique<Answer>();
    m_answer->client = client;
    m_answer->taxYear = taxYear;
    m_answer->pensions = MapPensions(response);
    m_answer->benefits = MapBenefits(response);
    m_answer->other = MapOther(response);
    for (int i = 0; i <= response.GetTaxFreeAllowanceUpperBound(); ++i)
        m_answer->allowances.push_back(response.GetTaxFreeAllowanceAt(i));

    std::vector<PayeIdentity> identities;
    for (int i = 0; i <= response.GetEmploymentUpperBound(); ++i) {
        const auto employment = response.GetEmploymentAt(i);
        identities.push_back({employment->employerPayeReference, employment->worksNumber});
    }
    const std::vector<std::string> keys = StagingKeys(identities);
    for (std::size_t i = 0; i < keys.size(); ++i)
        AddEmploymentDataToMap(client, taxYear, keys[i], response.GetEmploymentAt(static_cast<int>(i)));
}

void CPAYEPrepop::AddEmploymentDataToMap(ClientId client, TaxYear taxYear, std::string key,
                                         std::shared_ptr<const Employment_t> employment)
{
    if (!m_answer) {
        m_answer = std::make_unique<Answer>();
        m_answer->client = client;
        m_answer->taxYear = taxYear;
    }
    m_answer->employments.push_back({std::move(key), std::move(employment)});
}

void CPAYEPrepop::UpdateMTDPensionStateBenefits()
{
    UpdateMTDPensionStateBenefits_PrivatePensions();
    UpdateMTDPensionStateBenefits_TaxableSocialSecurityBenefits();
}

void CPAYEPrepop::UpdateMTDPensionStateBenefits_PrivatePensions()
{
    if (!m_answer)
        return;
    KeepReferences(m_answer->pensions, m_answer->client, m_answer->Year());
    UpdatePsb(m_answer->client, m_answer->Year(), m_answer->pensions, m_answer->counts, &IsPrivatePension, 3,
              &FitsPension);
}

void CPAYEPrepop::UpdateMTDPensionStateBenefits_TaxableSocialSecurityBenefits()
{
    if (m_answer)
        UpdatePsb(m_answer->client, m_answer->Year(), m_answer->benefits, m_answer->counts,
                  &IsTaxableSocialSecurityBenefit, 3, &FitsBenefit);
}

void CPAYEPrepop::UpdateMTDPensionsAndOther()
{
    if (m_answer)
        UpdatePsb(
            m_answer->client, m_answer->Year(), m_answer->other, m_answer->counts,
            [](long type) { return type == MTD_None; }, 2, &FitsOther);
}

void CPAYEPrepop::UpdateMTDTaxFreeAllowances()
{
    if (!m_answer)
        return;
    using List = CMTD_TaxFreeAllowances;
    const auto& items = m_answer->allowances;
    Quarry::CTransaction transaction;
    RowsUnder<List> rows(EnsureStagedYear(m_answer->client, m_answer->Year()), List::kMTD_TaxYearID);
    const auto rowOf = PairUp(items.size(), rows.GetCount(), 3, [&](int pass, std::size_t item, int row) {
        const List& list = rows[row];
        return IsSameAllowance(list, *items[item]) &&
               (pass > 1 || (!list.GetWithdrawn() && (pass > 0 || list.GetAmount() == items[item]->amount)));
    });
    BringIntoLine(
        rows, rowOf, [&](List& list, std::size_t item, bool) { Fill(list, *items[item]); }, m_answer->counts);
    transaction.Commit();
}

} // namespace HmrcApi

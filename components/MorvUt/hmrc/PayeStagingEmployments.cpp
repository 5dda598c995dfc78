#include <algorithm>

#include "MorvUt/hmrc/detail/PayeAnswer.h"
#include "Quarry/Session.h"

namespace HmrcApi
{
namespace
{

using Brix::CMTD_Employments;
using Brix::CMTD_EmploymentsCompanyBenefits;

/// A staging row as it stood before the answer came.
struct StoredEmployment
{
    long id;
    std::string key;
    PayeIdentity identity;
};

std::vector<StoredEmployment> ReadStored(RowsUnder<CMTD_Employments>& rows)
{
    std::vector<StoredEmployment> stored;
    for (int row = 0; row < rows.GetCount(); ++row) {
        const CMTD_Employments& list = rows[row];
        stored.push_back(
            {list.GetID(), list.GetKey().Str(), {list.GetPAYEReference().Str(), list.GetWorksNumber().Str()}});
    }
    return stored;
}

/// The same key and works number; then the same employment under a key that was long and is bare now, or the other way
/// round; then the key alone, with a works number that HMRC has changed.
bool Fits(int pass, const StoredEmployment& row, const std::string& key, const PayeIdentity& identity)
{
    const bool isSameWork = row.identity.worksNumber == identity.worksNumber;
    if (pass == 1)
        return row.identity == identity;
    return row.key == key && (pass == 2 || isSameWork);
}

bool HasFigures(const CMTD_Employments& row, const Employment_t& record)
{
    return row.GetStart() == record.startDate && row.GetEnd() == record.endDate &&
           row.GetPay() == record.taxablePayTotal && row.GetTax() == record.taxTotal &&
           row.GetStudentLoan() == record.studentLoan;
}

void Fill(CMTD_Employments& list, const std::string& key, const Employment_t& record)
{
    using List = CMTD_Employments;
    Assign(list, &List::GetKey, &List::SetKey, key);
    Assign(list, &List::GetEmployerName, &List::SetEmployerName, record.employerName);
    Assign(list, &List::GetPAYEReference, &List::SetPAYEReference, record.employerPayeReference);
    Assign(list, &List::GetWorksNumber, &List::SetWorksNumber, record.worksNumber);
    Assign(list, &List::GetStart, &List::SetStart, record.startDate);
    Assign(list, &List::GetEnd, &List::SetEnd, record.endDate);
    Assign(list, &List::GetPay, &List::SetPay, record.taxablePayTotal);
    Assign(list, &List::GetTax, &List::SetTax, record.taxTotal);
    Assign(list, &List::GetStudentLoan, &List::SetStudentLoan, record.studentLoan);
}

template<class Items>
void KeepKeys(Items& items, RowsUnder<CMTD_Employments>& rows)
{
    std::vector<std::string> keys;
    std::vector<PayeIdentity> identities;
    for (const auto& item : items) {
        keys.push_back(item.key);
        identities.push_back({item.record->employerPayeReference, item.record->worksNumber});
    }
    KeepKeys(keys, identities, [&](std::size_t item, const std::string& key) {
        for (int row = 0; row < rows.GetCount(); ++row)
            if (rows[row].GetKey().Str() == key && HasFigures(rows[row], *items[item].record))
                return true;
        return false;
    });
    for (std::size_t item = 0; item < keys.size(); ++item)
        items[item].key = keys[item];
}

/// Gives a row that HMRC no longer sends another key when its own belongs to a row that it does send.
void MoveOutOfTheWay(RowsUnder<CMTD_Employments>& rows, const std::vector<StoredEmployment>& stored,
                     const std::vector<int>& rowOf, const std::set<std::string>& sent)
{
    std::set<std::string> taken = sent;
    for (const StoredEmployment& row : stored)
        taken.insert(row.key);
    for (int row = 0; row < rows.GetCount(); ++row) {
        const StoredEmployment& own = stored[static_cast<std::size_t>(row)];
        const bool isSent = std::find(rowOf.begin(), rowOf.end(), row) != rowOf.end();
        if (isSent || sent.count(own.key) == 0)
            continue;
        const std::string key = SpareKey(own.identity, taken);
        taken.insert(key);
        rows[row].SetKey(key);
        rows[row].Update();
    }
}

bool IsSameBenefit(const CMTD_EmploymentsCompanyBenefits& row, const CompanyBenefit_t& benefit)
{
    const int number = benefit.benefitNumber;
    return (number != 0 && row.GetBenefitType() == number) || row.GetBenefitTypeName() == CString(benefit.benefitType);
}

bool HasFigures(const CMTD_EmploymentsCompanyBenefits& row, const CompanyBenefit_t& benefit)
{
    return row.GetAmount() == benefit.amount && row.GetForecast() == benefit.isForecastBenefit;
}

void Fill(CMTD_EmploymentsCompanyBenefits& list, const CompanyBenefit_t& benefit)
{
    using List = CMTD_EmploymentsCompanyBenefits;
    Assign(list, &List::GetBenefitType, &List::SetBenefitType, benefit.benefitNumber);
    Assign(list, &List::GetBenefitTypeName, &List::SetBenefitTypeName, benefit.benefitType);
    Assign(list, &List::GetAmount, &List::SetAmount, benefit.amount);
    Assign(list, &List::GetForecast, &List::SetForecast, benefit.isForecastBenefit);
}

void UpdateBenefits(long employmentId, const std::vector<CompanyBenefit_t>& benefits, StagedCounts& counts)
{
    using List = CMTD_EmploymentsCompanyBenefits;
    List stored;
    stored.Open({{List::kMTD_EmploymentsID, employmentId}});
    if (!CPAYEPrepop::CompanyBenefitsDiffers(stored, benefits))
        return;
    RowsUnder<List> rows({employmentId}, List::kMTD_EmploymentsID);
    const auto rowOf = PairUp(benefits.size(), rows.GetCount(), 3, [&](int pass, std::size_t item, int row) {
        const List& list = rows[row];
        return IsSameBenefit(list, benefits[item]) &&
               (pass > 1 || (!list.GetWithdrawn() && (pass > 0 || HasFigures(list, benefits[item]))));
    });
    BringIntoLine(
        rows, rowOf, [&](List& list, std::size_t item, bool) { Fill(list, benefits[item]); }, counts);
}

/// Stands on the next row, from the one given on, that HMRC still sends.
bool MoveToLive(CMTD_EmploymentsCompanyBenefits& list, bool isThere)
{
    while (isThere && list.GetWithdrawn())
        isThere = list.MoveNext();
    return isThere;
}

} // namespace

bool CPAYEPrepop::CompanyBenefitsDiffers(CMTD_EmploymentsCompanyBenefits& stored,
                                         std::vector<CompanyBenefit_t> fromHmrc)
{
    std::size_t count = 0;
    for (bool isThere = MoveToLive(stored, stored.MoveFirst()); isThere;
         isThere = MoveToLive(stored, stored.MoveNext()))
        ++count;
    if (count != fromHmrc.size())
        return true;
    for (const CompanyBenefit_t& benefit : fromHmrc) {
        bool isFound = MoveToLive(stored, stored.MoveFirst());
        while (isFound && !IsSameBenefit(stored, benefit))
            isFound = MoveToLive(stored, stored.MoveNext());
        if (!isFound || !HasFigures(stored, benefit))
            return true;
    }
    return false;
}

void CPAYEPrepop::UpdateMTDEmployments()
{
    if (!m_answer)
        return;
    auto& items = m_answer->employments;
    Quarry::CTransaction transaction;
    RowsUnder<CMTD_Employments> rows(EnsureStagedYear(m_answer->client, m_answer->Year()),
                                     CMTD_Employments::kMTD_TaxYearID);
    const std::vector<StoredEmployment> stored = ReadStored(rows);
    KeepKeys(items, rows);
    const auto rowOf = PairUp(items.size(), rows.GetCount(), 3, [&](int pass, std::size_t item, int row) {
        const Employment_t& record = *items[item].record;
        return Fits(pass, stored[static_cast<std::size_t>(row)], items[item].key,
                    {record.employerPayeReference, record.worksNumber});
    });
    std::set<std::string> sent;
    for (const auto& item : items)
        sent.insert(item.key);
    MoveOutOfTheWay(rows, stored, rowOf, sent);
    const auto fill = [&](CMTD_Employments& list, std::size_t item, bool) {
        Fill(list, items[item].key, *items[item].record);
    };
    const std::vector<long> ids = BringIntoLine(rows, rowOf, fill, m_answer->counts);

    for (std::size_t item = 0; item < ids.size(); ++item)
        UpdateBenefits(ids[item], items[item].record->companyBenefits, m_answer->counts);
    for (const StoredEmployment& row : stored)
        if (std::find(ids.begin(), ids.end(), row.id) == ids.end())
            UpdateBenefits(row.id, {}, m_answer->counts); // withdrawn with their employment
    transaction.Commit();
}

} // namespace HmrcApi

// Employments, and pensions and benefits of the state.

#include "layouts/Sheets.h"
#include "MorvUt/context/Ordering.h"
#include "sheets/RecordPage.h"
#include "sheets/ScheduleSheet.h"
#include "sheets/Sheets.h"

namespace Desk
{
namespace
{

using Employ = Brix::CNewEmploy;
using Pension = Brix::CPensionStateBenefits;

constexpr RecordField kEmploymentFields[] = {
    {IDC_EMPLOYMENT_EMPLOYER, Employ::kEmployerName, FieldKind::Text, true},
    {IDC_EMPLOYMENT_REFERENCE, Employ::kPAYEReference, FieldKind::Text},
    {IDC_EMPLOYMENT_WORKS_NUMBER, Employ::kWorksNumber, FieldKind::Text},
    {IDC_EMPLOYMENT_START, Employ::kStart, FieldKind::Date},
    {IDC_EMPLOYMENT_END, Employ::kEnd, FieldKind::Date},
    {IDC_EMPLOYMENT_PAY, Employ::kPay, FieldKind::Amount},
    {IDC_EMPLOYMENT_TAX, Employ::kTax, FieldKind::Amount},
    {IDC_EMPLOYMENT_LOAN, Employ::kStudentLoan, FieldKind::Amount},
};
constexpr RecordField kPensionFields[] = {
    {IDC_PENSION_PAYER, Pension::kPayer, FieldKind::Text},
    {IDC_PENSION_DESCRIPTION, Pension::kDescription, FieldKind::Text, true},
    {IDC_PENSION_REFERENCE, Pension::kReference, FieldKind::Text},
    {IDC_PENSION_WORKS_NUMBER, Pension::kWorksNumber, FieldKind::Text},
    {IDC_PENSION_START, Pension::kStart, FieldKind::Date},
    {IDC_PENSION_AMOUNT, Pension::kAmount, FieldKind::Amount},
    {IDC_PENSION_TAX, Pension::kTax, FieldKind::Amount},
};

/// A new row is put into the return behind the others of its table.
template<class Record>
class CReturnRecordPage : public CRecordPage
{
public:
    CReturnRecordPage(const Afx::DialogLayout& layout, Record& record, std::span<const RecordField> fields,
                      const ScheduleOwner& owner, int (*nextOrdering)(const Brix::CTaxForm&))
        : CRecordPage(layout, record, fields), m_row(record), m_owner(owner), m_nextOrdering(nextOrdering)
    {}

protected:
    void BeforeSave() override { PutIntoReturn(m_row, m_owner, m_nextOrdering); }

private:
    Record& m_row;
    const ScheduleOwner& m_owner;
    int (*m_nextOrdering)(const Brix::CTaxForm&);
};

} // namespace

bool OpenEmployment(const ScheduleOwner& owner, long id)
{
    Employ record;
    if (!StandOn(record, owner, id))
        return false;
    CReturnRecordPage page(kEmploymentLayout, record, kEmploymentFields, owner, &GetNewEmployOrderingNumber);
    CScheduleSheet sheet(owner, ScheduleKind::Employment, record, ColumnsWithNotes<Employ>());
    return RunSheet(sheet, {&page});
}

bool OpenPension(const ScheduleOwner& owner, long id)
{
    constexpr int kPensions = 200, kOccupationalPension = 1050; // of mapPSBCategorys, mapPSBTypes
    Pension record;
    if (!StandOn(record, owner, id))
        return false;
    if (record.IsNew()) {
        record.SetSection(kPensions);
        record.SetType(kOccupationalPension);
    }
    CReturnRecordPage page(kPensionLayout, record, kPensionFields, owner, &GetPensionStateBenefitsOrderingNumber);
    CScheduleSheet sheet(owner, ScheduleKind::Pension, record);
    return RunSheet(sheet, {&page});
}

} // namespace Desk

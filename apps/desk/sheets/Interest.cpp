// Interest, alone or shared with a spouse, and its payments.

#include "layouts/Sheets.h"
#include "MorvUt/context/Ordering.h"
#include "sheets/Payments.h"
#include "sheets/RecordPage.h"
#include "sheets/ScheduleSheet.h"
#include "sheets/Sheets.h"

namespace Desk
{
namespace
{

using Interest = Brix::CNewInterest;

constexpr int kPlainInterest = 1000; // its income is entered, not the sum of the grid
constexpr RecordField kInterestFields[] = {
    {IDC_INTEREST_NAME, Interest::kName, FieldKind::Text, true},
    {IDC_INTEREST_INCOME, Interest::kIncome, FieldKind::Amount},
    {IDC_INTEREST_BFWD, Interest::kBFWD, FieldKind::Amount},
    {IDC_INTEREST_ADDITION, Interest::kAddition, FieldKind::Amount},
    {IDC_INTEREST_DEDUCTION, Interest::kDeduction, FieldKind::Amount},
};

class CInterestPage : public CRecordPage
{
public:
    CInterestPage(Interest& interest, const ScheduleOwner& owner)
        : CRecordPage(kInterestLayout, interest, kInterestFields), m_interest(interest), m_owner(owner)
    {}

protected:
    void BeforeSave() override
    {
        PutIntoReturn(m_interest, m_owner, &GetNewInterestOrderingNumber);
        TXPropertySheet& sheet = *GetTXSheet();
        m_interest.SetJoint(sheet.IsJointSpouseIncome());
        if (sheet.IsJointSpouseIncome()) {
            m_interest.SetClientShare(sheet.GetJointSpouseShare());
            m_interest.SetJointView(sheet.GetJointSpouseView());
        }
    }

private:
    Interest& m_interest;
    const ScheduleOwner& m_owner;
};

class CInterestSheet : public CScheduleSheet
{
public:
    CInterestSheet(const ScheduleOwner& owner, Interest& interest)
        : CScheduleSheet(owner, ScheduleKind::Interest, interest, ColumnsWithNotes<Interest>()), m_interest(interest)
    {}
    int ShowJointSpouseIncome() override { return 1; }
    void GetJointSpouseIncome(int& isJoint, double& share, int& view) override
    {
        const JointIncome nothing;
        isJoint = m_interest.GetJoint();
        share = m_interest.IsNull(Interest::kClientShare) ? nothing.clientShare : m_interest.GetClientShare();
        view = m_interest.GetJointView();
    }
    void OnJointSpouseIncome() override { Modified(); }
    void OnJointSpouseShareKillFocus() override { Modified(); }
    void OnJointSpouseView() override { Modified(); }

private:
    Interest& m_interest;
};

} // namespace

bool OpenInterest(const ScheduleOwner& owner, long id)
{
    Interest record;
    if (!StandOn(record, owner, id))
        return false;
    if (record.IsNew())
        record.SetType(kPlainInterest);
    CInterestPage page(record, owner);
    CPaymentsPage payments(record);
    CInterestSheet sheet(owner, record);
    return RunSheet(sheet, {&page, &payments});
}

} // namespace Desk

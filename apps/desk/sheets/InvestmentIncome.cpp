// A partnership's untaxed investment income, split among its members.

#include "Afx/windows/DataExchange.h"
#include "layouts/Sheets.h"
#include "MorvUt/ui/grids/EntitiesOf.h"
#include "MorvUt/ui/grids/EntitySplitGrid.h"
#include "Remembered.h"
#include "sheets/RecordPage.h"
#include "sheets/ScheduleSheet.h"
#include "sheets/Sheets.h"

namespace Desk
{
namespace
{

using Income = Brix::CBTaxNoTaxInvestmentIncome;
using Split = Brix::CBTaxNoTaxInvestmentIncomeSplit;

constexpr char kInvestmentGrid[] = "InvestmentIncome";
constexpr RecordField kInvestmentFields[] = {{IDC_INVESTMENT_AMOUNT, Income::kAmount, FieldKind::Amount}};
/// The grid works on the share that counts, which stands in the override while it is shown.
constexpr CEntitySplitGrid::ShareColumns kShares{Split::kClientID, -1, Split::kShareOverride, -1};

class CInvestmentPage : public CRecordPage
{
public:
    CInvestmentPage(Income& income, const ScheduleOwner& owner)
        : CRecordPage(kInvestmentLayout, income, kInvestmentFields), m_income(income), m_owner(owner)
    {}

protected:
    bool OnInitDialog() override
    {
        m_splits.Open({{Split::kBTaxNoTaxInvestmentIncomeID, m_income.GetID()}});
        for (bool isRow = m_splits.MoveFirst(); isRow; isRow = m_splits.MoveNext())
            if (!m_splits.GetOverride())
                m_splits.SetShareOverride(m_splits.GetShare());
        const bool setsFocus = CRecordPage::OnInitDialog();
        RestoreWidths(m_grid, kInvestmentGrid);
        return setsFocus;
    }
    void DoDataExchange(CDataExchange* exchange) override
    {
        CRecordPage::DoDataExchange(exchange);
        DDX_Control(exchange, IDC_INVESTMENT_GRID, m_grid);
        if (exchange->m_bSaveAndValidate)
            m_splits.CheckStored({{Split::kBTaxNoTaxInvestmentIncomeID, m_income.GetID()}});
        m_grid.DDXFunc(exchange, m_income.GetAmount(), EntitiesOf(PartnershipId(m_owner.client.id)),
                       m_grid.IsPCentSplit(), 0, m_splits);
        if (exchange->m_bSaveAndValidate)
            NormaliseOverrides();
    }
    void OnEdited() override
    {
        const Kiln::CAmt amount = AmountIn(IDC_INVESTMENT_AMOUNT);
        if (!(amount == m_grid.GetNetAmount()) && (amount.IsValid() || amount.IsNull()))
            m_grid.UpdateNetAmount(amount);
        ShowHint();
    }
    void OnDestroy() override
    {
        KeepWidths(m_grid, kInvestmentGrid);
        CRecordPage::OnDestroy();
    }
    DECLARE_MESSAGE_MAP()
    afx_msg void OnPercent()
    {
        m_grid.OnUsePCentSplit(static_cast<CButton*>(GetDlgItem(IDC_INVESTMENT_PERCENT))->GetCheck());
        ShowHint();
    }

private:
    /// A share that is what was worked out needs no override.
    void NormaliseOverrides()
    {
        for (bool isRow = m_splits.MoveFirst(); isRow; isRow = m_splits.MoveNext()) {
            const Kiln::CAmt counts = m_splits.GetShareOverride();
            if (m_splits.IsNull(Split::kShare))
                m_splits.SetShare(counts);
            const bool isOverride = !(counts == m_splits.GetShare());
            m_splits.SetOverride(isOverride);
            m_splits.Update();
        }
    }
    void ShowHint() { GetDlgItem(IDC_INVESTMENT_HINT)->SetWindowText(m_grid.GetRemainderHint()); }

    Income& m_income;
    const ScheduleOwner& m_owner;
    Split m_splits;
    AppliedGrid<CEntitySplitGrid> m_grid{kShares};
};

BEGIN_MESSAGE_MAP(CInvestmentPage, CRecordPage)
ON_BN_CLICKED(IDC_INVESTMENT_PERCENT, OnPercent)
END_MESSAGE_MAP()

} // namespace

bool OpenInvestmentIncome(const ScheduleOwner& owner, long id)
{
    Income record;
    if (!record.Open({{0, id}}))
        return TellGone();
    CInvestmentPage page(record, owner);
    CScheduleSheet sheet(owner, ScheduleKind::InvestmentIncome, record);
    return RunSheet(sheet, {&page});
}

} // namespace Desk

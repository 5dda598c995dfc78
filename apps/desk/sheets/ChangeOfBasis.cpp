// A change of accounting basis: four amounts for each trade or business.

#include <array>

#include "Afx/windows/DataExchange.h"
#include "layouts/Sheets.h"
#include "MorvUt/ui/grids/ChangeOfBasisGrid.h"
#include "MorvUt/ui/sheets/TXPropertyPage.h"
#include "Remembered.h"
#include "sheets/ScheduleSheet.h"
#include "sheets/Sheets.h"
#include "Texts.h"

namespace Desk
{
namespace
{

using Basis = Brix::CChangeOfBasis;
using Kiln::CAmt;

constexpr int kBasisColumns = 3; // of amounts
constexpr char kBasisGrid[] = "ChangeOfBasis";

class CBasisPage : public TXPropertyPage
{
public:
    CBasisPage(Basis& rows, const ScheduleOwner& owner) : TXPropertyPage(kBasisLayout), m_rows(rows), m_owner(owner)
    {
        const Afx::ResourceContextGuard texts(DeskTexts());
        m_grid.Init(m_before, m_result, IDS_DESK_BASIS_1, IDS_DESK_BASIS_2, IDS_DESK_BASIS_3);
    }
    bool OnKillActive() override
    {
        const Afx::ResourceContextGuard texts(DeskTexts());
        return TXPropertyPage::OnKillActive() && m_grid.Validate(1, IDS_DESK_BASIS_CHANGED, 1);
    }
    void OnOK() override
    {
        m_rows.CheckStored({{Basis::kClientID, m_owner.client.id}, {Basis::kYear, Cellar::Value(m_owner.year)}});
        for (int column = 1; column <= kBasisColumns; ++column)
            Save(column);
        TXPropertyPage::OnOK();
    }

protected:
    bool OnInitDialog() override
    {
        const bool setsFocus = TXPropertyPage::OnInitDialog();
        for (bool isRow = m_rows.MoveFirst(); isRow; isRow = m_rows.MoveNext())
            if (m_rows.GetColumn() >= 1 && m_rows.GetColumn() <= kBasisColumns)
                m_grid.Set(m_rows.GetRow0(), m_rows.GetRow1(), m_rows.GetRow2(), m_rows.GetRow3(), m_rows.GetColumn());
        RestoreWidths(m_grid, kBasisGrid);
        return setsFocus;
    }
    void DoDataExchange(CDataExchange* exchange) override
    {
        DDX_Control(exchange, IDC_BASIS_GRID, m_grid);
        DDX_Control(exchange, IDC_BASIS_BEFORE, m_before);
        DDX_Control(exchange, IDC_BASIS_RESULT, m_result);
        m_grid.DDX(exchange);
    }
    void OnDestroy() override
    {
        KeepWidths(m_grid, kBasisGrid);
        TXPropertyPage::OnDestroy();
    }

private:
    bool MoveTo(int column)
    {
        for (bool isRow = m_rows.MoveFirst(); isRow; isRow = m_rows.MoveNext())
            if (m_rows.GetColumn() == column)
                return true;
        return false;
    }
    /// A column without any amount has no row.
    void Save(int column)
    {
        std::array<CAmt, 4> amounts;
        m_grid.Get(amounts[0], amounts[1], amounts[2], amounts[3], column);
        m_grid.Set(amounts[0], amounts[1], amounts[2], amounts[3], column); // with which it compares from now on
        bool isBlank = true;
        for (const CAmt& amount : amounts)
            isBlank = isBlank && amount.IsNull();
        const bool isThere = MoveTo(column);
        if (isBlank) {
            if (isThere)
                m_rows.Delete();
            return;
        }
        if (!isThere) {
            Brix::CTaxForm form;
            MoveToTaxForm(form, m_owner);
            m_rows.AddNew();
            m_rows.SetTaxFormID(form.GetID());
            m_rows.SetClientID(m_owner.client.id);
            m_rows.SetYear(m_owner.year);
            m_rows.SetColumn(column);
        }
        m_rows.SetRow0(amounts[0]);
        m_rows.SetRow1(amounts[1]);
        m_rows.SetRow2(amounts[2]);
        m_rows.SetRow3(amounts[3]);
        m_rows.Update();
    }

    Basis& m_rows;
    const ScheduleOwner& m_owner;
    AppliedGrid<CChangeOfBasisGrid> m_grid;
    Kiln::CAmtEdit m_before, m_result;
};

} // namespace

bool OpenChangeOfBasis(const ScheduleOwner& owner, long)
{
    Basis rows;
    rows.Open({{Basis::kClientID, owner.client.id}, {Basis::kYear, Cellar::Value(owner.year)}}, {{Basis::kColumn}});
    CBasisPage page(rows, owner);
    CScheduleSheet sheet(owner, ScheduleKind::ChangeOfBasis, rows);
    return RunSheet(sheet, {&page});
}

} // namespace Desk

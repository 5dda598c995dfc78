#include "MorvUt/ui/sheets/TXPropertyPage.h"

#include "MorvUt/ui/sheets/TXPropertySheet.h"

using Kiln::CExPropertyPage;

IMPLEMENT_DYNAMIC(TXPropertyPage, CExPropertyPage)

TXPropertySheet* TXPropertyPage::GetTXSheet() const noexcept { return dynamic_cast<TXPropertySheet*>(GetSheet()); }

int TXPropertyPage::JointSpouseIncomeDDX() const
{
    const TXPropertySheet* const sheet = GetTXSheet();
    return sheet ? sheet->JointSpouseIncomeDDX() : 0;
}

void TXPropertyPage::JointSpouseIncomeDDX(int isJoint)
{
    if (TXPropertySheet* const sheet = GetTXSheet())
        sheet->JointSpouseIncomeDDX(isJoint);
}

void TXPropertyPage::RefreshJointSpouseIncome()
{
    if (TXPropertySheet* const sheet = GetTXSheet())
        sheet->UpdateJointSpouseIncome();
}

void TXPropertyPage::ShowEdit(unsigned id, bool show)
{
    CWnd* const edit = GetDlgItem(static_cast<int>(id));
    if (!edit)
        return;
    edit->ShowWindow(show);
    if (CWnd* const label = edit->GetLabel())
        label->ShowWindow(show);
}

bool TXPropertyPage::OnKillActive()
{
    TXPropertySheet* const sheet = GetTXSheet();
    return CExPropertyPage::OnKillActive() && (!sheet || sheet->ValidateJointSpouseIncome());
}

CString TXPropertyPage::HelpFilePath() const
{
    const TXPropertySheet* const sheet = GetTXSheet();
    return sheet ? sheet->HelpFilePath() : CString();
}

bool TXPropertyPage::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    if (CExPropertyPage::OnNotify(wParam, lParam, result))
        return true;
    TXPropertySheet* const sheet = GetTXSheet();
    return sheet && sheet->OnNotify(wParam, lParam, result);
}

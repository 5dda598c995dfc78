#include "MorvUt/ui/sheets/TXPropertyPage.h"

#include <algorithm>

#include "Afx/windows/Static.h"
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
    const auto here = std::find(Children().begin(), Children().end(), edit);
    if (here != Children().begin() && (*(here - 1))->IsKindOf(RUNTIME_CLASS(CStatic)))
        (*(here - 1))->ShowWindow(show);
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
    Afx::MapMessage message;
    message.kind = Afx::MapMessage::Kind::Notify;
    message.id = static_cast<unsigned>(wParam);
    message.header = reinterpret_cast<NMHDR*>(lParam);
    message.code = message.header->code;
    message.result = result;
    TXPropertySheet* const sheet = GetTXSheet();
    return sheet && sheet->DeliverMapped(message);
}

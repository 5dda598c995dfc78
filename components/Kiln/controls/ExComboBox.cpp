#include "Kiln/controls/ExComboBox.h"

namespace Kiln
{

IMPLEMENT_DYNCREATE(CExComboBox, CComboBox)

bool CExComboBox::PreTranslateMessage(MSG* message)
{
    const bool closes =
        message->message == WM_KEYDOWN && (message->wParam == VK_RETURN || message->wParam == VK_ESCAPE);
    if (closes && GetDroppedState())
        return DeliverKey(static_cast<unsigned>(message->wParam), 0);
    return CComboBox::PreTranslateMessage(message);
}

IMPLEMENT_DYNCREATE(CCoolComboBox, CExComboBox)

void CCoolComboBox::OnKillFocus(CWnd* newFocus)
{
    if (GetCurSel() == kNone && !Text().IsEmpty())
        if (const int found = FindString(kNone, Text()); found != kNone) {
            SetCurSel(found);
            NotifyParent(CBN_SELCHANGE);
        }
    CExComboBox::OnKillFocus(newFocus);
}

} // namespace Kiln

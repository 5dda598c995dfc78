#include "MorvUt/ui/edits/HyperClick.h"

using Kiln::CHyperlinkButton;

IMPLEMENT_DYNAMIC(CHyperClick, CHyperlinkButton)

bool CHyperClick::OnClicked()
{
    if (CWnd* const parent = GetParent())
        parent->DeliverCommand(m_command);
    return true;
}

void CHyperClick::OnDraw(CDC* dc, const CRect& rect, unsigned state) { CHyperlinkButton::OnDraw(dc, rect, state); }

bool CHyperClick::PreTranslateMessage(MSG* message)
{
    if (message->message == WM_KEYDOWN && message->wParam == VK_RETURN && GetFocus() == this && TakesInput())
        return OnClicked(); // otherwise the dialog's default button would take it
    return CHyperlinkButton::PreTranslateMessage(message);
}

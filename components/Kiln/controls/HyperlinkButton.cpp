#include "Kiln/controls/HyperlinkButton.h"

namespace Kiln
{

IMPLEMENT_DYNCREATE(CHyperlinkButton, CButton)

void CHyperlinkButton::OnDraw(CDC* dc, const CRect& rect, unsigned state)
{
    CFont link;
    link.underlined = true;
    const CFont* const font = dc->SelectObject(&link);
    const Color colour = dc->SetTextColor(state & kDrawnDisabled ? kSystemText : kSystemLink);
    const CString text = Afx::WithoutMnemonic(Text());
    const CSize size = dc->GetTextExtent(text);
    dc->TextOut(rect.left, rect.top + (rect.Height() - size.cy) / 2, text);
    dc->SetTextColor(colour);
    dc->SelectObject(font);
    if (state & kDrawnFocused)
        dc->DrawFocusRect(rect);
}

} // namespace Kiln

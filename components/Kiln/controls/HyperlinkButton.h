#pragma once

// A button that looks like a link.

#include "Afx/windows/Button.h"
#include "Kiln/Export.h"

namespace Kiln
{

/// A button without a frame whose text is underlined in the colour of links.
class KILN_API CHyperlinkButton : public CButton
{
    DECLARE_DYNCREATE(CHyperlinkButton)
    CHyperlinkButton() { SetKind(Kind::OwnerDrawn); }

    void OnDraw(CDC* dc, const CRect& rect, unsigned state) override;
};

} // namespace Kiln

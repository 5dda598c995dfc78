#pragma once

// The button that looks like a link, and what a text measures on the screen.

#include "Kiln/controls/HyperlinkButton.h"
#include "MorvUt/Export.h"

/// A link on a sheet. It gives its parent the command `id`, whatever its own id is; Enter follows it, too.
class MORVUT_API CHyperClick : public Kiln::CHyperlinkButton
{
    DECLARE_DYNAMIC(CHyperClick)

    explicit CHyperClick(unsigned id) noexcept : m_command(id) {}

    bool OnClicked() override;
    void OnDraw(CDC* dc, const CRect& rect, unsigned state) override;
    bool PreTranslateMessage(MSG* message) override;

private:
    unsigned m_command;
};

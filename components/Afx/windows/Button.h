#pragma once

// Buttons: to push, to tick, to choose one of.

#include "Afx/windows/Drawing.h"
#include "Afx/windows/Wnd.h"

/// A button. Clicked by mouse, blank or mnemonic it changes its state, where it has one, and gives its parent the
/// command of its id (BN_CLICKED).
class AFX_API CButton : public CWnd
{
    DECLARE_DYNCREATE(CButton)

    enum class Kind
    {
        Push,
        Default,  // the one that Enter presses
        CheckBox, // each click turns it over
        Radio,    // a click chooses it among the radio buttons beside it
        OwnerDrawn
    };

    Kind GetKind() const noexcept { return m_kind; }
    void SetKind(Kind kind) noexcept { m_kind = kind; }
    /// 0 or 1.
    int GetCheck() const noexcept { return m_checked; }
    void SetCheck(int check);

    bool NamesItself() const noexcept override { return true; }

    /// Draws an owner-drawn button into `rect` (pixels); `state` is a sum of kDrawn... flags.
    static constexpr unsigned kDrawnPressed = 1, kDrawnDisabled = 4, kDrawnFocused = 16;
    virtual void OnDraw(CDC* dc, const CRect& rect, unsigned state);
    /// It has been clicked. True: the parent need not be told.
    virtual bool OnClicked();

protected:
    friend struct Afx::UserActs;
    void TakeStyle(const CWnd& control) override;
    void OnChar(unsigned character, unsigned repeat, unsigned flags) override;

private:
    void Click();
    void ChooseAmongSiblings();

    Kind m_kind = Kind::Push;
    int m_checked = 0;
};

#pragma once

// The text field.

#include "Afx/windows/Wnd.h"

/// A field of one line of text. Positions count bytes, as those of CString do; one inside a character means its start.
class AFX_API CEdit : public CWnd
{
    DECLARE_DYNCREATE(CEdit)

    /// Selects from `start` up to `end`; an `end` of -1 is the end of the text, and a `start` of -1 selects nothing.
    /// The caret stands at the end of the selection. A new text is not selected; the caret stands before it.
    void SetSel(int start, int end) noexcept;
    void GetSel(int& start, int& end) const noexcept;
    /// From now on the user can type no more than `count` characters; 0: as many as they like. A longer text that is in
    /// the field, or set, stays.
    void LimitText(int count = 0) noexcept { m_limit = count; }

protected:
    /// Puts the character in place of the selection, if the limit allows it. Backspace takes away the selection or the
    /// character before the caret; other control characters do nothing.
    void OnChar(unsigned character, unsigned repeat, unsigned flags) override;
    void OnSetText(const char* text) override;

private:
    void Erase();
    void Insert(unsigned character);
    void ReplaceSelection(const std::string& with);

    int m_selStart = 0;
    int m_selEnd = 0; // not before the start
    int m_limit = 0;
};

#pragma once

// The text field.

#include "Afx/windows/Wnd.h"

/// A field of text. Positions count bytes, as those of CString do; one inside a character means its start. The parent
/// is told when the user has changed the text (EN_CHANGE), and when the field gets and loses the focus. A field of one
/// line holds kLongestLine characters at most, whoever sets them: native fields cut longer texts without a word.
class AFX_API CEdit : public CWnd
{
    DECLARE_DYNCREATE(CEdit)

    static constexpr int kLongestLine = 32767;

    /// Selects from `start` up to `end`; an `end` of -1 is the end of the text, and a `start` of -1 selects nothing.
    /// The caret stands at the end of the selection. A new text is not selected; the caret stands before it.
    void SetSel(int start, int end);
    void GetSel(int& start, int& end) const noexcept;
    CString GetSelectedText() const;
    /// From now on the user can type no more than `count` characters, and paste none beyond them; 0: as many as they
    /// like. A longer text that is in the field, or set, stays.
    void LimitText(int count = 0) noexcept { m_limit = count; }
    /// The user can select and copy, not change.
    void SetReadOnly(bool readOnly = true);
    bool IsReadOnly() const noexcept { return m_readOnly; }
    /// Several lines, ended by line feeds.
    void SetMultiLine(bool multiLine) noexcept { m_multiLine = multiLine; }
    bool IsMultiLine() const noexcept { return m_multiLine; }
    /// What is typed is shown as dots, and cannot be copied.
    void SetPassword(bool password) noexcept { m_password = password; }
    bool IsPassword() const noexcept { return m_password; }

protected:
    friend struct Afx::UserActs;

    /// Puts the character in place of the selection, if the limit allows it. Backspace takes away the selection or the
    /// character before the caret; other control characters do nothing, but for the line feed of a field of several
    /// lines.
    void OnChar(unsigned character, unsigned repeat, unsigned flags) override;
    /// Arrows, Home, End, Delete; Ctrl+A, C, X, V.
    bool OnKey(unsigned key, unsigned modifiers) override;
    void OnSetText(const char* text) override;
    void OnSetFocus(CWnd* oldFocus) override;
    void OnKillFocus(CWnd* newFocus) override;
    void TakeStyle(const CWnd& control) override;

private:
    /// What fits of a text, from its start; all of it in a field of several lines.
    std::string_view Fitting(std::string_view text) const noexcept;
    void TakeSelection(int start, int end) noexcept;
    void Erase();
    void Insert(unsigned character);
    void ReplaceSelection(std::string_view with);
    void MoveCaret(int to, bool extend);
    bool OnControlKey(unsigned key);
    void Paste(std::string_view text);

    int m_selStart = 0;
    int m_selEnd = 0; // not before the start
    int m_limit = 0;
    int m_characters = 0; // of the text
    bool m_readOnly = false;
    bool m_multiLine = false;
    bool m_password = false;
};

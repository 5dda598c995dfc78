#include "MorvUt/ui/edits/NotesEdit.h"

IMPLEMENT_DYNAMIC(CNotesEdit, CEdit)

unsigned CNotesEdit::OnGetDlgCode() { return m_takesEnter ? DLGC_WANTALLKEYS : CEdit::OnGetDlgCode(); }

void CNotesEdit::OnSetText(const char* text)
{
    CString lines = text;
    lines.Replace("\r\n", "\n");
    CEdit::OnSetText(lines);
}

void CNotesEdit::PreSubclassWindow()
{
    CEdit::PreSubclassWindow();
    SetMultiLine(true);
    CNotesEdit::OnSetText(CString(Text())); // what the layout gave it
}

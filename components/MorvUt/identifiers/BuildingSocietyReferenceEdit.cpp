#include "MorvUt/identifiers/BuildingSocietyReferenceEdit.h"

#include "Afx/text/Ascii.h"

namespace
{

/// `character` is a Unicode number: cut to a char, one far outside ASCII could pass for a digit.
bool IsOfReference(unsigned character) noexcept
{
    constexpr unsigned kFirstPrintable = 32, kPastAscii = 128;
    if (character >= kPastAscii)
        return false;
    const auto c = static_cast<char>(character);
    return character < kFirstPrintable || Afx::IsDigit(c) || Afx::IsLetter(c) || c == '/' || c == '-';
}

} // namespace

IMPLEMENT_DYNCREATE(CBuildingSocietyReferenceEdit, CEdit)

BEGIN_MESSAGE_MAP(CBuildingSocietyReferenceEdit, CEdit)
ON_WM_CHAR()
END_MESSAGE_MAP()

void CBuildingSocietyReferenceEdit::OnChar(unsigned character, unsigned repeat, unsigned flags)
{
    if (IsOfReference(character))
        CEdit::OnChar(character, repeat, flags);
}

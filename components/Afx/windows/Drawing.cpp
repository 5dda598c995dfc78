#include "Afx/windows/Drawing.h"

#include <utility>

#include "Afx/text/Utf8.h"

namespace
{

constexpr int kCharacterWidth = 8, kCharacterHeight = 16, kPercent = 100;
constexpr CFont kDialogFont;

} // namespace

CDC::~CDC() = default;

const CFont* CDC::SelectObject(const CFont* font) noexcept { return std::exchange(m_font, font); }
Color CDC::SetTextColor(Color color) noexcept { return std::exchange(m_color, color); }
const CFont& CDC::Font() const noexcept { return m_font ? *m_font : kDialogFont; }

CSize CDC::GetTextExtent(const CString& text) const
{
    const int percent = Font().percent;
    return {Afx::CountCharacters(text.View()) * kCharacterWidth * percent / kPercent,
            kCharacterHeight * percent / kPercent};
}

void CDC::TextOut(int x, int y, const CString& text) { m_written.push_back({x, y, text, m_color, Font().underlined}); }
void CDC::DrawFocusRect(const CRect&) {}

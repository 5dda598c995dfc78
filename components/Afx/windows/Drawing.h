#pragma once

// Drawing and measuring: fonts, and what is drawn on.

#include <string>
#include <vector>

#include "Afx/Export.h"
#include "Afx/Platform.h"
#include "Afx/text/CString.h"
#include "Afx/windows/Geometry.h"

/// 0x00BBGGRR. kSystemText and kSystemLink stand for what the user's desktop uses for them.
using Color = unsigned;
inline constexpr Color kSystemText = 0xFF000000, kSystemLink = 0xFF000001;

/// How a text is drawn: the dialog's font, underlined or bold or larger.
struct CFont
{
    int percent = 100; // of the dialog's font size
    bool bold = false;
    bool underlined = false;
};

/// What is drawn on, in pixels. This one belongs to no display: every character is 8 wide and 16 high, and what is
/// written can be read back. Window systems derive their own.
class AFX_API CDC
{
public:
    CDC() = default;
    CDC(const CDC&) = delete;
    CDC& operator=(const CDC&) = delete;
    virtual ~CDC();

    /// Each gives what was used before; a null font is the dialog's.
    const CFont* SelectObject(const CFont* font) noexcept;
    Color SetTextColor(Color color) noexcept;
    /// The size of a text of one line.
    virtual CSize GetTextExtent(const CString& text) const;
    virtual void TextOut(int x, int y, const CString& text);
    virtual void DrawFocusRect(const CRect& rect);

    HDC GetSafeHdc() noexcept { return reinterpret_cast<HDC>(this); }
    static CDC* FromHandle(HDC handle) noexcept { return reinterpret_cast<CDC*>(handle); }

    struct Written
    {
        int x, y;
        CString text;
        Color color;
        bool underlined;
    };
    const std::vector<Written>& GetWritten() const noexcept { return m_written; }

protected:
    const CFont& Font() const noexcept;
    Color TextColor() const noexcept { return m_color; }

private:
    const CFont* m_font = nullptr;
    Color m_color = kSystemText;
    std::vector<Written> m_written;
};

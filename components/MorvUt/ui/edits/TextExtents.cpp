#include "MorvUt/ui/edits/TextExtents.h"

#include <algorithm>

#include "Afx/windows/WindowSystem.h"
#include "MorvUt/ui/edits/TextLines.h"

CSize GetMultilineTextExtents(HDC dc, const CString& text, const CFont* font)
{
    CDC plain;
    CDC* const context = dc ? CDC::FromHandle(dc) : &plain;
    const CFont* const before = font ? context->SelectObject(font) : nullptr;
    CSize size;
    for (const std::string& line : TextLines(text.View())) {
        const CSize one = context->GetTextExtent(CString(line));
        size = {std::max(size.cx, one.cx), size.cy + one.cy};
    }
    if (font)
        context->SelectObject(before);
    return size;
}

long GetTextHeight(const CWnd*, CFont* font)
{
    const Afx::WindowSystem* const system = Afx::WindowSystem::Current();
    const std::unique_ptr<CDC> context = system ? system->MeasuringContext() : std::make_unique<CDC>();
    return GetMultilineTextExtents(context->GetSafeHdc(), "X", font).cy;
}

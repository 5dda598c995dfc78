#include <algorithm>

#include "Afx/text/Utf8.h"
#include "Afx/windows/Button.h"
#include "Afx/windows/ComboBox.h"
#include "Afx/windows/Dialog.h"
#include "Afx/windows/Edit.h"
#include "Afx/windows/ListCtrl.h"
#include "Afx/windows/PropertySheet.h"
#include "Afx/windows/WindowPeer.h"

namespace Afx
{
namespace
{

constexpr unsigned kLineFeed = 10;

/// Lets the window with the focus and those around it see a key or a character first.
bool Translated(CWnd& focus, unsigned what, unsigned value, unsigned modifiers = 0)
{
    MSG message{};
    message.hwnd = focus.GetSafeHwnd();
    message.message = what;
    message.wParam = value;
    message.lParam = static_cast<LPARAM>(modifiers);
    for (WindowRef window(&focus); window; window = WindowRef(window.Get()->GetParent()))
        if (window.Get()->PreTranslateMessage(&message))
            return true;
    return false;
}

std::size_t CommonStart(std::string_view a, std::string_view b) noexcept
{
    const auto length = std::min(a.size(), b.size());
    auto common = static_cast<std::size_t>(
        std::mismatch(a.begin(), a.begin() + static_cast<std::ptrdiff_t>(length), b.begin()).first - a.begin());
    while (common > 0 && common < a.size() && ContinuesCharacter(a[common]))
        --common;
    while (common > 0 && common < b.size() && ContinuesCharacter(b[common]))
        --common;
    return common;
}

std::size_t CommonEnd(std::string_view a, std::string_view b) noexcept
{
    std::size_t common = 0;
    while (common < std::min(a.size(), b.size()) && a[a.size() - common - 1] == b[b.size() - common - 1])
        ++common;
    while (common > 0 && ContinuesCharacter(a[a.size() - common]))
        --common;
    return common;
}

} // namespace

bool UserActs::Focus(CWnd& window)
{
    if (!window.TakesInput())
        return false;
    const RunningEvent event;
    const WindowRef here(&window);
    window.SetFocus();
    return here && CWnd::GetFocus() == here.Get() && here.Get()->TakesInput();
}

bool UserActs::Edit(CWnd& window, std::string_view text, int caret)
{
    const RunningEvent event;
    auto* const edit = dynamic_cast<CEdit*>(&window);
    auto* const combo = dynamic_cast<CComboBox*>(&window);
    if ((!edit && !combo) || !Focus(window))
        return false;
    if (combo) {
        combo->Typed(CString(text));
        return true;
    }
    const CString before = edit->Text();
    const std::size_t start = CommonStart(before.View(), text);
    const std::size_t end = CommonEnd(before.View().substr(start), text.substr(start));
    const auto removed = static_cast<int>(before.View().size() - start - end);
    const std::string_view typed = text.substr(start, text.size() - start - end);
    if (edit->IsReadOnly() || (removed == 0 && typed.empty()))
        return !edit->IsReadOnly();
    const WindowRef here(edit);
    edit->SetSel(static_cast<int>(start), static_cast<int>(start) + removed);
    if (typed.empty())
        edit->OnChar(8, 1, 0);
    if (here)
        edit->Paste(typed);
    if (here && edit->Text() == text)
        edit->SetSel(caret, caret);
    return true;
}

void UserActs::Select(CWnd& window, int start, int end)
{
    if (auto* const edit = dynamic_cast<CEdit*>(&window); edit && CWnd::GetFocus() == edit)
        edit->TakeSelection(start, end);
}

bool UserActs::Char(CWnd& window, unsigned character)
{
    const RunningEvent event;
    const WindowRef here(&window);
    if (!Focus(window) || Translated(window, WM_CHAR, character))
        return false;
    if (here)
        window.DeliverChar(character);
    return true;
}

bool UserActs::Key(CWnd& window, unsigned key, unsigned modifiers)
{
    const RunningEvent event;
    const WindowRef here(&window);
    if (!Focus(window))
        return false;
    if (Translated(window, WM_KEYDOWN, key, modifiers) || !here)
        return true;
    const unsigned wants = window.OnGetDlgCode();
    if (window.OnKey(key, modifiers) || !here)
        return true;
    if (key == VK_RETURN && modifiers == 0 && (wants & DLGC_WANTALLKEYS)) {
        window.DeliverChar(kLineFeed);
        return true;
    }
    if (key == VK_TAB && modifiers == 0 && (wants & DLGC_WANTTAB))
        return false;
    auto* const dialog = dynamic_cast<CDialog*>(&window.GetTopLevel());
    return dialog && dialog->OnDialogKey(window, key, modifiers);
}

bool UserActs::Click(CWnd& window)
{
    const RunningEvent event;
    const WindowRef here(&window);
    if (!window.IsTabStop() || !Focus(window))
        return false;
    if (auto* const button = dynamic_cast<CButton*>(&window))
        button->Click();
    else
        window.NotifyParent(BN_CLICKED);
    return true;
}

bool UserActs::DoubleClick(CWnd& window, int row)
{
    const RunningEvent event;
    const WindowRef here(&window);
    auto* const list = dynamic_cast<CListCtrl*>(&window);
    if (!list || !Choose(window, row) || !here)
        return false;
    list->DeliverNotify(kNotifyDoubleClick);
    return true;
}

bool UserActs::Choose(CWnd& window, int item)
{
    const RunningEvent event;
    if (auto* const sheet = dynamic_cast<CPropertySheet*>(&window))
        return sheet->TakesInput() && sheet->SetActivePage(item);
    if (!Focus(window))
        return false;
    if (auto* const tabs = dynamic_cast<CTabCtrl*>(&window)) {
        auto* const sheet = dynamic_cast<CPropertySheet*>(tabs->GetParent());
        return sheet && sheet->SetActivePage(item);
    }
    if (auto* const combo = dynamic_cast<CComboBox*>(&window)) {
        const WindowRef here(combo);
        if (item < 0 || item >= combo->GetCount())
            return false;
        combo->Choose(item);
        if (here)
            combo->ShowDropDown(false);
        return true;
    }
    auto* const list = dynamic_cast<CListCtrl*>(&window);
    if (!list || !list->At(item))
        return false;
    list->ChooseOnly(item);
    return true;
}

bool UserActs::Toggle(CWnd& window, int item)
{
    const RunningEvent event;
    auto* const list = dynamic_cast<CListCtrl*>(&window);
    if (!list || !Focus(window) || !list->At(item))
        return false;
    list->SetFocusedRow(item);
    list->Select(item, !list->IsSelected(item));
    return true;
}

bool UserActs::Drop(CWnd& window, bool open)
{
    const RunningEvent event;
    auto* const combo = dynamic_cast<CComboBox*>(&window);
    if (!combo || !Focus(window))
        return false;
    combo->ShowDropDown(open);
    return true;
}

} // namespace Afx

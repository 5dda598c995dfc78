#include "Remembered.h"

#include <optional>
#include <string>
#include <vector>

#include "Afx/system/Application.h"
#include "Afx/text/Numbers.h"
#include "MorvUt/users/UserData.h"

namespace Desk
{
namespace
{

constexpr int kNarrowest = 4, kWidest = 2000; // dialog units

CString Section() { return "Desk " + CUserData::m_strUser; }
CString WidthsOf(const char* name) { return CString(name) + "Widths"; }

/// "60,0,40", where 0 is the width that the column needs; nothing unless there are so many, each a width.
std::optional<std::vector<int>> ReadWidths(const char* name, std::size_t count)
{
    CWinApp* const app = AfxGetApp();
    const CString text = app ? app->GetProfileString(Section(), WidthsOf(name)) : CString();
    std::vector<int> widths;
    for (int at = 0; at >= 0;) {
        const CString part = text.Tokenize(",", at);
        if (at < 0)
            break;
        const int width = Afx::ParseWhole<int>(part.View()).value_or(-1);
        if (width != 0 && (width < kNarrowest || width > kWidest))
            return std::nullopt;
        widths.push_back(width);
    }
    return widths.size() == count ? std::optional(widths) : std::nullopt;
}

void WriteWidths(const char* name, const std::vector<int>& widths)
{
    std::string text;
    for (const int width : widths)
        text += (text.empty() ? "" : ",") + std::to_string(width);
    if (CWinApp* const app = AfxGetApp())
        app->WriteProfileString(Section(), WidthsOf(name), text.c_str());
}

} // namespace

void RestoreWidths(CListCtrl& list, const char* name)
{
    if (const auto widths = ReadWidths(name, list.GetColumns().size()))
        for (std::size_t i = 0; i < widths->size(); ++i)
            list.SetColumnWidth(static_cast<int>(i), (*widths)[i]);
}

void KeepWidths(const CListCtrl& list, const char* name)
{
    std::vector<int> widths;
    for (const CListCtrl::Column& column : list.GetColumns())
        widths.push_back(column.width);
    WriteWidths(name, widths);
}

void RestoreWidths(Lattice::CGrid& grid, const char* name)
{
    if (const auto widths = ReadWidths(name, static_cast<std::size_t>(grid.GetColumnCount())))
        for (std::size_t i = 0; i < widths->size(); ++i)
            grid.SetColumnWidth(static_cast<int>(i), (*widths)[i]);
}

void KeepWidths(const Lattice::CGrid& grid, const char* name)
{
    std::vector<int> widths;
    widths.reserve(static_cast<std::size_t>(grid.GetColumnCount()));
    for (int column = 0; column < grid.GetColumnCount(); ++column)
        widths.push_back(grid.GetColumn(column)->width);
    WriteWidths(name, widths);
}

int LastPage(const char* name)
{
    CWinApp* const app = AfxGetApp();
    return app ? app->GetProfileInt(Section(), CString(name) + "Page", 0) : 0;
}

void KeepPage(const char* name, int page)
{
    if (CWinApp* const app = AfxGetApp())
        app->WriteProfileInt(Section(), CString(name) + "Page", page);
}

} // namespace Desk

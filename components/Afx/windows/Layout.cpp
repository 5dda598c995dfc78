#include "Afx/windows/Layout.h"

#include <algorithm>
#include <map>
#include <memory>
#include <span>
#include <vector>

#include "Afx/text/Utf8.h"
#include "Afx/windows/Button.h"
#include "Afx/windows/ComboBox.h"
#include "Afx/windows/Edit.h"
#include "Afx/windows/ListCtrl.h"
#include "Afx/windows/Static.h"

namespace Afx
{
namespace
{

// Dialog units.
constexpr int kGap = 7, kRowHeight = 14, kLineHeight = 8, kFrame = 6, kCharacterWidth = 4, kButtonRoom = 14,
              kButtonWidth = 50, kFieldWidth = 60, kComboWidth = 90, kListWidth = 240;

std::unique_ptr<CWnd> MakeButton(CButton::Kind kind)
{
    auto button = std::make_unique<CButton>();
    button->SetKind(kind);
    return button;
}

std::unique_ptr<CWnd> MakeField(const LayoutRow& row)
{
    auto field = std::make_unique<CEdit>();
    field->SetMultiLine(row.kind == ControlKind::Notes);
    field->SetReadOnly((row.flags & kReadOnlyField) != 0);
    field->SetPassword((row.flags & kPasswordField) != 0);
    return field;
}

std::unique_ptr<CWnd> MakeControl(const LayoutRow& row)
{
    switch (row.kind) {
    case ControlKind::Label:
        return std::make_unique<CStatic>();
    case ControlKind::Field:
    case ControlKind::Notes:
        return MakeField(row);
    case ControlKind::Push:
        return MakeButton(CButton::Kind::Push);
    case ControlKind::Default:
        return MakeButton(CButton::Kind::Default);
    case ControlKind::CheckBox:
        return MakeButton(CButton::Kind::CheckBox);
    case ControlKind::Radio:
        return MakeButton(CButton::Kind::Radio);
    case ControlKind::OwnerDrawn:
        return MakeButton(CButton::Kind::OwnerDrawn);
    case ControlKind::Combo:
    case ControlKind::EditCombo: {
        auto combo = std::make_unique<CComboBox>();
        combo->SetEditable(row.kind == ControlKind::EditCombo);
        return combo;
    }
    case ControlKind::List: {
        auto list = std::make_unique<CListCtrl>();
        list->SetSingleSelection((row.flags & kSingleSelection) != 0);
        return list;
    }
    default:
        return std::make_unique<CWnd>();
    }
}

int TextWidth(const char* text) noexcept { return CountCharacters(text ? text : "") * kCharacterWidth; }

int WidthOf(const LayoutRow& row) noexcept
{
    if (row.width > 0)
        return row.width;
    switch (row.kind) {
    case ControlKind::Label:
        return TextWidth(row.text);
    case ControlKind::Push:
    case ControlKind::Default:
        return std::max(kButtonWidth, TextWidth(row.text) + kButtonRoom);
    case ControlKind::CheckBox:
    case ControlKind::Radio:
    case ControlKind::OwnerDrawn:
        return TextWidth(row.text) + kButtonRoom;
    case ControlKind::Combo:
    case ControlKind::EditCombo:
        return kComboWidth;
    case ControlKind::List:
    case ControlKind::Notes:
    case ControlKind::Custom:
        return kListWidth;
    default:
        return kFieldWidth;
    }
}

int HeightOf(const LayoutRow& row) noexcept { return row.lines > 1 ? row.lines * kLineHeight + kFrame : kRowHeight; }

/// Where each row or column begins, and where the last one ends.
std::vector<int> Places(const std::map<int, int>& sizes, int count)
{
    std::vector<int> places{kGap};
    for (int i = 0; i < count; ++i) {
        const auto size = sizes.find(i);
        places.push_back(places.back() + (size == sizes.end() ? 0 : size->second + kGap));
    }
    return places;
}

} // namespace

void MakeControls(CWnd& window, const DialogLayout& layout)
{
    for (const LayoutRow& row : std::span(layout.rows, layout.count)) {
        if (row.kind != ControlKind::Label && window.GetDlgItem(static_cast<int>(row.id)))
            continue;
        CWnd& control = window.Adopt(MakeControl(row), row.id);
        if (row.text && *row.text)
            control.SetWindowText(row.text);
        control.EnableWindow(!(row.flags & kDisabledControl));
        control.ShowWindow(!(row.flags & kHiddenControl));
    }
}

std::vector<PlacedControl> ControlsOf(const CWnd& window, const DialogLayout& layout)
{
    std::vector<PlacedControl> placed; // labels have one id for all
    for (const LayoutRow& row : std::span(layout.rows, layout.count)) {
        const auto control = std::find_if(window.Children().begin(), window.Children().end(), [&](const CWnd* child) {
            return child->GetDlgCtrlID() == static_cast<int>(row.id) &&
                   std::none_of(placed.begin(), placed.end(),
                                [child](const PlacedControl& one) { return one.control == child; });
        });
        if (control != window.Children().end())
            placed.push_back({&row, *control});
    }
    return placed;
}

CSize Arrange(CWnd& window, const DialogLayout& layout)
{
    std::map<int, int> widths, heights;
    int rows = 0, columns = 0;
    const auto each = [&layout](const auto& act) { std::for_each_n(layout.rows, layout.count, act); };
    each([&](const LayoutRow& row) {
        rows = std::max(rows, row.row + 1);
        columns = std::max(columns, row.column + row.span);
        heights[row.row] = std::max(heights[row.row], HeightOf(row));
        if (row.span == 1)
            widths[row.column] = std::max(widths[row.column], WidthOf(row));
    });
    each([&](const LayoutRow& row) { // what spans several columns widens the last of them
        int room = -kGap;
        for (int i = row.column; i < row.column + row.span; ++i)
            room += widths[i] + kGap;
        if (row.span > 1)
            widths[row.column + row.span - 1] += std::max(0, WidthOf(row) - room);
    });
    const std::vector<int> x = Places(widths, columns), y = Places(heights, rows);
    const auto at = [](const std::vector<int>& places, int i) { return places[static_cast<std::size_t>(i)]; };
    for (const auto& [row, control] : ControlsOf(window, layout))
        control->MoveWindow({at(x, row->column), at(y, row->row), at(x, row->column + row->span) - kGap,
                             at(y, row->row) + HeightOf(*row)});
    return {x.back(), y.back()};
}

} // namespace Afx

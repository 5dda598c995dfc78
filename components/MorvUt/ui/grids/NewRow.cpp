#include "MorvUt/ui/grids/NewRow.h"

#include "Afx/text/Ascii.h"

namespace
{

bool TakesPart(const NewRowCell& cell) noexcept
{
    return (cell.flags & (kColumnNotTested | kColumnNotTestedEither)) == 0 && !cell.isReadOnly;
}

} // namespace

bool IsAutomaticAmount(std::string_view text) noexcept
{
    while (!text.empty() && Afx::IsBlank(text.front()))
        text.remove_prefix(1);
    return !text.empty() && Afx::UpperAscii(text.front()) == 'A';
}

bool IsNewRowDue(const NewRowGrid& grid, std::span<const NewRowCell> lastRow) noexcept
{
    if (!grid.isEnabled || !grid.isInsertable || grid.rows >= grid.maximumRows)
        return false;
    if (grid.rows == 0)
        return true;
    bool canBeFilled = false, isFilled = false;
    for (const NewRowCell& cell : lastRow) {
        if (!TakesPart(cell))
            continue;
        canBeFilled = true;
        if (cell.isAmount && IsAutomaticAmount(cell.text))
            continue;
        if (cell.text.empty() && (cell.flags & kColumnRequired))
            return false;
        isFilled = isFilled || !cell.text.empty();
    }
    return isFilled || !canBeFilled;
}

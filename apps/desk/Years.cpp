#include "Years.h"

#include "MorvUt/taxyear/TaxYear.h"
#include "MorvUt/taxyear/YearTitles.h"

namespace Desk
{

void FillYears(CComboBox& combo, short year)
{
    combo.ResetContent();
    for (short each = GetMaxRealTaxYear(); each >= GetMinRealTaxYear(); --each) {
        const int item = combo.AddString(FormatYearString42Digit(each), static_cast<std::uintptr_t>(each));
        if (each == year)
            combo.SetCurSel(item);
    }
}

short ChosenYear(const CComboBox& combo) noexcept { return static_cast<short>(combo.GetItemData(combo.GetCurSel())); }

} // namespace Desk

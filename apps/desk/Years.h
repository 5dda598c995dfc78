#pragma once

// Tax years to choose from.

#include "Afx/windows/ComboBox.h"

namespace Desk
{

/// Fills the box with all tax years, the latest first, and chooses `year` (real).
void FillYears(CComboBox& combo, short year);
/// The chosen one, real.
short ChosenYear(const CComboBox& combo) noexcept;

} // namespace Desk

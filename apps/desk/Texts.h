#pragma once

// This program's texts that library controls load by their ids.

#include "Afx/system/Resources.h"

namespace Desk
{

inline constexpr unsigned IDS_DESK_BASIS_1 = 30'001, IDS_DESK_BASIS_2 = 30'002, IDS_DESK_BASIS_3 = 30'003,
                          IDS_DESK_BASIS_CHANGED = 30'004;

const Afx::ResourceContext& DeskTexts() noexcept;

} // namespace Desk

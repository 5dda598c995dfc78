#pragma once

// The library's string table.

#include "Afx/system/Resources.h"
#include "MorvUt/Export.h"

#define STRING(id, number, text) inline constexpr unsigned id = number;
#include "MorvUt/res/strings.def"
#undef STRING

/// The library's own resources; a function that shows a text makes them current for that time.
MORVUT_API const Afx::ResourceContext& MorvUtResources() noexcept;
/// One of its texts.
MORVUT_API CString LibraryText(unsigned id);

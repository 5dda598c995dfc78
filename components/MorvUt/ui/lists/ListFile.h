#pragma once

// Lists that stand in plain text files: banks and building societies, charities, insurers.

#include <optional>
#include <string_view>
#include <vector>

#include "Afx/text/CString.h"
#include "MorvUt/Export.h"

/// The lines of a list in their order, without the white space at their ends; blank ones are left out.
MORVUT_API std::vector<CString> SplitList(std::string_view text);

/// The list of the file `fileName` in the data folder (GetDataFileDirectory): UTF-8, or Windows-1252 where it is not
/// valid UTF-8; the name is found in any case. Nothing when it cannot be read, or null was given.
MORVUT_API std::optional<std::vector<CString>> ReadListFile(const char* fileName);

#pragma once

// The code tables: which key and which display name belong to a stored code.

#include "MorvUt/Export.h"

/// One row of a code table. A table ends with a row whose short name is null.
struct TypeMapping
{
    int index;             // the stored code
    const char* shortName; // the key, used in interchange and scripts
    const char* longName;  // the display name; may be empty
};

// Lookups are linear and the first matching row wins. The output is written only on success. A null table is empty.

/// Rows before the end mark.
MORVUT_API unsigned GetMapCount(const TypeMapping* table) noexcept;
/// 1 when found, 0 otherwise. Keys ignore case, long names do not.
MORVUT_API int GetMapIndexFromShortName(const TypeMapping* table, const char* key, int* index) noexcept;
MORVUT_API int GetMapIndexFromLongName(const TypeMapping* table, const char* name, int* index) noexcept;
MORVUT_API int GetMapShortNameFromIndex(const TypeMapping* table, const char** key, int index) noexcept;
MORVUT_API int GetMapLongNameFromIndex(const TypeMapping* table, const char** name, int index) noexcept;

// The tables.
MORVUT_API extern const TypeMapping mapNewEmployBenefitsGrid[];

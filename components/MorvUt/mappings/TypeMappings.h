#pragma once

// The code tables: which key and which display name belong to a stored code.

#include <cstdint>
#include <span>

#include "MorvUt/Export.h"

namespace Detail
{

/// A number that two keys share when they are equal but for case, and seldom otherwise. 0 for null.
constexpr std::uint32_t MarkOfKey(const char* key) noexcept
{
    std::uint32_t mark = 0;
    for (; key && *key; ++key) {
        const auto c = static_cast<signed char>(*key);
        mark = (mark << 5 | mark >> 27) ^ static_cast<std::uint32_t>(c | 0x20 | c >> 7); // all alike beyond ASCII
    }
    return mark;
}

} // namespace Detail

/// One row of a code table. A table ends with a row whose short name is null.
struct TypeMapping
{
    int index = 0;                   // the stored code; need not be in order, nor occur only once
    const char* shortName = nullptr; // the key, used in interchange and scripts
    const char* longName = nullptr;  // the display name; may be empty
    /// Of the short name that the row was made with, so that a lookup reads no other key; 0 says nothing.
    std::uint32_t mark = ::Detail::MarkOfKey(shortName);
};
inline constexpr TypeMapping kEndOfTable{0, nullptr, nullptr};

// Lookups go from the first row on and the first that matches wins. The output is written only on success. A null
// table is empty; a null key, name or output finds nothing. The texts that come back live as long as the library.

/// Rows before the end mark.
MORVUT_API unsigned GetMapCount(const TypeMapping* table) noexcept;
/// 1 when found, 0 otherwise. Case is ignored, as by Afx::CompareNoCase.
MORVUT_API int GetMapIndexFromShortName(const TypeMapping* table, const char* key, int* index) noexcept;
/// 1 when found, 0 otherwise. Case counts: "gift aid" is not "Gift Aid".
MORVUT_API int GetMapIndexFromLongName(const TypeMapping* table, const char* name, int* index) noexcept;
/// 1 when found, 0 otherwise.
MORVUT_API int GetMapShortNameFromIndex(const TypeMapping* table, const char** key, int index) noexcept;
MORVUT_API int GetMapLongNameFromIndex(const TypeMapping* table, const char** name, int index) noexcept;

// The tables exported by name, each `extern const TypeMapping table[]`: mapPSBTypes and 77 more.
#define NAMED(table) MORVUT_API extern const TypeMapping table[];
#define UNNAMED(table)
#define OUTSIDE(table) NAMED(table)
#include "MorvUt/mappings/tables.def"

/// 101 tables, then null. The positions are fixed.
MORVUT_API extern const TypeMapping* const ppAllMappings[];

/// A table that a user can choose by name or position.
struct NamedMapping
{
    const char* name;         // empty for a table that has none
    int position;             // in ppAllMappings; kOutsideMappings for a table that is not in it
    const TypeMapping* table; // never null
};
inline constexpr int kOutsideMappings = -1;

/// All 104 tables: those of ppAllMappings in its order, then those outside it.
MORVUT_API std::span<const NamedMapping> GetNamedMappings() noexcept;

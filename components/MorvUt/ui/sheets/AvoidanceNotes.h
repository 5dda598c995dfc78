#pragma once

// The notes on an avoidance scheme: its reference number, and the tax year in which its advantage arises.

#include <cstdint>
#include <optional>

#include "Afx/text/CString.h"
#include "MorvUt/Export.h"

/// A year as typed, made one of four digits: "9" is 2009, "45" is 2045, "123" is 2123. Empty, of four digits or more,
/// or no whole number, it stays as it is.
MORVUT_API CString ExpandAvoidanceYear(const CString& text);

enum class AvoidanceField : std::uint8_t
{
    Year,
    Reference
};

/// What stands on the page.
struct AvoidanceEntry
{
    bool hasYear = false; // the avoidance flag: the year counts
    int year = 0;         // real tax year
    CString reference;
};

/// What is wrong: the field to go back to, and what the user is told.
struct AvoidanceRefusal
{
    AvoidanceField field;
    CString message;
};

/// The first rule that the entry breaks; nothing when it is in order. `earliestYear` is the first real tax year that is
/// accepted; `tooEarly`, unless empty, is what the user is told of an earlier one.
MORVUT_API std::optional<AvoidanceRefusal> CheckAvoidance(const AvoidanceEntry& entry, int earliestYear,
                                                          const CString& tooEarly);

#pragma once

// What came of carrying an owner's work into a new tax year.

#include <cstdint>
#include <vector>

#include "Afx/text/CString.h"
#include "MorvUt/Export.h"

namespace Tracker
{

enum class WhyNotCarried : std::uint8_t
{
    HasLeft,        // by the yearly row of the new year
    NoReturnWanted, // the client's record says so
    JobComplete,    // a user's own job: all its tasks are, or it has none
    NoSourceType,   // that a source would be made from
    SourceGone      // that an enquiry was linked to; it is carried without the link
};

struct NotCarried
{
    WhyNotCarried why = WhyNotCarried::HasLeft;
    CString what; // the year, the job, the number of the source type, the enquiry; empty where nothing is named

    /// For people: "The job "Rental accounts" is complete".
    MORVUT_API CString Text() const;
    friend bool operator==(const NotCarried&, const NotCarried&) = default;
};

struct Carried
{
    int sources = 0, tasks = 0, enquiries = 0; // made
    std::vector<NotCarried> notCarried;
    bool hasLeft = false;

    bool IsNothing() const noexcept { return sources == 0 && enquiries == 0 && notCarried.empty(); }
    MORVUT_API Carried& operator+=(const Carried& other);
    friend bool operator==(const Carried&, const Carried&) = default;
};

} // namespace Tracker

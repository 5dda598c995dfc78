#include "common/RollWords.h"

#include "common/Words.h"

namespace Morv
{

namespace
{

using Tracker::RollEnd;

constexpr CutShort kCutShort[] = {
    {RollEnd::Cancelled, "cancelled", "it was cancelled", "", Exit::Refused},
    {RollEnd::Busy, "busy", "another program was writing to the practice for 3 clients in a row",
     "Wait until it has finished", Exit::CannotOpen},
    {RollEnd::Unusable, "unusable", "the practice cannot be read or written", "See that it can", Exit::CannotOpen},
};

} // namespace

const CutShort* FindCutShort(RollEnd end)
{
    for (const CutShort& each : kCutShort)
        if (each.end == end)
            return &each;
    return nullptr;
}

std::string RolledText(const Tracker::Rolled& rolled, bool isPreview, const TaxYear& year)
{
    CString text;
    text.Format("%s into %s, %s: %s, %s, %s.", isPreview ? "Preview" : "Rolled forward", year.Format(),
                Counted(static_cast<int>(rolled.done), "client"), Counted(rolled.total.sources, "source"),
                Counted(rolled.total.tasks, "task"),
                std::to_string(rolled.total.enquiries) + (rolled.total.enquiries == 1 ? " enquiry" : " enquiries"));
    return text.Str();
}

std::string LeftText(std::size_t left)
{
    return Counted(static_cast<int>(left), "client") + (left == 1 ? " is" : " are");
}

} // namespace Morv

#include "Families.h"

namespace Morv::Sample
{

namespace
{

using Kiln::CDate;

void AddParent(long child, long client, int born)
{
    Add<Brix::CChildParentLink>([&](Brix::CChildParentLink& link) {
        link.SetChildID(child);
        link.SetClientID(client);
        link.SetStart(CDate(born, 5, 14));
    });
}

/// What the return asks of a child depends on how many parents are responsible.
void AddToReturn(long child, const Individual& parent, int parents)
{
    const int allowance = parents <= 1 ? 1 : parents == 2 ? 3 : 4;
    for (const Form& form : parent.forms) {
        if (form.year == kSampleYear)
            AddUnder<Brix::CChildSchedule>(form, [&](Brix::CChildSchedule& schedule) {
                schedule.SetChildID(child);
                schedule.SetAllowance(allowance);
                schedule.SetShared(allowance == 1);
            });
    }
}

} // namespace

void AddChild(const std::string& name, int born, const Individual& first, const Individual* second, int otherParents)
{
    const long child = Add<Brix::CChild>([&](Brix::CChild& row) {
        row.SetName(CString(name));
        row.SetBirth(CDate(born, 5, 14));
    });
    const int parents = (second ? 2 : 1) + otherParents;
    for (const Individual* const parent : {&first, second}) {
        if (!parent)
            continue;
        AddParent(child, parent->id, born);
        AddToReturn(child, *parent, parents);
    }
    for (int other = 1; other <= otherParents; ++other)
        Add<Brix::CChildOtherParentLink>([&](Brix::CChildOtherParentLink& link) {
            link.SetChildID(child);
            link.SetName(other == 1 ? "Other parent, not a client" : "Guardian, not a client");
            link.SetStart(CDate(other == 1 ? born : born + 6, 9, 1));
        });
}

} // namespace Morv::Sample

#include "MorvUt/enquiries/tracker/CarrySources.h"

#include <algorithm>
#include <utility>

#include "MorvUt/enquiries/tracker/SameSource.h"
#include "MorvUt/enquiries/tracker/TrackerRows.h"
#include "MorvUt/taxyear/TaxYear.h"

namespace Tracker
{
namespace
{

/// The owner exists, and has left by the yearly row of exactly this year: nothing when there is no such owner.
template<class Owner, class Yearly>
std::optional<bool> HasLeft(Cellar::CConnection& connection, short year, const TrackerOwner& owner)
{
    if (!Owner().Open(connection, {{0, owner.id}}))
        return std::nullopt;
    Yearly yearly;
    return yearly.Open(connection, {OwnedBy<Yearly>(owner), {Yearly::kYear, year}}) && yearly.GetStatus() != 0;
}

bool IsComplete(const Source& source, const std::vector<Task>& tasks)
{
    return std::all_of(tasks.begin(), tasks.end(),
                       [&](const Task& task) { return task.sourceId != source.id || task.isComplete; });
}

/// What the new year may lack, and what it has.
struct TwoYears
{
    std::vector<Source> lacking, there;
};
TwoYears ReadTwoYears(Cellar::CConnection& connection, short year, const TrackerOwner& owner)
{
    TwoYears read;
    for (Source& source : ReadSources(connection, owner, static_cast<short>(year - 1), year))
        (source.year == year ? read.there : read.lacking).push_back(std::move(source));
    std::erase_if(read.lacking, [&](const Source& source) {
        return FindSameSource(read.there, source, TaxReturnTypeOf(owner)) != nullptr;
    });
    return read;
}

/// The new sources, and beside each the one that it comes from.
struct Made
{
    std::vector<Source> sources;
    std::vector<long> from;
};
Made ChooseSources(const std::vector<Source>& lacking, const std::vector<Task>& tasks, short year, long returnType,
                   Carried& carried)
{
    Made made;
    for (const Source& source : lacking) {
        if (FindSameSource(made.sources, source, returnType))
            continue; // two of one name are one in the new year
        if (source.isUserCreated && IsComplete(source, tasks)) {
            carried.notCarried.push_back({WhyNotCarried::JobComplete, source.description});
            continue;
        }
        made.from.push_back(source.id);
        made.sources.push_back(source);
        made.sources.back().year = year;
    }
    return made;
}

} // namespace

Carried CarrySources(Cellar::CConnection& connection, short year, const TrackerOwner& owner)
{
    Carried carried;
    const std::optional<bool> left =
        owner.isPartnership ? HasLeft<Brix::CPartnership, Brix::CPartnershipYearly>(connection, year, owner)
                            : HasLeft<Brix::CClient, Brix::CClientYearly>(connection, year, owner);
    if (!left)
        return carried;
    if (*left) {
        carried.hasLeft = true;
        carried.notCarried.push_back({WhyNotCarried::HasLeft, TaxYear(year).Format()});
        return carried;
    }
    const std::vector<Source> lacking = ReadTwoYears(connection, year, owner).lacking;
    if (lacking.empty())
        return carried;
    const std::vector<Task> before = ReadTasks(connection, IdsOf(lacking));
    Made made = ChooseSources(lacking, before, year, TaxReturnTypeOf(owner), carried);
    if (made.sources.empty())
        return carried;
    AddSources(connection, owner, made.sources);
    const std::vector<DefaultTask> defaults = ReadDefaultTasks(connection);
    std::vector<Task> tasks;
    for (std::size_t i = 0; i < made.sources.size(); ++i) {
        const std::vector<Task> own = TasksOf(made.sources[i], defaults, TasksOfSource(before, made.from[i]));
        tasks.insert(tasks.end(), own.begin(), own.end());
    }
    AddTasks(connection, tasks);
    carried.sources = static_cast<int>(made.sources.size());
    carried.tasks = static_cast<int>(tasks.size());
    return carried;
}

} // namespace Tracker

#include "MorvUt/enquiries/tracker/RollForward.h"

#include <stdexcept>
#include <utility>

#include "Cellar/Transaction.h"
#include "MorvUt/enquiries/rules/SourceCreation.h"
#include "MorvUt/enquiries/tracker/CarryEnquiries.h"
#include "MorvUt/enquiries/tracker/CarrySources.h"
#include "MorvUt/res/Strings.h"
#include "MorvUt/users/UserData.h"

namespace Tracker
{
namespace
{

using Category = Cellar::DatabaseError::Category;

constexpr int kBusyInARow = 3;

/// Whom the others cannot be tried after.
bool EndsRun(Category category) noexcept
{
    return category == Category::ReadOnly || category == Category::CannotOpen || category == Category::LostConnection ||
           category == Category::Syntax || category == Category::Other;
}

unsigned WhyMayNotRoll()
{
    if (!TheUser().TrackerSaveAllowed(true))
        return IDS_NO_PERMISSION;
    return CUserData::CheckForReadOnlyWithError() ? IDS_CLIENT_READ_ONLY : 0;
}

/// One run, owner by owner.
class Run
{
public:
    Run(Cellar::CConnection& connection, short year, const RollOptions& options)
        : m_connection(connection), m_year(year), m_options(options)
    {}

    Rolled Over(const std::vector<TrackerOwner>& owners)
    {
        for (const TrackerOwner& owner : owners) {
            RolledOwner one = Roll(owner);
            if (m_rolled.end == RollEnd::Unusable)
                break;
            ++m_rolled.done;
            const bool goesOn = !m_options.each || m_options.each(m_rolled.done, owners.size(), one);
            Keep(std::move(one));
            if (!goesOn && m_rolled.done < owners.size())
                m_rolled.end = RollEnd::Cancelled;
            if (m_rolled.end != RollEnd::Whole)
                break;
        }
        return std::move(m_rolled);
    }

private:
    RolledOwner Roll(const TrackerOwner& owner)
    {
        RolledOwner one{owner, {}, {}};
        try {
            one.carried = RollForwardOne(m_connection, m_year, owner, m_options.isPreview);
            m_busyInARow = 0;
        } catch (const Cellar::DatabaseError& error) {
            one.problem = error.GetReason().c_str();
            m_busyInARow = error.GetCategory() == Category::Busy ? m_busyInARow + 1 : 0;
            if (EndsRun(error.GetCategory()) || m_busyInARow == kBusyInARow) {
                m_rolled.end = m_busyInARow == kBusyInARow ? RollEnd::Busy : RollEnd::Unusable;
                m_rolled.message = one.problem;
            }
        }
        return one;
    }

    void Keep(RolledOwner one)
    {
        m_rolled.total.sources += one.carried.sources;
        m_rolled.total.tasks += one.carried.tasks;
        m_rolled.total.enquiries += one.carried.enquiries;
        if (!one.carried.IsNothing() || !one.problem.IsEmpty())
            m_rolled.owners.push_back(std::move(one));
    }

    Cellar::CConnection& m_connection;
    short m_year;
    const RollOptions& m_options;
    Rolled m_rolled;
    int m_busyInARow = 0;
};

} // namespace

Carried RollForwardOne(Cellar::CConnection& connection, short year, const TrackerOwner& owner, bool isPreview)
{
    if (connection.HasBegun())
        throw std::logic_error("a client is rolled forward within a transaction that has begun");
    Cellar::CTransaction transaction(connection, Cellar::Intent::Write, SubjectOf(owner));
    Carried carried = CarrySources(connection, year, owner);
    if (!carried.hasLeft && IsTrackerSourceCreationEnabled())
        carried += CarryEnquiries(connection, year, owner);
    if (isPreview)
        transaction.Rollback();
    else
        transaction.Commit();
    return carried;
}

Rolled RollForward(Cellar::CConnection& connection, short year, const std::vector<TrackerOwner>& owners,
                   const RollOptions& options)
{
    if (const unsigned refused = WhyMayNotRoll()) {
        Rolled rolled;
        rolled.end = RollEnd::Refused;
        rolled.message = LibraryText(refused);
        return rolled;
    }
    return Run(connection, year, options).Over(owners);
}

} // namespace Tracker

#include "MorvUt/enquiries/tracker/CarryEnquiries.h"

#include <map>
#include <set>
#include <string>
#include <utility>

#include "MorvUt/context/status/ClientStatus.h"
#include "MorvUt/enquiries/tracker/SameSource.h"
#include "MorvUt/enquiries/tracker/TaxReturnSource.h"
#include "MorvUt/enquiries/tracker/TrackerRows.h"
#include "Quarry/NewId.h"

namespace Tracker
{
namespace
{

using Brix::CClientEnquiry;
using Cellar::SqlText;

/// What of an enquiry of the year before is carried, and what the new one is linked to.
struct Enquiry
{
    CString description;
    long sourceId = 0, sourceTypeId = 0, taskId = 0;
};

/// Descriptions of the year before that are marked to be carried and that the new year has not.
std::set<std::string> ReadDescriptions(Cellar::CConnection& connection, short year, const TrackerOwner& owner)
{
    const SqlText own = owner.isPartnership ? SqlText("lpClientID = %d") : SqlText("lClientID = %d");
    const SqlText statement =
        "SELECT strDescription, bCarryForward, SourceID, SourceTypeID FROM ClientEnquiry WHERE " + own +
        " AND nYear = %d AND bCarryForward <> 0 AND strDescription NOT IN ( SELECT strDescription FROM ClientEnquiry "
        "WHERE " +
        own + " AND nYear = %d )";
    std::set<std::string> descriptions;
    for (const auto& row : connection.Query(statement, {owner.id, year - 1, owner.id, year}).rows)
        descriptions.insert(Cellar::ToText(row[0]).Str());
    return descriptions;
}

/// The enquiries of these descriptions, in the order in which they were made.
std::vector<Enquiry> ReadEnquiries(Cellar::CConnection& connection, short year, const TrackerOwner& owner)
{
    std::vector<Enquiry> enquiries;
    const std::set<std::string> descriptions = ReadDescriptions(connection, year, owner);
    if (descriptions.empty())
        return enquiries;
    CClientEnquiry rows;
    for (rows.Open(connection, {OwnedBy<CClientEnquiry>(owner), {CClientEnquiry::kYear, year - 1}}); !rows.IsEOL();
         rows.MoveNext())
        if (rows.GetCarryForward() && descriptions.contains(rows.GetDescription().Str()))
            enquiries.push_back({rows.GetDescription(), rows.GetSourceID(), rows.GetSourceTypeID(), rows.GetTypeID()});
    return enquiries;
}

/// The new year's sources of an owner, those that are made on the way among them.
class NewLinks
{
public:
    NewLinks(Cellar::CConnection& connection, short year, const TrackerOwner& owner)
        : m_connection(connection), m_owner(owner), m_year(year), m_returnType(TaxReturnTypeOf(owner))
    {}

    /// Gives each its link in the new year, or none. Those that are linked to sources to be made have a negative place
    /// for an id until MakeSources.
    void Link(std::vector<Enquiry>& enquiries, Carried& carried)
    {
        std::set<long> ids;
        for (const Enquiry& enquiry : enquiries)
            if (enquiry.sourceId != 0)
                ids.insert(enquiry.sourceId);
        if (ids.empty())
            return;
        Read({ids.begin(), ids.end()});
        for (Enquiry& enquiry : enquiries)
            if (enquiry.sourceId != 0)
                LinkOne(enquiry, carried);
        Make(carried);
        for (Enquiry& enquiry : enquiries)
            Settle(enquiry);
    }

private:
    void Read(const std::vector<long>& ids)
    {
        for (Source& source : ReadSources(m_connection, ids))
            m_before.emplace(source.id, std::move(source));
        m_there = ReadSources(m_connection, m_owner, m_year, m_year);
        Brix::CSourceType types;
        for (types.Open(m_connection); !types.IsEOL(); types.MoveNext()) {
            Source source;
            source.typeId = types.GetSourceTypeID();
            source.year = m_year;
            source.description = types.GetDescription();
            source.showsReminder = types.GetShowReminder();
            m_types.emplace(source.typeId, std::move(source));
        }
        if (!m_there.empty())
            m_tasks = ReadTasks(m_connection, IdsOf(m_there));
    }

    void LinkOne(Enquiry& enquiry, Carried& carried)
    {
        const auto before = m_before.find(enquiry.sourceId);
        if (enquiry.sourceTypeId == 0 && before != m_before.end())
            enquiry.sourceTypeId = before->second.typeId;
        enquiry.sourceId = 0;
        if (enquiry.sourceTypeId == 0) {
            carried.notCarried.push_back({WhyNotCarried::SourceGone, enquiry.description});
            return;
        }
        if (before != m_before.end()) {
            Source wanted = before->second;
            wanted.typeId = enquiry.sourceTypeId;
            if (const Source* const same = FindSameSource(m_there, wanted, m_returnType)) {
                enquiry.sourceId = same->id;
                return;
            }
        }
        LinkToType(enquiry, carried);
    }

    /// To the source that is called as its type, which is made when it is not there.
    void LinkToType(Enquiry& enquiry, Carried& carried)
    {
        const auto type = m_types.find(enquiry.sourceTypeId);
        if (type == m_types.end()) {
            carried.notCarried.push_back({WhyNotCarried::NoSourceType, std::to_string(enquiry.sourceTypeId).c_str()});
            return;
        }
        if (const Source* const same = FindSameSource(m_there, type->second, m_returnType)) {
            enquiry.sourceId = same->id;
            return;
        }
        m_there.push_back(type->second);
        m_made.push_back(m_there.size() - 1);
        enquiry.sourceId = m_there.back().id = -static_cast<long>(m_made.size());
    }

    void Make(Carried& carried)
    {
        if (m_made.empty())
            return;
        std::vector<Source> made;
        const bool carriesStaff = ReadCarriesStaff(m_connection);
        for (const std::size_t place : m_made) {
            made.push_back(m_there[place]);
            made.back().carriesStaff = carriesStaff;
            if (made.back().typeId == m_returnType && !m_owner.isPartnership && IsOfTrust())
                made.back().description = kTrustReturn;
        }
        AddSources(m_connection, m_owner, made);
        const std::vector<DefaultTask> defaults = ReadDefaultTasks(m_connection);
        std::vector<Task> tasks;
        for (const Source& source : made) {
            const std::vector<Task> own = DefaultTasksOf(source, defaults);
            tasks.insert(tasks.end(), own.begin(), own.end());
            m_ids.push_back(source.id);
        }
        AddTasks(m_connection, tasks);
        m_tasks.insert(m_tasks.end(), tasks.begin(), tasks.end());
        carried.sources += static_cast<int>(made.size());
        carried.tasks += static_cast<int>(tasks.size());
    }

    bool IsOfTrust() const
    {
        Brix::CClient client;
        return client.Open(m_connection, {{0, m_owner.id}}) && IsTrust(client, false);
    }

    void Settle(Enquiry& enquiry) const
    {
        if (enquiry.sourceId < 0)
            enquiry.sourceId = m_ids[static_cast<std::size_t>(-enquiry.sourceId - 1)];
        if (enquiry.sourceId == 0 || !FindTask(TasksOfSource(m_tasks, enquiry.sourceId), enquiry.taskId))
            enquiry.taskId = 0;
    }

    Cellar::CConnection& m_connection;
    TrackerOwner m_owner;
    short m_year;
    long m_returnType;
    std::map<long, Source> m_before; // that the enquiries were linked to
    std::map<long, Source> m_types;  // as sources, by their type
    std::vector<Source> m_there;     // of the new year
    std::vector<std::size_t> m_made; // places there of those that are to be made
    std::vector<long> m_ids;         // of those, once they are
    std::vector<Task> m_tasks;       // of those that are there
};

/// NULL for no link.
Cellar::Value LinkValue(long id) { return id != 0 ? Cellar::Value(id) : Cellar::Value(); }

void AddEnquiries(Cellar::CConnection& connection, short year, const TrackerOwner& owner,
                  const std::vector<Enquiry>& enquiries)
{
    CClientEnquiry rows;
    rows.Use(connection);
    Quarry::ReserveIds(rows.GetTable(), static_cast<long>(enquiries.size()), connection);
    for (const Enquiry& enquiry : enquiries) {
        rows.AddNew();
        SetOwner(rows, owner);
        rows.SetYear(year);
        rows.SetDescription(enquiry.description);
        rows.SetCarryForward(true);
        rows.Set(CClientEnquiry::kSourceID, LinkValue(enquiry.sourceId));
        rows.Set(CClientEnquiry::kSourceTypeID, LinkValue(enquiry.sourceId != 0 ? enquiry.sourceTypeId : 0));
        rows.Set(CClientEnquiry::kTypeID, LinkValue(enquiry.sourceId != 0 ? enquiry.taskId : 0));
    }
    rows.UpdateAll();
}

} // namespace

Carried CarryEnquiries(Cellar::CConnection& connection, short year, const TrackerOwner& owner)
{
    Carried carried;
    bool isReturnThere = false;
    std::vector<Enquiry> enquiries = ReadEnquiries(connection, year, owner);
    if (!enquiries.empty()) {
        NewLinks(connection, year, owner).Link(enquiries, carried);
        AddEnquiries(connection, year, owner, enquiries);
        carried.enquiries = static_cast<int>(enquiries.size());
        for (const Enquiry& enquiry : enquiries)
            isReturnThere = isReturnThere || (enquiry.sourceId != 0 && enquiry.sourceTypeId == TaxReturnTypeOf(owner));
    }
    if (!isReturnThere)
        carried += MakeTaxReturnSource(connection, year, owner);
    return carried;
}

} // namespace Tracker

#include "MorvUt/users/locks/Holder.h"

#include <limits>

#include "Afx/system/Computer.h"
#include "Shellkit/ProcessMark.h"

using Cellar::Value;

namespace Locks
{
namespace
{

constexpr double kSecondsADay = 86'400;
constexpr std::size_t kLongestName = 15; // of a computer; what is longer is cut

/// Tells the files of this computer apart, however a program names them: their sessions have the same numbers. Those of
/// a server are the server's, and different texts may lead to it.
std::string DatabaseDigest(Cellar::CConnection& connection)
{
    const Cellar::SqlText& file = connection.GetDialect().FilePath();
    if (file.IsEmpty())
        return "server";
    const Cellar::RowSet files = connection.Query(file, {});
    std::uint64_t hash = 14695981039346656037u; // FNV-1a: the same in every build
    for (const char c : files.rows.empty() ? std::string() : Cellar::ToText(files.rows[0].at(0)).Str())
        hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211u;
    return std::to_string(hash);
}

} // namespace

MarkNames::MarkNames(Cellar::CConnection& connection) : m_database(DatabaseDigest(connection)) {}

std::string MarkNames::Of(std::string_view kind, std::string_view key, std::int64_t session) const
{
    std::string name(kind);
    return name.append(".").append(m_database).append(".").append(key).append(".").append(std::to_string(session));
}

std::string MarkName(Cellar::CConnection& connection, std::string_view kind, std::string_view key, std::int64_t session)
{
    return MarkNames(connection).Of(kind, key, session);
}

std::optional<bool> RunsHere(const std::string& mark, const std::string& workstation)
{
    if (workstation != Afx::GetComputerName().Str())
        return std::nullopt;
    if (Shellkit::ProcessMark::IsSet(mark))
        return true;
    if (workstation.size() < kLongestName && workstation != "Unknown")
        return false;
    return std::nullopt;
}

Cellar::SqlText SameRow(const Value& locked)
{
    const Cellar::SqlText session = " AND COALESCE([ConnectionID], 0) = %I64d AND [dtLocked] ";
    if (locked.IsNull())
        return session + "IS NULL";
    return session + (locked.GetKind() == Value::Kind::Text ? Cellar::SqlText("= %s") : Cellar::SqlText("= %t"));
}

double SecondsBetween(const COleDateTime& from, const COleDateTime& to)
{
    if (from.GetStatus() != COleDateTime::valid || to.GetStatus() != COleDateTime::valid)
        return std::numeric_limits<double>::quiet_NaN();
    return (to.GetOleDate() - from.GetOleDate()) * kSecondsADay;
}

} // namespace Locks

#pragma once

// Whether who has a lock still runs.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "Cellar/Connection.h"
#include "MorvUt/Export.h"

namespace Locks
{

// The kinds of locks in the names of marks.
inline constexpr char kTokenMark[] = "MorvUt.TokenLock", kUserMark[] = "MorvUt.UserLock",
                      kFeatureMark[] = "MorvUt.FeatureLock";

/// The names of the process marks (Shellkit::ProcessMark) that sessions of a database set for locks.
class MarkNames
{
public:
    explicit MarkNames(Cellar::CConnection& connection);
    /// `kind` is one of those above, `key` tells which lock of that kind.
    std::string Of(std::string_view kind, std::string_view key, std::int64_t session) const;

private:
    std::string m_database;
};
/// One of them.
MORVUT_API std::string MarkName(Cellar::CConnection& connection, std::string_view kind, std::string_view key,
                                std::int64_t session);

/// Of a holder that sets such a mark: it runs, or has ended; nothing when this computer cannot tell. That is so for
/// another workstation, and where the mark is not set but the workstation's name may be another's too, since it is as
/// long as names are cut ("Unknown" likewise).
std::optional<bool> RunsHere(const std::string& mark, const std::string& workstation);

/// The very row that was looked at, as a further condition: its key may have another row by now. Bind the session, then
/// `locked` unless it is null. Moments compare as what they were stored as.
Cellar::SqlText SameRow(const Cellar::Value& locked);

/// Not a number when one of them is not known.
double SecondsBetween(const COleDateTime& from, const COleDateTime& to);

/// Runs `action`, and again when the database is busy: a row that stays keeps everybody else out.
template<class Action>
void Insist(Action action)
{
    constexpr int kTries = 3; // each waits as long as a statement does
    for (int left = kTries - 1;; --left)
        try {
            return action();
        } catch (const Cellar::DatabaseError& error) {
            if (error.GetCategory() != Cellar::DatabaseError::Category::Busy || left == 0)
                throw;
        }
}

} // namespace Locks

#pragma once

// A row that locks something against other sessions and other workstations.

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include "Cellar/Connection.h"
#include "MorvUt/Export.h"
#include "Shellkit/ProcessMark.h"

/// The statements of one table of locks. Its primary key is the lock, its columns are strUserID, strWorkstation,
/// dtLocked and ConnectionID, which the database fills unless told. A negative ConnectionID is a session that has a
/// mark; other programs, which set none, leave it positive, 0 or null.
struct LockTable
{
    const char* mark;             // the kind of lock in the names of its process marks
    Cellar::SqlText insert;       // key, user, workstation
    Cellar::SqlText insertMarked; // the same and ConnectionID
    Cellar::SqlText select;       // key; the four columns, and as dtNow the moment by the clock of dtLocked
    Cellar::SqlText remove;       // key; further conditions follow
    double staleSeconds;          // older than that, a lock whose holder cannot be asked about was left behind
};

/// Who has a lock.
struct LockHolder
{
    std::string user, workstation;
};

/// One session's hold on one row: inserts it, or says who has it.
///
/// The holder sets a mark of this computer, by which its other programs see that it lives: such a lock is never
/// cleared, whatever its age, and one of this workstation whose mark is gone is cleared at once. Where that cannot be
/// told its age decides: another workstation, a session without a mark, and a workstation whose name may be another's
/// too, since it is as long as names are cut ("Unknown" likewise). Rows are written aside from open transactions: seen
/// at once, and no rollback takes them.
class MORVUT_API LockRow
{
public:
    explicit LockRow(const LockTable& table) noexcept : m_table(&table) {}
    LockRow(const LockRow& other) noexcept : m_table(other.m_table) {} // a copy holds nothing
    LockRow& operator=(const LockRow& other) noexcept;                 // nor does what is assigned to
    ~LockRow();                                                        // leaves the row in place

    bool IsHeld() const noexcept { return m_own.has_value(); }
    /// Clears a row that was left behind first. False when another has the lock, or this object already. Throws
    /// Cellar::DatabaseError, and std::logic_error once the connection's levels have begun.
    bool Take(Cellar::CConnection& connection, const Cellar::Value& key, const std::string& user);
    /// Removes the own row and no other: who outlasted its time may have been replaced. Throws as Take; the row is
    /// there then, but without its mark, and the next Take removes it first.
    void Release(Cellar::CConnection& connection);

    /// Whose row Take cleared, also one that threw afterwards; told once.
    std::optional<LockHolder> TakeCleared() noexcept { return std::exchange(m_cleared, std::nullopt); }
    /// Nothing when nobody has the lock.
    static std::optional<LockHolder> FindHolder(Cellar::CConnection& connection, const LockTable& table,
                                                const Cellar::Value& key);

private:
    struct Row
    {
        LockHolder holder;
        std::int64_t session = 0;
        Cellar::Value locked;
        double age = 0; // seconds; not a number: not known
    };
    static std::optional<Row> Read(Cellar::CConnection& connection, const LockTable& table, const Cellar::Value& key);
    std::string MarkOf(Cellar::CConnection& connection, const Cellar::Value& key, std::int64_t session) const;
    bool Insert(Cellar::CConnection& connection, const Cellar::Value& key, const std::string& user);
    bool IsLeftBehind(Cellar::CConnection& connection, const Cellar::Value& key, const Row& row) const;
    bool ClearLeftBehind(Cellar::CConnection& connection, const Cellar::Value& key);
    long Remove(Cellar::CConnection& connection, const Cellar::Value& key, const Row& row) const;

    const LockTable* m_table;
    Cellar::Value m_key;
    std::optional<Row> m_own;
    bool m_isGivenUp = false; // the own row, which could not be removed
    std::optional<LockHolder> m_cleared;
    Shellkit::ProcessMark m_mark;
};

#pragma once

// Lists of records: loaded for a key, walked, changed row by row.

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <optional>
#include <stdexcept>
#include <utility>
#include <vector>

#include "Cellar/Connection.h"
#include "Cellar/SqlText.h"
#include "Quarry/Export.h"
#include "Quarry/Row.h"
#include "Quarry/Table.h"
#include "Quarry/Where.h"

namespace Quarry
{

namespace Detail
{
enum class DataEvent;
} // namespace Detail

/// Another user changed, or deleted, the row since it was read.
class QUARRY_API ChangedByAnotherUser : public std::runtime_error
{
public:
    explicit ChangedByAnotherUser(const std::string& message);
    ~ChangedByAnotherUser() override;
};

/// When a server gets new rows that are saved within a transaction that has begun.
enum class Saving : bool
{
    Now,
    WithNext // with what is sent next, and others that wait, in one round trip (Cellar::CConnection::ExecuteLater)
};

/// The rows of one record class that fulfil all conditions, in the order asked for (nulls first, texts without regard
/// to case, a column named again is nothing), then by key. The list is a copy: what others do afterwards, and a
/// rollback, is not seen until it is opened again. All operations throw Cellar::DatabaseError. They work on the current
/// connection, or on the one that the list was told to use.
class QUARRY_API CDataList
{
public:
    explicit CDataList(const Table& table) noexcept;
    CDataList(const CDataList&) = default;
    CDataList& operator=(const CDataList&) = default;
    CDataList(CDataList&&) noexcept = default;
    CDataList& operator=(CDataList&&) noexcept = default;
    virtual ~CDataList();

    const Table& GetTable() const noexcept { return *m_table; }

    /// From now on the list reads and writes there. Rows that it holds stay: a row of one practice is not to be saved
    /// in another.
    void Use(Cellar::CConnection& connection);
    /// Throws Cellar::DatabaseError (LostConnection) when none is open, or the one in use was closed.
    Cellar::CConnection& Connection() const;

    /// Loads, and stands on the first row. False when there is none. Of chosen columns those that were not chosen must
    /// not be set in a row that was read; the key is read always.
    bool Open(std::initializer_list<Where> where = {}, std::initializer_list<Sort> sort = {}, const Take& take = {});
    /// On this connection, as after Use.
    bool Open(Cellar::CConnection& connection, std::initializer_list<Where> where = {},
              std::initializer_list<Sort> sort = {}, const Take& take = {});
    /// How many rows of the table fulfil all conditions; the list stays as it is.
    long Count(std::initializer_list<Where> where = {}) const;
    /// Throws ChangedByAnotherUser unless the rows that fulfil all conditions are now those of the list, as they were
    /// read or last saved; its new rows do not count. For rows that are seen together, as with their sum.
    void CheckStored(std::initializer_list<Where> where) const;

    bool MoveFirst() noexcept; // false when there is no row
    bool MoveNext() noexcept;  // false behind the last
    bool IsEOL() const noexcept { return m_at >= m_rows.size(); }
    int GetCount() const noexcept { return static_cast<int>(m_rows.size()); }
    int GetPosition() const noexcept { return static_cast<int>(m_at); }
    bool MoveTo(int position) noexcept;
    bool MoveToId(long id) noexcept;

    /// Appends a row and stands on it; it is saved by Update, and without that never existed. It has a new id (tables
    /// with another key: set it), the columns' defaults, and the values that the list was opened with (of conditions
    /// that leave no choice, and never the id).
    void AddNew();
    /// Appends a copy of the current row with a new id and stands on it; it is saved by Update. Throws std::logic_error
    /// for a row of chosen columns.
    void CopyRow();
    /// Saves the current row: inserts a new one, otherwise updates what changed. Stays on the row; the order of the
    /// list stays as it is. Throws ChangedByAnotherUser when the row is no longer as it was read. With
    /// Saving::WithNext an error of a new row (an id that is taken, a full disk) is told by a later call.
    void Update(Saving saving = Saving::Now);
    /// Saves all rows that are new or changed, all or none, the new ones with several in one statement; then tells the
    /// listeners of each, in the order of the rows. Throws ChangedByAnotherUser as Update; nothing is saved then, and
    /// all rows stay as they are.
    void UpdateAll(Saving saving = Saving::Now);
    /// Deletes the current row and stands on the next. Throws ChangedByAnotherUser when the row is no longer as it was
    /// read.
    void Delete();
    /// The current row has values that are not saved.
    bool IsDirty() const noexcept { return !IsEOL() && (m_rows[m_at].isNew || m_rows[m_at].stored); }

    /// The current row; throws std::logic_error behind the last.
    const Row& Current() const { return At().row; }
    long GetID() const { return Current().GetLong(0); }
    bool IsNew() const { return At().isNew; } // not saved yet
    const Cellar::Value& Get(int ordinal) const { return Current().Get(ordinal); }
    bool IsNull(int ordinal) const { return Get(ordinal).IsNull(); }
    /// Sets a value of the current row; setting an equal value changes nothing. Throws std::logic_error for an ordinal
    /// that the table has not or that was not chosen, and for the id of a row that is saved.
    void Set(int ordinal, Cellar::Value value);

private:
    friend class CDataCursor;
    struct Entry
    {
        Row row;
        std::shared_ptr<const Row> stored; // as read or last saved, when a value was set since
        bool isNew = false;
        bool isPart = false; // has the chosen columns only
    };
    struct Change // what listeners are told
    {
        Detail::DataEvent event;
        std::optional<Row> before, after;
    };
    using Changes = std::vector<Change>;

    const Entry& At() const
    {
        if (IsEOL())
            FailNoRow();
        return m_rows[m_at];
    }
    Entry& At() { return const_cast<Entry&>(std::as_const(*this).At()); }
    [[noreturn]] void FailNoRow() const;
    bool WasRead(const Column& column) const noexcept;
    void Append(Row row);
    void InsertRows(const std::vector<const Entry*>& entries, Saving saving) const;
    bool WriteChanged(const Entry& entry) const; // false when there is nothing to write
    void Note(Detail::DataEvent event, const Entry& entry, Changes& changes) const;
    void Tell(Changes changes) const;
    Row Whole(const Entry& entry) const;
    void Saved(Entry& entry) const noexcept;
    /// Appends the condition that names this very row as it was read.
    static void AppendIdentity(Cellar::SqlText& statement, std::vector<Cellar::Value>& values, const Row& row);

    const Table* m_table;
    std::optional<std::weak_ptr<Cellar::CConnection*>> m_connection; // nothing: the current one
    std::vector<std::pair<int, Cellar::Value>> m_given;              // what the last Open leaves no choice of
    std::vector<int> m_columns;                                      // chosen in the last Open; empty: all
    std::vector<Entry> m_rows;
    std::size_t m_at = 0;
};

} // namespace Quarry

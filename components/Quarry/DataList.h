#pragma once

// Lists of records: loaded for a key, walked, changed row by row.

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <stdexcept>
#include <vector>

#include "Cellar/SqlText.h"
#include "Quarry/Export.h"
#include "Quarry/Table.h"

namespace Quarry
{

/// The values of one row by ordinal; what listeners are given.
class QUARRY_API Row
{
public:
    explicit Row(const Table& table);
    const Table& GetTable() const noexcept { return *m_table; }
    /// NULL for an ordinal that the table has not.
    const Cellar::Value& Get(int ordinal) const noexcept;
    void Set(int ordinal, Cellar::Value value);

    long GetLong(int ordinal) const noexcept { return Cellar::ToLong(Get(ordinal)); }
    int GetInt(int ordinal) const noexcept { return static_cast<int>(Cellar::ToLong(Get(ordinal))); }
    short GetShort(int ordinal) const noexcept { return Cellar::ToShort(Get(ordinal)); }
    bool GetBool(int ordinal) const noexcept { return Cellar::ToLong(Get(ordinal)) != 0; }
    double GetDouble(int ordinal) const noexcept { return Cellar::ToDouble(Get(ordinal)); }
    CString GetText(int ordinal) const { return Cellar::ToText(Get(ordinal)); }
    Cellar::Bytes GetBinary(int ordinal) const { return Cellar::ToBytes(Get(ordinal)); }
    Kiln::CDate GetDate(int ordinal) const noexcept { return Cellar::ToDate(Get(ordinal)); }
    COleDateTime GetDateTime(int ordinal) const noexcept { return Cellar::ToDateTime(Get(ordinal)); }
    Kiln::CAmt GetAmount(int ordinal) const noexcept { return Cellar::ToAmount(Get(ordinal)); }

private:
    friend class CDataList;
    const Table* m_table;
    std::vector<Cellar::Value> m_values; // in the order of the table's columns
    long m_version = 0;
};

/// Another user changed, or deleted, the row since it was read.
class QUARRY_API ChangedByAnotherUser : public std::runtime_error
{
public:
    explicit ChangedByAnotherUser(const std::string& message);
    ~ChangedByAnotherUser() override;
};

/// A condition on the column of this ordinal.
class QUARRY_API Where
{
public:
    /// The column equals the value (NULL: is null).
    Where(int ordinal, Cellar::Value value);
    /// The column equals one of the numbers; with none no row fulfils it. At most 1000.
    static Where In(int ordinal, const std::vector<long>& numbers);
    /// The column holds the lID of a row of `parent` that fulfils all conditions, which are about the parent's columns
    /// and may go on to the parent's own parent. Throws std::logic_error for a parent of another key.
    static Where Under(int ordinal, const Table& parent, std::initializer_list<Where> conditions);

private:
    friend class CDataList;
    enum class Kind : std::uint8_t
    {
        Equal,
        In,
        Under
    };
    Where(int ordinal, Kind kind) noexcept : m_ordinal(ordinal), m_kind(kind) {}
    void AppendTo(Cellar::SqlText& statement, std::vector<Cellar::Value>& bound, const Table& table, bool first) const;

    int m_ordinal;
    Kind m_kind;
    std::vector<Cellar::Value> m_values;
    const Table* m_parent = nullptr;
    std::vector<Where> m_conditions;
};

struct Sort
{
    int ordinal;
    bool descending = false;
};

/// The rows of one record class that fulfil all conditions, in the order asked for (nulls first, texts without regard
/// to case, a column named again is nothing), then by key. The list is a copy: what others do afterwards, and a
/// rollback, is not seen until it is opened again. All operations work on the current connection and throw
/// Cellar::DatabaseError.
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

    /// Loads, and stands on the first row. False when there is none.
    bool Open(std::initializer_list<Where> where = {}, std::initializer_list<Sort> sort = {});

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
    /// Appends a copy of the current row with a new id and stands on it; it is saved by Update.
    void CopyRow();
    /// Saves the current row: inserts a new one, otherwise updates what changed. Stays on the row; the order of the
    /// list stays as it is. Throws ChangedByAnotherUser when the row is no longer as it was read.
    void Update();
    /// Deletes the current row and stands on the next. Throws ChangedByAnotherUser when the row is no longer as it was
    /// read.
    void Delete();
    /// The current row has values that are not saved.
    bool IsDirty() const noexcept;

    /// The current row; throws std::logic_error behind the last.
    const Row& Current() const;
    long GetID() const { return Current().GetLong(0); }
    bool IsNew() const; // not saved yet
    const Cellar::Value& Get(int ordinal) const { return Current().Get(ordinal); }
    bool IsNull(int ordinal) const { return Get(ordinal).IsNull(); }
    /// Sets a value of the current row; setting an equal value changes nothing. Throws std::logic_error for an ordinal
    /// that the table has not, and for the id of a row that is saved.
    void Set(int ordinal, Cellar::Value value);

private:
    struct Entry
    {
        Row row;
        std::optional<Row> stored; // as read or last saved, when a value was set since
        bool isNew = false;
    };
    Entry& At();
    void Insert(Entry& entry);
    void UpdateChanged(Entry& entry);
    /// Appends the condition that names this very row as it was read.
    static void AppendIdentity(Cellar::SqlText& statement, std::vector<Cellar::Value>& values, const Row& row);

    const Table* m_table;
    std::vector<Where> m_where; // of the last Open
    std::vector<Entry> m_rows;
    std::size_t m_at = 0;
};

} // namespace Quarry

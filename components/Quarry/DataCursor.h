#pragma once

// Records one after the other.

#include <initializer_list>
#include <memory>

#include "Quarry/DataList.h"
#include "Quarry/Export.h"

namespace Quarry
{

/// Walks forward over the rows that CDataList::Open would load, and holds one of them, however many there are. Stands
/// before the first. Nothing can be changed through it. While it walks, the engine keeps the state of the data that it
/// reads (Cellar::CRowCursor), so read quickly, without waiting for a user. The connection must stay open; all
/// operations throw Cellar::DatabaseError.
class QUARRY_API CDataCursor : public Cellar::RowReader<CDataCursor>
{
public:
    /// On the current connection. Chosen columns are read and no others, not even the key.
    explicit CDataCursor(const Table& table, std::initializer_list<Where> where = {},
                         std::initializer_list<Sort> sort = {}, const Take& take = {});
    CDataCursor(Cellar::CConnection& connection, const Table& table, std::initializer_list<Where> where = {},
                std::initializer_list<Sort> sort = {}, const Take& take = {});
    ~CDataCursor();
    CDataCursor(CDataCursor&& other) noexcept;
    CDataCursor& operator=(CDataCursor&& other) noexcept;

    /// Goes to the next row; false at the end, and then again.
    bool Next();
    /// Throws std::logic_error where there is no row.
    const Row& Current() const { return m_list.Current(); }
    const Cellar::Value& Get(int ordinal) const { return Current().Get(ordinal); }

protected:
    bool NextInto(CDataList& list); // which becomes a list of that row

private:
    struct Walk;
    CDataList m_list; // of one row
    std::unique_ptr<Walk> m_walk;
};

/// The same with the getters of a record class: `for (CCursor<CClient> client; client.Next();) client->GetName()`.
template<class Record>
class CCursor : private CDataCursor
{
public:
    explicit CCursor(std::initializer_list<Where> where = {}, std::initializer_list<Sort> sort = {},
                     const Take& take = {})
        : CDataCursor(Record::Declaration(), where, sort, take)
    {}
    explicit CCursor(Cellar::CConnection& connection, std::initializer_list<Where> where = {},
                     std::initializer_list<Sort> sort = {}, const Take& take = {})
        : CDataCursor(connection, Record::Declaration(), where, sort, take)
    {}
    bool Next() { return NextInto(m_record); }
    const Record& operator*() const noexcept { return m_record; }
    const Record* operator->() const noexcept { return &m_record; }

private:
    Record m_record;
};

} // namespace Quarry

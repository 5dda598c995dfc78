#pragma once

// The values of one row.

#include <vector>

#include "Cellar/Value.h"
#include "Quarry/Export.h"
#include "Quarry/Table.h"

namespace Quarry
{

/// The values of one row by ordinal; what listeners are given.
class QUARRY_API Row : public Cellar::RowReader<Row>
{
public:
    explicit Row(const Table& table);
    const Table& GetTable() const noexcept { return *m_table; }
    /// NULL for an ordinal that the table has not.
    const Cellar::Value& Get(int ordinal) const noexcept;
    void Set(int ordinal, Cellar::Value value);

private:
    friend class CDataList;
    friend class CDataCursor;
    long GetVersion() const noexcept { return Cellar::ToLong(m_values.back()); } // 0 where another program wrote NULL

    const Table* m_table;
    std::vector<Cellar::Value> m_values; // in the order of the table's columns; then, where it has one, the version
};

} // namespace Quarry

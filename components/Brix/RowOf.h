#pragma once

// One row of a record class, read by the names of its columns.

#include "Brix/Export.h"
#include "Quarry/DataList.h"

namespace Brix
{

namespace Detail
{

/// Throws std::logic_error when the row is of another table.
BRIX_API void RequireTable(const Quarry::Row& row, const Quarry::Table& table);

/// What the rows of all record classes have. It refers to the row, which must outlive it.
template<class Record>
class RowView
{
public:
    explicit RowView(const Quarry::Row& row) : m_row(&row) { RequireTable(row, Record::Declaration()); }

    const Quarry::Row& GetRow() const noexcept { return *m_row; }
    long GetID() const noexcept { return m_row->GetLong(0); }
    bool IsNull(int ordinal) const noexcept { return m_row->Get(ordinal).IsNull(); }

private:
    const Quarry::Row* m_row;
};

} // namespace Detail

/// For listeners and rules that are given a row: for each column `Xyz` of the record class there is GetXyz(), as the
/// class itself has it. `RowOf<CNewEmploy>(*change.newRow).GetGUID()`
template<class Record>
class RowOf;

} // namespace Brix

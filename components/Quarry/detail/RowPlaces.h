#pragma once

// Reading rows from where the engine has them.

#include <vector>

#include "Cellar/RowCursor.h"
#include "Quarry/Table.h"

namespace Quarry::Detail
{

/// Which column of a result goes to which value of a row.
class RowPlaces
{
public:
    /// All columns, then the version.
    explicit RowPlaces(const Table& table);
    /// `positions`: of the columns as they are read; that of the version is behind them all.
    RowPlaces(const Table& table, std::vector<std::size_t> positions);
    /// Reads the cursor's current row into `values`, in the one form that its columns have.
    void Read(Cellar::CRowCursor& cursor, std::vector<Cellar::Value>& values);

private:
    const Table& m_table;
    std::vector<std::size_t> m_positions;
    std::vector<Cellar::Value*> m_places;
};

} // namespace Quarry::Detail

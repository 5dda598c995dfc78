#include "Quarry/detail/RowPlaces.h"

#include <numeric>
#include <utility>

#include "Cellar/ValueTypes.h"

namespace Quarry::Detail
{
namespace
{

std::vector<std::size_t> AllPositions(const Table& table)
{
    std::vector<std::size_t> positions(table.columns.size() + (table.versioned ? 1 : 0));
    std::iota(positions.begin(), positions.end(), std::size_t{0});
    return positions;
}

} // namespace

RowPlaces::RowPlaces(const Table& table) : RowPlaces(table, AllPositions(table)) {}

RowPlaces::RowPlaces(const Table& table, std::vector<std::size_t> positions)
    : m_table(table), m_positions(std::move(positions)), m_places(m_positions.size())
{}

void RowPlaces::Read(Cellar::CRowCursor& cursor, std::vector<Cellar::Value>& values)
{
    for (std::size_t i = 0; i < m_positions.size(); ++i)
        m_places[i] = &values[m_positions[i]];
    cursor.ReadInto(m_places);
    for (const std::size_t position : m_positions)
        if (position < m_table.columns.size())
            Cellar::MakeCanonical(m_table.columns[position].type, values[position]);
}

} // namespace Quarry::Detail

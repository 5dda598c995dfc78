#include <limits>
#include <optional>

#include "Quarry/DataList.h"
#include "Quarry/detail/IdBlocks.h"
#include "Quarry/detail/TableText.h"
#include "Quarry/Session.h"

namespace Quarry
{
namespace
{

constexpr long kBlock = 32; // ids that a transaction takes at once

/// Moves the counter of the table `count` ids on; gives the last of them.
long TakeIds(Cellar::CConnection& connection, const Table& table, long count)
{
    const TableText& text = TextOf(table);
    if (connection.ExecuteDirectf(text.countUp, count, count, table.sqlName) == 0) {
        try {
            connection.ExecuteDirectf(text.startCount, table.sqlName, count);
        } catch (const Cellar::DatabaseError& error) {
            if (error.GetCategory() != Cellar::DatabaseError::Category::DuplicateKey)
                throw;
            connection.ExecuteDirectf(text.countUp, count, count, table.sqlName); // another workstation was first
        }
    }
    const Cellar::RowSet set =
        connection.Queryf("SELECT [lNext] FROM [BRIXNextID] WHERE [strTable] = %s", table.sqlName);
    const std::int64_t last = set.rows.empty() ? 0 : Cellar::ToInt64(set.rows[0][0]);
    if (last < count || last > std::numeric_limits<std::int32_t>::max())
        throw Cellar::DatabaseError(Cellar::DatabaseError::Category::Other, "",
                                    std::string(table.sqlName) + " has no free id left (the next would be " +
                                        std::to_string(last) + ")",
                                    std::string(text.countUp.View()));
    return static_cast<long>(last);
}

} // namespace

long NewId(const Table& table)
{
    if (TextOf(table).countUp.IsEmpty())
        throw std::logic_error(std::string(table.sqlName) + ": rows are not told apart by one number");
    Cellar::CConnection& connection = GetConnection();
    const Cellar::SuspendDirectSQLEvents quiet(connection);
    if (connection.GetLevel() == 0) {
        CTransaction transaction(Cellar::Intent::Write);
        const long id = TakeIds(connection, table, 1);
        transaction.Commit();
        return id;
    }
    IdBlock& block = BlockOf(table);
    if (block.left == 0 || block.epoch != connection.GetEpoch()) {
        block.left = 0;
        block.next = TakeIds(connection, table, kBlock) - kBlock + 1;
        block.left = kBlock;
        block.epoch = connection.GetEpoch();
    }
    --block.left;
    return block.next++;
}

} // namespace Quarry

#include "Quarry/NewId.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <limits>
#include <optional>
#include <stdexcept>
#include <string>

#include "Quarry/detail/Companion.h"
#include "Quarry/detail/TableText.h"
#include "Quarry/Session.h"

namespace Quarry
{
namespace
{

constexpr long kBlock = 32;    // ids that a transaction takes at once
constexpr long kMostAhead = 8; // blocks that a connection takes from a sequence before it needs them
constexpr std::int64_t kLargest = std::numeric_limits<std::int32_t>::max();

Cellar::RowSet ReadCounter(const Table& table, Cellar::CConnection& connection)
{
    return connection.Queryf("SELECT [lNext] FROM [BRIXNextID] WHERE [strTable] = %s", table.sqlName);
}

/// Moves the counter of the table `count` ids on, and gives the last of them. When there are not as many any more the
/// counter stays.
std::optional<long> TakeIds(Cellar::CConnection& connection, const Table& table, long count)
{
    const Detail::TableText& text = Detail::TextOf(table);
    const auto countUp = [&] { return connection.ExecuteDirectf(text.countUp, count, count, table.sqlName); };
    if (countUp() == 0 && !connection.AddUnlessThere(text.startCount, table.sqlName, count))
        countUp(); // another workstation was first
    const Cellar::RowSet set = ReadCounter(table, connection);
    const std::int64_t last = set.rows.empty() ? 0 : Cellar::ToInt64(set.rows[0][0]);
    if (last >= count && last <= kLargest)
        return static_cast<long>(last);
    connection.ExecuteDirectf("UPDATE [BRIXNextID] SET [lNext] = [lNext] - %ld WHERE [strTable] = %s", count,
                              table.sqlName);
    return std::nullopt;
}

[[noreturn]] void ThrowNoneLeft(const Table& table)
{
    throw Cellar::DatabaseError(Cellar::DatabaseError::Category::Other, "",
                                std::string(table.sqlName) + " has no free id left",
                                std::string(Detail::TextOf(table).countUp.View()));
}

[[noreturn]] void ThrowNoNumber(const Table& table, const Cellar::SqlText& asked)
{
    throw Cellar::DatabaseError(Cellar::DatabaseError::Category::Other, "",
                                "the server gives no number for a new row of " + std::string(table.sqlName) +
                                    "; ask its administrator for the right to the sequences of the database",
                                std::string(asked.View()));
}

/// Throws what NewId throws for a caller's mistake.
void CheckMayTake(const Table& table, const Cellar::CConnection& connection)
{
    if (Detail::TextOf(table).countUp.IsEmpty())
        throw std::logic_error(std::string(table.sqlName) + ": rows are not told apart by one number");
    if (connection.IsAside())
        throw std::logic_error(std::string(table.sqlName) + ": an id is taken aside from the transaction");
}

/// The transaction's block, with at least one id. A new one has `count`, or one where not as many are left.
Detail::IdBlock& BlockOf(const Table& table, Cellar::CConnection& connection, long wanted, long count)
{
    Detail::IdBlock& block = Detail::CompanionOf(connection).idBlocks[&table];
    if (block.left >= wanted && block.epoch == connection.GetEpoch())
        return block;
    block.left = 0;
    std::optional<long> last = TakeIds(connection, table, count);
    if (!last) // towards the end of the numbers one by one
        last = TakeIds(connection, table, count = 1);
    if (!last)
        ThrowNoneLeft(table);
    block = {*last - count + 1, count, connection.GetEpoch(), {}};
    return block;
}

/// On servers. Sequences stand outside of transactions: no rollback takes a block back, and nobody waits for it. Who
/// has used up as many takes as many again: a program that adds one row takes one block, one that fetches for a
/// practice seldom asks.
Detail::IdBlock& SequenceBlockOf(const Table& table, Cellar::CConnection& connection, long wanted)
{
    const Cellar::Dialect& dialect = connection.GetDialect();
    const long inBlock = dialect.IdsOfSequence();
    Detail::IdBlock& block = Detail::CompanionOf(connection).idBlocks[&table];
    const long there = block.left + static_cast<long>(block.further.size()) * inBlock;
    if (there < wanted) {
        const long blocks = std::max((wanted - there + inBlock - 1) / inBlock, std::min(block.taken, kMostAhead));
        block.taken += blocks;
        const Cellar::SqlText next = dialect.NextBlocks(table.sqlName);
        const Cellar::RowSet set = connection.Queryf(next, blocks);
        for (const auto& row : set.rows)
            if (const long first = Cellar::ToLong(row.at(0)); first > 0)
                block.further.push_back(first);
        if (block.left == 0 && block.further.empty())
            ThrowNoNumber(table, next);
        std::sort(block.further.begin(), block.further.end(), std::greater<>());
    }
    if (block.left == 0) {
        block.next = block.further.back();
        block.left = static_cast<long>(std::min<std::int64_t>(inBlock, kLargest - block.next + 1));
        block.further.pop_back();
    }
    return block;
}

bool HasSequences(const Cellar::CConnection& connection) noexcept
{
    return connection.GetDialect().IdsOfSequence() > 0;
}

} // namespace

long NewId(const Table& table) { return NewId(table, GetConnection()); }

long NewId(const Table& table, Cellar::CConnection& connection)
{
    CheckMayTake(table, connection);
    const Cellar::SuspendDirectSQLEvents quiet(connection);
    if (HasSequences(connection)) {
        Detail::IdBlock& block = SequenceBlockOf(table, connection, 1);
        --block.left;
        return block.next++;
    }
    if (connection.GetLevel() == 0) {
        Cellar::CTransaction transaction(connection, Cellar::Intent::Write);
        const std::optional<long> id = TakeIds(connection, table, 1);
        if (!id)
            ThrowNoneLeft(table);
        transaction.Commit();
        return *id;
    }
    Detail::IdBlock& block = BlockOf(table, connection, 1, kBlock);
    --block.left;
    return block.next++;
}

void ReserveIds(const Table& table, long count, Cellar::CConnection& connection)
{
    CheckMayTake(table, connection);
    if (connection.GetLevel() == 0)
        throw std::logic_error(std::string(table.sqlName) + ": ids are reserved outside a transaction");
    const Cellar::SuspendDirectSQLEvents quiet(connection);
    if (HasSequences(connection))
        SequenceBlockOf(table, connection, count);
    else
        BlockOf(table, connection, count, std::max(count, kBlock));
}

long LastId(const Table& table, Cellar::CConnection& connection)
{
    CheckMayTake(table, connection);
    const Cellar::RowSet set = HasSequences(connection)
                                   ? connection.Query(connection.GetDialect().LastOfSequence(table.sqlName), {})
                                   : ReadCounter(table, connection);
    return set.rows.empty() ? 0 : Cellar::ToLong(set.rows[0].at(0));
}

void SkipIds(const Table& table, long last, Cellar::CConnection& connection)
{
    CheckMayTake(table, connection);
    const Cellar::SuspendDirectSQLEvents quiet(connection);
    if (HasSequences(connection))
        return connection.Script(connection.GetDialect().MoveSequence(table.sqlName, table.GetCounted()->name, last));
    connection.ExecuteDirectf("INSERT INTO [BRIXNextID] ([strTable], [lNext]) SELECT %s, 0 WHERE NOT EXISTS "
                              "(SELECT 1 FROM [BRIXNextID] WHERE [strTable] = %s)",
                              table.sqlName, table.sqlName);
    connection.ExecuteDirectf("UPDATE [BRIXNextID] SET [lNext] = %ld WHERE [strTable] = %s AND [lNext] < %ld", last,
                              table.sqlName, last);
}

} // namespace Quarry

#pragma once

// Which rows, in which order, and what of them.

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <utility>
#include <vector>

#include "Cellar/Value.h"
#include "Quarry/Export.h"
#include "Quarry/Table.h"

namespace Quarry
{

namespace Detail
{
class Selection;
}

/// A condition on the column of this ordinal. A null fulfils none but that of being null.
class QUARRY_API Where
{
public:
    /// The column equals the value (NULL: is null); texts without regard to case.
    Where(int ordinal, Cellar::Value value) : Where(ordinal, Kind::Equal, std::move(value)) {}
    static Where NotNull(int ordinal) { return {ordinal, Kind::NotNull, {}}; }
    // Texts are compared as the database sorts them. A NULL to compare with is fulfilled by no row.
    static Where Less(int ordinal, Cellar::Value than) { return {ordinal, Kind::Less, std::move(than)}; }
    static Where AtMost(int ordinal, Cellar::Value limit) { return {ordinal, Kind::AtMost, std::move(limit)}; }
    static Where Greater(int ordinal, Cellar::Value than) { return {ordinal, Kind::Greater, std::move(than)}; }
    static Where AtLeast(int ordinal, Cellar::Value limit) { return {ordinal, Kind::AtLeast, std::move(limit)}; }
    /// From `first` to `last`, both included.
    static Where Between(int ordinal, Cellar::Value first, Cellar::Value last);
    /// The column equals one of the numbers; with none no row fulfils it. At most 1000, which throws std::logic_error
    /// otherwise: InPieces.
    static Where In(int ordinal, const std::vector<long>& numbers);
    /// Any number of numbers, in pieces that In takes, for a statement each.
    static std::vector<std::vector<long>> InPieces(const std::vector<long>& numbers);
    /// The column holds the lID of a row of `parent` that fulfils all conditions, which are about the parent's columns
    /// and may go on to the parent's own parent. Throws std::logic_error for a parent of another key.
    static Where Under(int ordinal, const Table& parent, std::initializer_list<Where> conditions);
    /// The same of the first of those rows alone, the one of the smallest lID.
    static Where UnderFirst(int ordinal, const Table& parent, std::initializer_list<Where> conditions);

private:
    friend class Detail::Selection;
    friend class CDataList;
    enum class Kind : std::uint8_t
    {
        Equal,
        NotNull,
        Less,
        AtMost,
        Greater,
        AtLeast,
        Between,
        In,
        Under,
        UnderFirst
    };
    struct More // what few conditions have
    {
        std::vector<Cellar::Value> values; // of In; the last of Between
        const Table* parent = nullptr;
        std::vector<Where> conditions;
    };
    Where(int ordinal, Kind kind, Cellar::Value value) noexcept
        : m_ordinal(ordinal), m_kind(kind), m_value(std::move(value))
    {}

    static Where OfParent(int ordinal, Kind kind, const Table& parent, std::initializer_list<Where> conditions);
    /// The one value that the column must have; null when there is a choice.
    const Cellar::Value* OnlyValue() const noexcept;

    int m_ordinal;
    Kind m_kind;
    Cellar::Value m_value;
    std::shared_ptr<const More> m_more;
};

struct Sort
{
    int ordinal;
    bool descending = false;
};

/// What of the rows is read.
struct Take
{
    std::vector<int> columns = {}; // their ordinals; the others read as NULL. Empty: all
    int first = 0;                 // so many rows, the first ones of the order. 0: all
};

} // namespace Quarry

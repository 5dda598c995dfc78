#include "Quarry/Where.h"

#include <algorithm>
#include <stdexcept>
#include <string>
#include <string_view>

namespace Quarry
{

Where Where::Between(int ordinal, Cellar::Value first, Cellar::Value last)
{
    Where where(ordinal, Kind::Between, std::move(first));
    where.m_more = std::make_shared<More>(More{{std::move(last)}, nullptr, {}});
    return where;
}

namespace
{

constexpr std::size_t kMostNumbers = 1000; // SQL Server takes 2100 parameters

} // namespace

Where Where::In(int ordinal, const std::vector<long>& numbers)
{
    if (numbers.size() > kMostNumbers)
        throw std::logic_error("more than 1000 values in one condition");
    Where where(ordinal, Kind::In, {});
    where.m_more = std::make_shared<More>(More{{numbers.begin(), numbers.end()}, nullptr, {}});
    return where;
}

std::vector<std::vector<long>> Where::InPieces(const std::vector<long>& numbers)
{
    std::vector<std::vector<long>> pieces;
    for (auto rest = numbers.begin(); rest != numbers.end();) {
        const auto end = rest + std::min<std::ptrdiff_t>(kMostNumbers, numbers.end() - rest);
        pieces.emplace_back(rest, end);
        rest = end;
    }
    return pieces;
}

Where Where::Under(int ordinal, const Table& parent, std::initializer_list<Where> conditions)
{
    return OfParent(ordinal, Kind::Under, parent, conditions);
}

Where Where::UnderFirst(int ordinal, const Table& parent, std::initializer_list<Where> conditions)
{
    return OfParent(ordinal, Kind::UnderFirst, parent, conditions);
}

Where Where::OfParent(int ordinal, Kind kind, const Table& parent, std::initializer_list<Where> conditions)
{
    if (std::string_view(parent.key) != "lID")
        throw std::logic_error(std::string(parent.sqlName) + ": its rows are not told apart by lID");
    Where where(ordinal, kind, {});
    where.m_more = std::make_shared<More>(More{{}, &parent, conditions});
    return where;
}

const Cellar::Value* Where::OnlyValue() const noexcept
{
    if (m_kind == Kind::Equal)
        return &m_value;
    return m_kind == Kind::In && m_more->values.size() == 1 ? &m_more->values.front() : nullptr;
}

} // namespace Quarry

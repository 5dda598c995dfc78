#pragma once

// The tables of placeholders and column types.

#include <span>
#include <string_view>

#include "Cellar/Dialect.h"
#include "Cellar/ValueTypes.h"

namespace Cellar::Detail
{

/// What a placeholder takes, besides NULL.
struct PlaceholderRule
{
    std::string_view text;
    Placeholder::Type type;
    const char* wanted; // for a message
    bool (*fits)(const Value& value) noexcept;
};

/// What columns of one type hold.
struct ColumnRule
{
    ColumnType type;
    SqlText placeholder;
    void (*convert)(Value& value); // to the kind that the type has, where the value can be read as that
    const char* sqlite;            // how each database declares it
    const char* postgres;
    const char* sqlServer;
};

const PlaceholderRule& RuleOf(Placeholder::Type type) noexcept;
const ColumnRule& RuleOf(ColumnType type) noexcept;
std::span<const PlaceholderRule> PlaceholderRules() noexcept;

} // namespace Cellar::Detail

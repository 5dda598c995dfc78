#pragma once

// What holds for all values of one column type.

#include <array>

#include "Cellar/Export.h"
#include "Cellar/SqlText.h"
#include "Cellar/Value.h"

namespace Cellar
{

/// What values of the type are in their one form, but for NULL.
constexpr Value::Kind KindOf(ColumnType type) noexcept
{
    using Kind = Value::Kind;
    constexpr std::array kKinds{Kind::Integer, Kind::Integer,  Kind::Integer, Kind::Text, Kind::Binary,
                                Kind::Date,    Kind::DateTime, Kind::Money,   Kind::Real}; // in the order of ColumnType
    return kKinds[static_cast<std::size_t>(type)];
}

/// The placeholder that binds a value of this type in a statement: "%ld".
CELLAR_API const SqlText& PlaceholderOf(ColumnType type) noexcept;

namespace Detail
{
CELLAR_API void Convert(ColumnType type, Value& value);
}

/// Gives the value the one form that its column's type has (money as money, dates as ISO text), so that equal values
/// compare equal whatever the driver or the caller gave. What cannot be read as the type stays as it is.
inline void MakeCanonical(ColumnType type, Value& value)
{
    if (!value.IsNull() && value.GetKind() != KindOf(type))
        Detail::Convert(type, value);
}

} // namespace Cellar

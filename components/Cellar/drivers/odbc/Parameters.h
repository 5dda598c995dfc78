#pragma once

// The values of a statement on their way to the server.

#include <span>
#include <string>
#include <vector>

#include "Cellar/Dialect.h"
#include "Cellar/drivers/odbc/Handles.h"
#include "Cellar/Value.h"

namespace Cellar::Odbc
{

/// Holds what is bound to a statement until it has run. Each is bound with the type of its placeholder, NULL too.
class Parameters
{
public:
    explicit Parameters(const std::vector<Placeholder>& placeholders) : m_bound(placeholders.size())
    {
        for (std::size_t i = 0; i < placeholders.size(); ++i)
            m_bound[i].type = placeholders[i].type;
    }
    /// False when the driver refuses, which then says why. Throws DatabaseError (Constraint) for a text with a NUL,
    /// which servers cut or refuse.
    bool Bind(SQLHSTMT statement, std::span<const Value> values);
    /// Gives the memory of long values back.
    void Forget() noexcept;

private:
    struct Bound
    {
        Placeholder::Type type{};
        SQLLEN length = 0;
        union {
            SQLINTEGER integer;
            SQLBIGINT large = 0;
            SQL_TIMESTAMP_STRUCT moment;
        };
        std::u16string wide;
        std::string narrow;
    };
    static SQLRETURN BindOne(SQLHSTMT statement, SQLUSMALLINT place, Bound& bound, const Value& value);
    std::vector<Bound> m_bound;
};

} // namespace Cellar::Odbc

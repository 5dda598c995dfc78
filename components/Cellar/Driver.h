#pragma once

// The port behind which a database engine stands.

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "Cellar/Export.h"
#include "Cellar/Value.h"

namespace Cellar
{

/// All rows of a result, read at once.
struct RowSet
{
    std::vector<std::string> columns; // as the database names them
    std::vector<std::vector<Value>> rows;
};

/// One open session. Statements are in the engine's own dialect, with '?' for each bound value.
/// Every operation throws DatabaseError; `statement` in it is filled by the connection.
class CELLAR_API Driver
{
public:
    virtual ~Driver();
    /// Rows changed (0 where the engine does not tell). Prepared statements are kept by their text.
    virtual long Execute(std::string_view statement, const std::vector<Value>& values) = 0;
    virtual RowSet Query(std::string_view statement, const std::vector<Value>& values) = 0;
    /// Several statements at once, none with values (schema).
    virtual void Script(std::string_view statements) = 0;
    /// The number that marks this session in lock rows.
    virtual std::int64_t GetSessionId() = 0;
    /// The engine has a transaction open (it may have rolled back by itself).
    virtual bool InTransaction() = 0;
};

} // namespace Cellar

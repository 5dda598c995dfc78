#pragma once

// What servers have each their own way of.

#include <cstdint>
#include <string>
#include <string_view>

#include "Cellar/Connection.h"
#include "Cellar/ConnectionText.h"
#include "Cellar/Dialect.h"

namespace Cellar::Odbc
{

struct ServerRules
{
    std::string_view product; // as the driver names it
    const Dialect& (*dialect)();
    const char* settings;                          // of the driver, for the connection text
    const char* begin;                             // of a transaction
    const char* beginMoment;                       // of one that reads the state of one moment
    const char* commit;                            // of a transaction
    const char* rollback;                          // likewise
    const char* savepoint;                         // a name follows
    const char* release;                           // a name follows; null: savepoints end with the transaction
    const char* rollbackTo;                        // a name follows
    const char* session;                           // a query for the session's number
    std::string (*waitFor)(unsigned milliseconds); // for another's lock, from now on
    /// Locks the practice, or one subject of it, against others who mean to write there, until the transaction ends.
    std::string (*lock)(const Subject& subject);
    /// A failed statement ends the transaction, but for what a savepoint keeps.
    bool failureEndsTransaction;
    /// A query that gives 0 when the server has ended the transaction with a failed statement; null: see above.
    const char* transactions;
    /// Behind an INSERT of one row of values: a key that is there already inserts nothing instead of failing; null: it
    /// cannot be said.
    const char* unlessThere;
    /// Large results are read through cursors of the server; otherwise the driver reads as it is asked.
    bool declaresCursors;
};

/// Null for a server that is not known.
const ServerRules* FindServer(std::string_view product) noexcept;
/// What the driver must be told before it is asked.
const char* SettingsFor(const ServerText& text);

} // namespace Cellar::Odbc

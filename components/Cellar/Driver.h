#pragma once

// The port behind which a database engine stands.

#include <functional>
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

class Dialect;

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
    virtual const Dialect& GetDialect() const noexcept = 0;
    /// How long a statement waits for another connection's lock before it is refused as busy.
    virtual void SetBusyTimeout(unsigned milliseconds) = 0;

    /// Begins a transaction that may write; a busy one changes nothing.
    virtual void BeginWrite() = 0;
    virtual void Commit() = 0;
    virtual void Rollback() = 0;
    virtual void SetSavepoint(int level);
    virtual void ReleaseSavepoint(int level);
    virtual void RollbackToSavepoint(int level); // and releases it
    /// The engine has a transaction open (it may have rolled back by itself).
    virtual bool InTransaction() = 0;
    virtual std::string KeepPrivate() { return {}; } // see CConnection
    /// Told of each statement that the engine runs; null: nobody.
    virtual void OnSent(std::function<void(std::string_view statement)> hook) = 0;
};

enum class Create
{
    No,
    IfMissing, // a missing or empty file becomes a new database, its owner's alone
    ForGroup   // the same, and the folder's group reads and writes it
};

/// Opens what a connection text names, with the driver that its beginning names.
struct OpenedDriver
{
    std::unique_ptr<Driver> driver;
    std::string connectionText; // without passwords
};
CELLAR_API OpenedDriver OpenDriver(std::string_view connectionText, Create create);

} // namespace Cellar

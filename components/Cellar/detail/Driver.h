#pragma once

// The port behind which a database engine stands, in a module of its own.

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "Cellar/Connection.h"
#include "Cellar/Dialect.h"
#include "Cellar/Export.h"
#include "Cellar/ServerState.h"
#include "Cellar/Value.h"

namespace Cellar::Detail
{

/// A statement that the engine has compiled. It is used again and again, by one caller at a time; the values must live
/// until it is closed. Every operation but Close throws DatabaseError.
class CELLAR_API CompiledStatement
{
public:
    CompiledStatement() = default;
    virtual ~CompiledStatement();
    CompiledStatement(const CompiledStatement&) = delete;
    CompiledStatement& operator=(const CompiledStatement&) = delete;

    /// Runs it to its end. Rows changed; 0 where the engine does not tell.
    virtual long Execute(std::span<const Value> values) = 0;
    /// Begins a result, before its first row.
    virtual void Open(std::span<const Value> values, Reading reading) = 0;
    virtual bool Step() = 0;                           // to the next row; false at the end
    virtual int GetColumnCount() = 0;                  // after the first Step
    virtual std::string GetColumnName(int column) = 0; // likewise
    /// The first columns of the current row, one for each pointer. Once for each row.
    virtual void Read(std::span<Value* const> row) = 0;
    /// Ends a result: no lock stays, and no value is held any more.
    virtual void Close() noexcept = 0;
};

/// One open session. Texts are in the engine's own dialect. Every operation throws DatabaseError; `statement` in it is
/// filled by the connection.
class CELLAR_API Driver
{
public:
    Driver() = default;
    virtual ~Driver();
    Driver(const Driver&) = delete;
    Driver& operator=(const Driver&) = delete;

    /// With '?' for each value, whose types are known: engines refuse a NULL of no type for some columns. The statement
    /// must end before the driver does.
    virtual std::unique_ptr<CompiledStatement> Compile(const PreparedText& prepared) = 0;
    /// Several statements at once, none with values (schema).
    virtual void Script(std::string_view statements) = 0;
    /// The number that marks this session in lock rows.
    virtual std::int64_t GetSessionId() = 0;
    virtual const Dialect& GetDialect() const noexcept = 0;
    virtual ServerProduct GetServer() { return {}; }
    /// How long a statement waits for another connection's lock before it is refused as busy.
    virtual void SetBusyTimeout(unsigned milliseconds) = 0;

    /// Begins a transaction that may write; a busy one changes nothing.
    virtual void BeginWrite() = 0;
    /// Within it: keeps others out who mean to write to the same. Where the transaction itself does, there is nothing
    /// to do.
    virtual void LockForWriting(const Subject&) {}
    virtual void BeginMoment() = 0; // reads are of one moment until it ends
    virtual void EndMoment() = 0;
    virtual void Commit() = 0;
    virtual void Rollback() = 0;
    virtual void SetSavepoint(int level) = 0;
    virtual void ReleaseSavepoint(int level) = 0;
    virtual void RollbackToSavepoint(int level) = 0; // and releases it
    /// The engine has a transaction open (it may have rolled back by itself).
    virtual bool InTransaction() = 0;
    virtual std::string KeepPrivate() { return {}; }  // see CConnection
    virtual void CopyTo(const std::string& file) = 0; // see CConnection
    /// Told of each statement that the engine runs; null: nobody.
    virtual void OnSent(std::function<void(std::string_view statement)> hook) = 0;
};

/// Opens what a connection text names, with the driver that its beginning names.
struct OpenedDriver
{
    std::unique_ptr<Driver> driver;
    std::string connectionText; // without passwords
};
OpenedDriver OpenDriver(std::string_view connectionText, Create create);

} // namespace Cellar::Detail

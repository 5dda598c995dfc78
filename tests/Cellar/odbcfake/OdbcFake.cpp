// An ODBC driver whose server is a script (Script.h): what SQL Server answers where there is none. It is loaded by the
// driver manager by its path and takes texts in UTF-16 as that server's driver does:
//
//     Driver=/path/libmorvodbcfake.so;Script=/path/script;Record=/path/record;Uid=…;Pwd=…
//
// Each call that reaches it is a line of the record: the function, then what it was given, bytes left out. As that
// server does it refuses a second statement while a result is open, columns read out of order, and everything once the
// connection is lost.
//
// It has the functions that the library and the driver manager call, and their arguments are those that these give.

#include <sql.h>
#include <sqlext.h>
#include <sqlucode.h>

#include <algorithm>
#include <cstring>
#include <deque>
#include <exception>
#include <map>
#include <memory>
#include <set>
#include <string>

#include "Session.h"
#include "Values.h"

namespace OdbcFake
{
namespace
{

struct Handle
{
    std::deque<Message> messages; // of the last call

    SQLRETURN Fail(Message message)
    {
        messages.push_back(std::move(message));
        return SQL_ERROR;
    }
};

struct Statement;

struct Connection : Handle
{
    std::unique_ptr<Session> session;
    Statement* reading = nullptr;    // has a result open
    std::set<Statement*> statements; // end with the connection, as every driver's do
};

struct Statement : Handle
{
    explicit Statement(Connection& of) : connection(of) { connection.statements.insert(this); }
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;
    ~Statement()
    {
        CloseResult();
        connection.statements.erase(this);
    }

    Session& Server() const { return *connection.session; }
    void CloseResult()
    {
        if (connection.reading == this)
            connection.reading = nullptr;
        answer = {};
        at = -1;
        readings.clear();
    }

    Connection& connection;
    std::string text;
    std::map<SQLUSMALLINT, Binding> bindings;
    Answer answer;
    long at = -1; // the row
    SQLUSMALLINT lastColumn = 0;
    bool isCopied = false; // its result stays with the server, which may be asked for something else meanwhile
    std::map<SQLUSMALLINT, Reading> readings;
    int descriptors[4] = {}; // their addresses are handles that nobody looks into
};

template<class T>
T& As(SQLHANDLE handle)
{
    T& object = *static_cast<T*>(handle);
    object.messages.clear();
    return object;
}

/// Writes a text in UTF-16; `capacity` and `length` in characters.
SQLRETURN Put(std::string_view text, SQLWCHAR* to, SQLLEN capacity, SQLSMALLINT* length)
{
    const std::u16string wide = ToUtf16(text);
    if (length)
        *length = static_cast<SQLSMALLINT>(wide.size());
    if (!to || capacity <= 0)
        return SQL_SUCCESS;
    const std::size_t given = std::min(wide.size(), static_cast<std::size_t>(capacity - 1));
    std::memcpy(to, wide.data(), given * 2);
    to[given] = 0;
    return given < wide.size() ? SQL_SUCCESS_WITH_INFO : SQL_SUCCESS;
}

template<class T>
SQLRETURN PutNumber(SQLPOINTER to, T value)
{
    if (to)
        std::memcpy(to, &value, sizeof value);
    return SQL_SUCCESS;
}

/// Sends the text of a statement and takes what the server answers.
SQLRETURN Run(Statement& statement)
{
    Connection& connection = statement.connection;
    Session& server = statement.Server();
    const std::vector<std::string> tokens = Tokens(statement.text);
    for (SQLUSMALLINT number = 1; number <= std::count(tokens.begin(), tokens.end(), "?"); ++number) {
        const auto found = statement.bindings.find(number);
        if (found == statement.bindings.end())
            return statement.Fail({"07002", 0, "COUNT field incorrect or syntax error"});
        server.Record("  " + std::to_string(number) + ": " + Describe(found->second));
    }
    if (connection.reading && server.IsSqlServer())
        return statement.Fail({"HY000", 0, "Connection is busy with results for another command"});
    statement.CloseResult();
    statement.answer = server.Run(statement.text);
    const Answer& answer = statement.answer;
    if (answer.info)
        statement.messages.push_back(*answer.info);
    if (answer.error && !answer.isLater)
        return statement.Fail(*answer.error);
    if (!answer.columns.empty()) {
        if (!statement.isCopied)
            connection.reading = &statement;
    } else if (answer.count == 0 && !answer.isLater) {
        return SQL_NO_DATA; // a searched UPDATE or DELETE
    }
    return answer.info ? SQL_SUCCESS_WITH_INFO : SQL_SUCCESS;
}

} // namespace
} // namespace OdbcFake

using namespace OdbcFake;

extern "C" {

SQLRETURN SQL_API SQLAllocHandle(SQLSMALLINT type, SQLHANDLE parent, SQLHANDLE* handle)
{
    if (type == SQL_HANDLE_ENV)
        *handle = new Handle;
    else if (type == SQL_HANDLE_DBC)
        *handle = new Connection;
    else
        *handle = new Statement(As<Connection>(parent));
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLFreeHandle(SQLSMALLINT type, SQLHANDLE handle)
{
    if (type == SQL_HANDLE_ENV)
        delete static_cast<Handle*>(handle);
    else if (type == SQL_HANDLE_DBC)
        delete static_cast<Connection*>(handle);
    else
        delete static_cast<Statement*>(handle);
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLSetEnvAttr(SQLHENV, SQLINTEGER, SQLPOINTER, SQLINTEGER) { return SQL_SUCCESS; }

SQLRETURN SQL_API SQLDriverConnectW(SQLHDBC handle, SQLHWND, SQLWCHAR* text, SQLSMALLINT length, SQLWCHAR*, SQLSMALLINT,
                                    SQLSMALLINT*, SQLUSMALLINT)
{
    auto& connection = As<Connection>(handle);
    const std::string wanted = ToUtf8(text, length);
    try {
        connection.session = std::make_unique<Session>(wanted);
    } catch (const std::exception& error) {
        return connection.Fail({"HY000", 0, error.what()});
    }
    connection.session->Record("SQLDriverConnect " + wanted);
    if (Answer answer = connection.session->Run("CONNECT"); answer.error)
        return connection.Fail(std::move(*answer.error));
    if (!connection.session->IsSqlServer())
        return SQL_SUCCESS;
    connection.messages.push_back({"01000", 5701, "Changed database context to 'Practice'."});
    return SQL_SUCCESS_WITH_INFO; // as with every connection
}

SQLRETURN SQL_API SQLDisconnect(SQLHDBC handle)
{
    auto& connection = As<Connection>(handle);
    connection.session->Record("SQLDisconnect");
    while (!connection.statements.empty())
        delete *connection.statements.begin();
    connection.session.reset();
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLGetInfoW(SQLHDBC handle, SQLUSMALLINT type, SQLPOINTER value, SQLSMALLINT capacity,
                              SQLSMALLINT* length)
{
    auto& connection = As<Connection>(handle);
    if (type != SQL_DBMS_NAME && type != SQL_DRIVER_ODBC_VER)
        return connection.Fail({"HY096", 0, "Information type out of range"});
    const SQLRETURN result = Put(type == SQL_DBMS_NAME ? connection.session->GetDbms() : "03.80",
                                 static_cast<SQLWCHAR*>(value), capacity / 2, length);
    if (length)
        *length = static_cast<SQLSMALLINT>(*length * 2);
    return result;
}

SQLRETURN SQL_API SQLSetConnectAttrW(SQLHDBC, SQLINTEGER, SQLPOINTER, SQLINTEGER) { return SQL_SUCCESS; }

SQLRETURN SQL_API SQLSetStmtAttrW(SQLHSTMT handle, SQLINTEGER attribute, SQLPOINTER value, SQLINTEGER)
{
    if (attribute == SQL_ATTR_CURSOR_TYPE)
        As<Statement>(handle).isCopied = reinterpret_cast<std::uintptr_t>(value) == SQL_CURSOR_STATIC;
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLGetStmtAttrW(SQLHSTMT handle, SQLINTEGER attribute, SQLPOINTER value, SQLINTEGER, SQLINTEGER*)
{
    auto& statement = As<Statement>(handle);
    if (attribute >= SQL_ATTR_APP_ROW_DESC && attribute <= SQL_ATTR_IMP_PARAM_DESC) // the driver manager wants them
        return PutNumber(value, static_cast<void*>(&statement.descriptors[attribute - SQL_ATTR_APP_ROW_DESC]));
    return PutNumber(value, SQLULEN{0});
}

SQLRETURN SQL_API SQLPrepareW(SQLHSTMT handle, SQLWCHAR* text, SQLINTEGER length)
{
    auto& statement = As<Statement>(handle);
    statement.text = ToUtf8(text, length);
    statement.Server().Record("SQLPrepare " + statement.text); // the server sees it with the first execution
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLExecDirectW(SQLHSTMT handle, SQLWCHAR* text, SQLINTEGER length)
{
    auto& statement = As<Statement>(handle);
    statement.text = ToUtf8(text, length);
    statement.Server().Record("SQLExecDirect " + statement.text);
    return Run(statement);
}

SQLRETURN SQL_API SQLExecute(SQLHSTMT handle)
{
    auto& statement = As<Statement>(handle);
    statement.Server().Record("SQLExecute " + statement.text);
    return Run(statement);
}

SQLRETURN SQL_API SQLBindParameter(SQLHSTMT handle, SQLUSMALLINT number, SQLSMALLINT, SQLSMALLINT cType,
                                   SQLSMALLINT sqlType, SQLULEN size, SQLSMALLINT digits, SQLPOINTER value, SQLLEN,
                                   SQLLEN* length)
{
    As<Statement>(handle).bindings[number] = {cType, sqlType, digits, size, value, length};
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLNumResultCols(SQLHSTMT handle, SQLSMALLINT* count)
{
    *count = static_cast<SQLSMALLINT>(As<Statement>(handle).answer.columns.size());
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLDescribeColW(SQLHSTMT handle, SQLUSMALLINT number, SQLWCHAR* name, SQLSMALLINT capacity,
                                  SQLSMALLINT* length, SQLSMALLINT* type, SQLULEN* size, SQLSMALLINT* digits,
                                  SQLSMALLINT* nullable)
{
    const Column& column = As<Statement>(handle).answer.columns.at(number - 1u);
    const ColumnShape& shape = ShapeOf(column.type);
    *type = shape.sqlType;
    *size = shape.size;
    *digits = shape.digits;
    *nullable = SQL_NULLABLE;
    return Put(column.name, name, capacity, length);
}

SQLRETURN SQL_API SQLRowCount(SQLHSTMT handle, SQLLEN* count)
{
    auto& statement = As<Statement>(handle);
    *count = statement.answer.columns.empty() ? statement.answer.count : -1;
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLFetch(SQLHSTMT handle)
{
    auto& statement = As<Statement>(handle);
    if (statement.answer.columns.empty())
        return statement.Fail({"24000", 0, "Invalid cursor state"});
    statement.readings.clear();
    statement.lastColumn = 0;
    if (++statement.at < static_cast<long>(statement.answer.rows.size()))
        return SQL_SUCCESS;
    if (statement.connection.reading == &statement)
        statement.connection.reading = nullptr; // the server has nothing more to send
    if (statement.answer.error && statement.answer.isLater)
        return statement.Fail(*statement.answer.error);
    return SQL_NO_DATA;
}

SQLRETURN SQL_API SQLGetData(SQLHSTMT handle, SQLUSMALLINT number, SQLSMALLINT cType, SQLPOINTER buffer,
                             SQLLEN capacity, SQLLEN* length)
{
    auto& statement = As<Statement>(handle);
    const Answer& answer = statement.answer;
    const auto row = static_cast<std::size_t>(statement.at);
    if (statement.at < 0 || row >= answer.rows.size())
        return statement.Fail({"24000", 0, "Invalid cursor state"});
    const bool isBehind = statement.Server().IsSqlServer() && number < statement.lastColumn;
    if (isBehind || number == 0 || number > answer.rows[row].size())
        return statement.Fail({"07009", 0, "Invalid Descriptor Index"});
    statement.lastColumn = number;
    const SQLRETURN result = Give(answer.rows[row][number - 1u], statement.readings[number], cType, buffer, capacity,
                                  length, answer.hidesLength);
    if (result == SQL_SUCCESS_WITH_INFO)
        statement.messages.push_back({"01004", 0, "String data, right truncation"});
    else if (result == SQL_ERROR)
        return statement.Fail({"07006", 0, "Restricted data type attribute violation"});
    return result;
}

SQLRETURN SQL_API SQLMoreResults(SQLHSTMT handle)
{
    auto& statement = As<Statement>(handle);
    const std::optional<Message> error = statement.answer.isLater ? statement.answer.error : std::nullopt;
    statement.CloseResult();
    return error ? statement.Fail(*error) : SQL_NO_DATA;
}

SQLRETURN SQL_API SQLFreeStmt(SQLHSTMT handle, SQLUSMALLINT)
{
    As<Statement>(handle).CloseResult(); // SQL_CLOSE
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLGetDiagRecW(SQLSMALLINT, SQLHANDLE handle, SQLSMALLINT number, SQLWCHAR* state, SQLINTEGER* native,
                                 SQLWCHAR* text, SQLSMALLINT capacity, SQLSMALLINT* length)
{
    const auto& messages = static_cast<const Handle*>(handle)->messages;
    if (number < 1 || static_cast<std::size_t>(number) > messages.size())
        return SQL_NO_DATA;
    const Message& message = messages[static_cast<std::size_t>(number - 1)];
    Put(message.state, state, 6, nullptr);
    if (native)
        *native = message.native;
    return Put("[Scripted][SQL Server]" + message.text, text, capacity, length);
}

/// The driver manager wants it, and asks for one field only.
SQLRETURN SQL_API SQLGetDiagFieldW(SQLSMALLINT, SQLHANDLE handle, SQLSMALLINT number, SQLSMALLINT field,
                                   SQLPOINTER value, SQLSMALLINT capacity, SQLSMALLINT* length)
{
    const auto& messages = static_cast<const Handle*>(handle)->messages;
    if (field == SQL_DIAG_NUMBER)
        return PutNumber(value, static_cast<SQLINTEGER>(messages.size()));
    if (number < 1 || static_cast<std::size_t>(number) > messages.size())
        return SQL_NO_DATA;
    const bool isOrigin = field == SQL_DIAG_CLASS_ORIGIN || field == SQL_DIAG_SUBCLASS_ORIGIN;
    return isOrigin ? Put("ODBC 3.0", static_cast<SQLWCHAR*>(value), capacity / 2, length) : SQL_ERROR;
}

} // extern "C"

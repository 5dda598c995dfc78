#pragma once

// ODBC's handles, each freed by its owner.

#include <utility>

#ifdef _WIN32
#include "Afx/Platform.h"
#endif
#include <sql.h>
#include <sqlext.h>

namespace Cellar::Odbc
{

inline bool IsDone(SQLRETURN result) noexcept { return result == SQL_SUCCESS || result == SQL_SUCCESS_WITH_INFO; }

template<SQLSMALLINT Type>
class Handle
{
public:
    Handle() noexcept = default;
    /// Null when the driver manager has no memory for it, or the connection is gone.
    explicit Handle(SQLHANDLE parent) noexcept
    {
        if (!IsDone(SQLAllocHandle(Type, parent, &m_handle)))
            m_handle = nullptr;
    }
    Handle(Handle&& other) noexcept : m_handle(std::exchange(other.m_handle, nullptr)) {}
    Handle& operator=(Handle&& other) noexcept
    {
        std::swap(m_handle, other.m_handle);
        return *this;
    }
    ~Handle()
    {
        if (m_handle)
            SQLFreeHandle(Type, m_handle);
    }
    SQLHANDLE Get() const noexcept { return m_handle; }
    explicit operator bool() const noexcept { return m_handle != nullptr; }
    /// The driver manager frees the statements of a connection that it ends.
    void Forget() noexcept { m_handle = nullptr; }

private:
    SQLHANDLE m_handle = nullptr;
};

using EnvironmentHandle = Handle<SQL_HANDLE_ENV>;
using StatementHandle = Handle<SQL_HANDLE_STMT>;

/// As this version of the interface; null when there is no memory for it.
inline EnvironmentHandle NewEnvironment() noexcept
{
    EnvironmentHandle environment(SQL_NULL_HANDLE);
    SQLSetEnvAttr(environment.Get(), SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQLULEN{SQL_OV_ODBC3}), 0);
    return environment;
}

} // namespace Cellar::Odbc

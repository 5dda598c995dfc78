#pragma once

// What ODBC reports, as DatabaseError.

#include <string>
#include <string_view>

#include "Cellar/ConnectionText.h"
#include "Cellar/DatabaseError.h"
#include "Cellar/drivers/odbc/Handles.h"

namespace Cellar::Odbc
{

/// The first record that a driver has about a failed call.
struct Diagnosis
{
    std::string state; // SQLSTATE
    SQLINTEGER native = 0;
    std::string text; // one line, in UTF-8, without the marks of those who passed it on
};
Diagnosis Diagnose(SQLSMALLINT type, SQLHANDLE handle);

/// What a failed statement means. Values that servers repeat in their messages are left out.
DatabaseError ErrorOf(const Diagnosis& diagnosis);
/// What a refused connection means (CannotOpen): which server, why, how to mend it. The password is left out, also
/// where the driver's message quotes the connection text.
DatabaseError CannotConnect(const Diagnosis& diagnosis, const ServerText& text);
/// For operations on a connection that was lost before.
DatabaseError WasLost();

} // namespace Cellar::Odbc

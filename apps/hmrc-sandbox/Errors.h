#pragma once

// HMRC's error codes and the answers that carry them.

#include <span>
#include <string_view>

#include "Http.h"

namespace Sandbox
{

/// One of HMRC's error codes.
struct ErrorCode
{
    const char* code;
    int status;
    const char* message;
    bool challenge; // the gateway adds WWW-Authenticate
};

/// All of them, by code.
std::span<const ErrorCode> ErrorCodes();

/// The row of `code`, null when HMRC has no such code.
const ErrorCode* FindError(std::string_view code);

/// The answer for a code of the table: status, code, message and the gateway's challenge.
Answer ErrorAnswer(std::string_view code);

/// The OAuth endpoints' error body, which has other members than the interfaces'.
Answer OAuthError(int status, std::string_view error, std::string_view description);

} // namespace Sandbox

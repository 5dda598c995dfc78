#pragma once

// What must not reach a log, a message or the standard output.

#include <initializer_list>
#include <string>
#include <string_view>

#include "HmrcApi/Export.h"

namespace HmrcApi
{

/// `text` with "[masked]" in place of
/// - each of `secrets` that is not empty,
/// - bearer tokens, and the values of members or fields that hold a token, secret, code or verifier,
/// - everything of the shape of a National Insurance number: two letters, six digits and perhaps A to D, in any case,
///   with blanks anywhere between, percent-encoded or not.
HMRCAPI_API std::string Mask(std::string_view text, std::initializer_list<std::string_view> secrets = {});

} // namespace HmrcApi

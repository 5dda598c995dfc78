#pragma once

// The parts of addresses and of form bodies.

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "HmrcApi/Export.h"

namespace HmrcApi
{

using FormFields = std::vector<std::pair<std::string_view, std::string_view>>;

/// Every byte but the unreserved characters of RFC 3986 as %XX.
HMRCAPI_API std::string PercentEncode(std::string_view text);
/// `name=value&…`, names and values percent-encoded; serves as query and as form body.
HMRCAPI_API std::string EncodeForm(const FormFields& fields);
/// A name or value of a form or query as it was before; a plus stands for a blank. Nothing for an escape that is none.
HMRCAPI_API std::optional<std::string> DecodeFormText(std::string_view text);
/// Exactly one slash between the two.
HMRCAPI_API std::string JoinAddress(std::string_view base, std::string_view path);
/// An identifier as HMRC takes it: upper case, no blanks. Empty when anything but letters and digits is left, because
/// it could change the path it is put into ("../x", "1?y").
HMRCAPI_API std::string IdentifierSegment(std::string_view identifier);
/// The real tax year `year`, known by the calendar year in which it ends, as HMRC writes it: 2018 is "2017-18".
/// Empty outside the years 1 to 9999.
HMRCAPI_API std::string TaxYearText(short year);

} // namespace HmrcApi

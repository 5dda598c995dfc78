#include "FraudHeaders.h"

#include <regex>

namespace Sandbox
{

namespace
{

enum class Missing
{
    Error,   // every desktop program has it
    Warning, // only by agreement with HMRC
    Fine     // it may not apply
};

// Parts of the patterns. Keys and values are percent-encoded, the separators are not.
#define TEXT_PART "[A-Za-z0-9._~%-]+"
#define PAIRS TEXT_PART "=(?:" TEXT_PART ")?(?:&" TEXT_PART "=(?:" TEXT_PART ")?)*"
#define STAMP R"(\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}Z)"

struct HeaderRule
{
    const char* name;
    Missing missing;
    const char* pattern;
    const char* wanted;
};
const HeaderRule kRules[] = {
    {"gov-client-connection-method", Missing::Error, "DESKTOP_APP_DIRECT", "DESKTOP_APP_DIRECT"},
    {"gov-client-device-id", Missing::Error, "[0-9a-f]{8}(?:-[0-9a-f]{4}){3}-[0-9a-f]{12}", "a UUID in lower case"},
    {"gov-client-local-ips", Missing::Error, TEXT_PART "(?:," TEXT_PART ")*", "addresses, percent-encoded"},
    {"gov-client-local-ips-timestamp", Missing::Error, STAMP, "a UTC time with milliseconds"},
    {"gov-client-mac-addresses", Missing::Error,
     "(?:[0-9a-fA-F]{2}%3A){5}[0-9a-fA-F]{2}(?:,(?:[0-9a-fA-F]{2}%3A){5}[0-9a-fA-F]{2})*",
     "MAC addresses, percent-encoded"},
    {"gov-client-multi-factor", Missing::Fine, PAIRS "(?:," PAIRS ")*",
     "pairs of type, timestamp and unique-reference"},
    {"gov-client-screens", Missing::Warning,
     R"((?:width=[1-9]\d*&height=[1-9]\d*&scaling-factor=[\d.]+&colour-depth=\d+,?)+)",
     "width, height, scaling-factor and colour-depth of each screen"},
    {"gov-client-timezone", Missing::Error, R"(UTC[+-]\d\d:\d\d)", "an offset as UTC+01:00"},
    {"gov-client-user-agent", Missing::Error,
     "os-family=" TEXT_PART "&os-version=.*&device-manufacturer=.*&device-model=.*",
     "os-family, os-version, device-manufacturer and device-model"},
    {"gov-client-user-ids", Missing::Error, PAIRS, "pairs, of which one is os"},
    {"gov-client-window-size", Missing::Warning, R"(width=[1-9]\d*&height=[1-9]\d*)", "a width and a height"},
    {"gov-vendor-license-ids", Missing::Warning, PAIRS, "pairs of software and the hash of its licence key"},
    {"gov-vendor-product-name", Missing::Error, TEXT_PART, "a name, percent-encoded"},
    {"gov-vendor-version", Missing::Error, PAIRS, "pairs of software and version"},
};

#undef TEXT_PART
#undef PAIRS
#undef STAMP

nlohmann::ordered_json Finding(const char* code, const HeaderRule& rule, const std::string& message)
{
    return {{"code", code}, {"message", message}, {"headers", nlohmann::ordered_json::array({rule.name})}};
}

} // namespace

nlohmann::ordered_json CheckFraudHeaders(const std::map<std::string, std::string>& headers)
{
    nlohmann::ordered_json errors = nlohmann::ordered_json::array(), warnings = errors;
    for (const HeaderRule& rule : kRules) {
        const auto header = headers.find(rule.name);
        if (header == headers.end()) {
            if (rule.missing != Missing::Fine)
                (rule.missing == Missing::Error ? errors : warnings)
                    .push_back(Finding("MISSING_HEADER", rule, "Header required"));
        } else if (header->second.empty()) {
            errors.push_back(Finding("EMPTY_HEADER", rule, "Value must not be empty"));
        } else if (!std::regex_match(header->second, std::regex(rule.pattern))) {
            errors.push_back(Finding("INVALID_HEADER", rule, std::string("Value must be ") + rule.wanted));
        }
    }
    const bool isValid = errors.empty() && warnings.empty();
    nlohmann::ordered_json answer{{"specVersion", "3.3"},
                                  {"code", !errors.empty() ? "INVALID_HEADERS"
                                           : isValid       ? "VALID_HEADERS"
                                                           : "POTENTIALLY_INVALID_HEADERS"},
                                  {"message", !errors.empty() ? "At least 1 header is invalid"
                                              : isValid       ? "All headers are valid"
                                                              : "At least 1 header is potentially invalid"}};
    if (!errors.empty())
        answer["errors"] = errors;
    if (!warnings.empty())
        answer["warnings"] = warnings;
    return answer;
}

} // namespace Sandbox

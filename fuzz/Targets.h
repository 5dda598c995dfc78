#pragma once

// What holds for every text that a parser of outside input is given. A fuzzer looks for a text for which it does not;
// the ordinary tests run the texts that were kept.

#include <stdexcept>
#include <string_view>

namespace Fuzz
{

/// A property that does not hold for the input.
class Finding : public std::logic_error
{
public:
    explicit Finding(const char* property) : std::logic_error(property) {}
};

/// `property` says what ought to hold.
inline void Require(bool holds, const char* property)
{
    if (!holds)
        throw Finding(property);
}

// The targets. Each takes any bytes, throws Finding, and leaves process-wide settings as they were.

/// A date as users type it.
void DateText(std::string_view input);
/// An amount as users type it, in ten-thousandths and in pence.
void AmountText(std::string_view input);
/// Hexadecimal text; the same bytes also as binary data.
void HexText(std::string_view input);
/// A long date (yyyymmdd), written in decimal digits with an optional minus; anything else is skipped.
void LongDate(std::string_view input);
/// JSON as any answer of HMRC's.
void JsonAnswer(std::string_view input);
// HMRC's answers, one for each decoder.
void PayeAnswer(std::string_view input);
void InsuranceAnswer(std::string_view input); // National Insurance
void HistoryAnswer(std::string_view input);   // employment history
void IncomeAnswer(std::string_view input);
void BenefitsAnswer(std::string_view input);
void TaxAnswer(std::string_view input);
/// HMRC's answer to a request for tokens.
void TokenAnswer(std::string_view input);
/// The query of the address to which HMRC sends the browser after a sign-in.
void RedirectQuery(std::string_view input);
/// A server's connection text.
void ConnectionText(std::string_view input);
/// `section|name|value|text of a settings file`.
void IniText(std::string_view input);
/// A list file: banks, charities, insurers.
void ListFile(std::string_view input);
/// A T-SQL statement with placeholders.
void SqlText(std::string_view input);

struct Target
{
    const char* name; // of the program, and of the folders with its inputs
    void (*check)(std::string_view input);
};

inline constexpr Target kTargets[] = {
    {"date-text", DateText},
    {"amount-text", AmountText},
    {"hex-text", HexText},
    {"long-date", LongDate},
    {"json-answer", JsonAnswer},
    {"paye-answer", PayeAnswer},
    {"insurance-answer", InsuranceAnswer},
    {"history-answer", HistoryAnswer},
    {"income-answer", IncomeAnswer},
    {"benefits-answer", BenefitsAnswer},
    {"tax-answer", TaxAnswer},
    {"token-answer", TokenAnswer},
    {"redirect-query", RedirectQuery},
    {"connection-text", ConnectionText},
    {"ini-text", IniText},
    {"list-file", ListFile},
    {"sql-text", SqlText},
};

} // namespace Fuzz

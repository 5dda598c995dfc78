#include "CalcRules.h"

#include <algorithm>
#include <memory>

#include "MorvUt/MorvUt.h"

namespace Morv
{

namespace
{

// Results in the units that the table names.

constexpr std::string_view kYear = "real tax year", kRelative = "relative tax year", kDate = "date or null",
                           kFields = "day, month, year", kLongDate = "long date, yyyymmdd", kPeriod = "from, to",
                           kDays = "days", kYesNo = "true or false", kText = "text", kPence = "pence",
                           kPenceOrNull = "pence or null", kTenThousandths = "ten-thousandths of a pound, or null",
                           kAuto = "pence, auto amount", kPounds = "pounds", kNumber = "number",
                           kOrder = "1 in order, 0, -1", kPlace = "-1 before, 0 within, 1 after",
                           kWeekday = "0 Monday to 6 Sunday", kBytes = "bytes";

// Functions behind rules that the library has not in this form.

long LongDateOf(std::uint8_t day, std::uint8_t month, std::uint16_t year)
{
    const X_DateStr_tag record{day, month, year};
    return DtoxL(&record);
}

short YearUnderOffset(RelativeYear offset)
{
    const CPFileYearOffsetter offsetter(offset);
    return GetCurrentRealTaxYear_WithPFileYearOffset();
}

/// Thousands separators while it lives, if `show`.
class CommaScope
{
public:
    explicit CommaScope(bool show) { SetShowCommaSeparators(show); }
    CommaScope(const CommaScope&) = delete;
    CommaScope& operator=(const CommaScope&) = delete;
    ~CommaScope() { SetShowCommaSeparators(0); }
};

CString CurrencyText(__int64 pence, bool commas)
{
    const CommaScope scope(commas);
    return Returned<CString>(CurrencyToCStr, pence);
}

CString LongPenceText(__int64 pence, bool commas)
{
    const CommaScope scope(commas);
    return Returned<CString>(ConvertLongPenceToStr, pence);
}

CString AutoText(__int64 value, bool blankAuto, bool commas)
{
    const CommaScope scope(commas);
    return ConvertAutoToStr(value, blankAuto);
}

Json TenThousandthsOf(DECIMAL value)
{
    const Kiln::CAmt amount = DecimalToCAmt(value);
    return amount.IsValid() ? Json(amount.GetValue()) : Json(nullptr);
}

/// The function that takes pence.
constexpr auto InPence(__int64 (*function)(const __int64&, double)) { return function; }

Json Allocated(__int64 amount, __int64 available)
{
    const __int64 taken = Allocate(amount, available);
    return {{"allocatedPence", taken}, {"availablePence", available}};
}

__int64 NotNegative(__int64 pence)
{
    ZeroIfNegative(pence);
    return pence;
}

std::vector<unsigned> BytesOf(const CString& text)
{
    unsigned size = 0;
    const std::unique_ptr<unsigned char[]> bytes(HexToBinary::Convert(text, &size));
    return {bytes.get(), bytes.get() + size};
}

CString HexOf(const std::string& bytes)
{
    return BinaryToHex::Convert(reinterpret_cast<const unsigned char*>(bytes.data()),
                                static_cast<unsigned>(bytes.size()));
}

constexpr CalcRule kRules[] = {
    // Tax years.
    {"GetMinRealTaxYear", "", kYear, Call<GetMinRealTaxYear>},
    {"GetMaxRealTaxYear", "", kYear, Call<GetMaxRealTaxYear>},
    {"GetMaxTaxYear", "", kRelative, Call<GetMaxTaxYear>},
    {"GetNumTaxYears", "", kNumber, Call<GetNumTaxYears>},
    {"GetDefaultRealTaxYear", "", kYear, Call<GetDefaultRealTaxYear>},
    {"ConvertRealToRelativeTaxYear", "year", kRelative, Call<ConvertRealToRelativeTaxYear>},
    {"ConvertRelativeToRealTaxYear", "relative", kYear, Call<ConvertRelativeToRealTaxYear, short(RelativeYear)>},
    {"GetCurrentTaxYear", "", kRelative, Call<GetCurrentTaxYear>},
    {"GetCurrentRealTaxYear", "", kYear, Call<GetCurrentRealTaxYear>},
    {"GetCurrentRealTaxYear_WithPFileYearOffset", "offset?", kYear, Call<YearUnderOffset>},
    {"FormatYearString2Digit", "year", kText, Call<FormatYearString2Digit>},
    {"FormatYearString42Digit", "year", kText, Call<FormatYearString42Digit>},
    {"FormatYearString42DigitWithHyphen", "year", kText, Call<FormatYearString42DigitWithHyphen>},
    {"FormatYearString4Digit", "year", kText, Call<FormatYearString4Digit>},
    {"GetTaxYearTitle", "relative", kText, Call<GetTaxYearTitle, CString(RelativeYear)>},
    {"TaxYear::GetRelativeTaxYear", "year", kRelative,
     Call<[](short year) { return TaxYear(year).GetRelativeTaxYear(); }>},
    {"TaxYear::GetStart", "year", kDate, Call<[](short year) { return TaxYear(year).GetStart(); }>},
    {"TaxYear::GetEnd", "year", kDate, Call<[](short year) { return TaxYear(year).GetEnd(); }>},
    {"TaxYear::GetPeriod", "year", kPeriod, Call<[](short year) { return TaxYear(year).GetPeriod(); }>},
    {"TaxYear::Format", "year", kText, Call<[](short year) { return TaxYear(year).Format(); }>},
    {"TaxYear::GetFirstTaxYear", "", kYear, Call<TaxYear::GetFirstTaxYear>},
    {"TaxYear::GetLastTaxYear", "", kYear, Call<TaxYear::GetLastTaxYear>},
    {"TaxYearHelpers::GetCurrentTaxYear", "", kYear, Call<TaxYearHelpers::GetCurrentTaxYear>},
    {"TaxYearHelpers::GetDefaultTaxYear", "", kYear, Call<TaxYearHelpers::GetDefaultTaxYear>},

    // Date strings.
    {"ParseDateStr", "text", kFields, Call<ParseDateStr, X_DateStr_tag(CString)>},
    {"ConvertStrToDate", "text", kFields, Call<ConvertStrToDate>},
    {"ConvertDateToStr", "date", kText, Call<ConvertDateToStr, CString(LongDate)>},
    {"convert_date_to_str", "date", kText, Call<convert_date_to_str, CString(LongDate)>},
    {"GetTodaysDate", "", kText, Call<GetTodaysDate, CString()>},
    {"X_GetDate", "", kFields, Call<X_GetDate, X_DateStr_tag()>},
    {"DateIsNull", "date", kYesNo, Call<DateIsNull, bool(LongDate)>},
    {"DatesIdentical", "first second", kYesNo, Call<DatesIdentical, bool(LongDate, LongDate)>},
    {"CompareDates", "first second", kOrder, Call<CompareDates>},
    {"DtoxL", "day month year", kLongDate, Call<LongDateOf>},
    {"LtoxD", "date", kFields, Call<LtoxD, X_DateStr_tag(LongDate)>},
    {"validXDate", "date", kYesNo, Call<validXDate, bool(LongDate)>},
    {"IsValidDate", "date", kYesNo, Call<IsValidDate, bool(LongDate)>},
    {"isleapyear", "year", kYesNo, Call<isleapyear, bool(int)>},
    {"GetDayOfWeek", "day month year", kWeekday, Call<GetDayOfWeek>},
    {"DayBetween", "from to", kDays, Call<DayBetween>},
    {"arrDateFormatStrings", "choice", kText, Call<[](Choice choice) { return arrDateFormatStrings[choice]; }>},
    {"arrDateFormatStringsForDialogs", "choice", kText,
     Call<[](Choice choice) { return arrDateFormatStringsForDialogs[choice]; }>},

    // Rules on dates.
    {"GetTaxYear", "date", kYear, Call<GetTaxYear>},
    {"GetTaxYearStart", "year", kDate, Call<GetTaxYearStart>},
    {"GetTaxYearEnd", "year", kDate, Call<GetTaxYearEnd>},
    {"GetTaxYearPeriod", "year", kPeriod, Call<GetTaxYearPeriod>},
    {"IsDateInTaxYear", "date year", kYesNo, Call<IsDateInTaxYear>},
    {"TaxYearDays", "year from to", kDays, Call<TaxYearDays>},
    {"DatesIntersect", "from1 to1 from2 to2", kYesNo,
     Call<DatesIntersect, bool(Kiln::CDate, Kiln::CDate, Kiln::CDate, Kiln::CDate)>},
    {"PeriodHasLeapDay", "from to", kYesNo, Call<PeriodHasLeapDay, bool(Kiln::CDate, Kiln::CDate)>},
    {"CDateToLong", "date", kLongDate, Call<CDateToLong>},
    {"LongToCDate", "date", kDate, Call<LongToCDate, Kiln::CDate(LongDate)>},
    {"AssessmentYearCheck", "date year", kPlace, Call<AssessmentYearCheck>},
    {"DateBeforeAssessmentYear", "year date", kYesNo, Call<DateBeforeAssessmentYear, bool(short, LongDate)>},
    {"DateAfterAssessmentYear", "year date", kYesNo, Call<DateAfterAssessmentYear, bool(short, LongDate)>},
    {"CalculateFilingDate", "issued return", kDate, Call<CalculateFilingDate>},
    {"EnableSmallBusinessEntitlement", "start end", kYesNo, Call<EnableSmallBusinessEntitlement>},
    {"IsValidHalvessaTaxYearStart", "year", kYesNo,
     Call<[](short year) { return IsValidHalvessaTaxYearStart(TaxYear(year)); }>},
    {"IsValidHalvessaTaxYearEnd", "year", kYesNo,
     Call<[](short year) { return IsValidHalvessaTaxYearEnd(TaxYear(year)); }>},

    // Pence and their text.
    {"CurrencyToCStr", "amount commas?", kText, Call<CurrencyText>},
    {"ConvertLongPenceToStr", "amount commas?", kText, Call<LongPenceText>},
    {"CStrToCurrency", "text", kPence, Call<CStrToCurrency>},
    {"StrToCurrency", "text", kPence, Call<StrToCurrency>},
    {"PoundsToPence", "text", kPence, Call<PoundsToPence>},
    {"PenceToPounds", "amount", kPounds, Call<PenceToPounds>},
    {"DecimalToCurrency", "value", kPence, Call<DecimalToCurrency>},
    {"DecimalToCAmt", "value", kTenThousandths, Call<TenThousandthsOf>},
    {"ConvertAutoToStr", "value blankAuto? commas?", kText, Call<AutoText>},
    {"ConvertStrToAuto", "text", kAuto, Call<ConvertStrToAuto>},
    {"StringToInt", "text", kNumber, Call<StringToInt>},

    // Rates and shares.
    {"GrossFromNet", "net rate", kPence, Call<InPence(GrossFromNet)>},
    {"GrossFromTax", "tax rate", kPence, Call<InPence(GrossFromTax)>},
    {"TaxFromGross", "gross rate", kPence, Call<InPence(TaxFromGross)>},
    {"TaxFromNet", "net rate", kPence, Call<InPence(TaxFromNet)>},
    {"PercentOf", "amount percent", kPence, Call<InPence(PercentOf)>},
    {"Allocate", "amount available", "allocatedPence, availablePence", Call<Allocated>},
    {"ZeroIfNegative", "amount", kPence, Call<NotNegative>},
    {"JointSpousePercentOf", "amount percent remainder", kPenceOrNull,
     Call<[](const Kiln::CAmt& amount, double percent, bool remainder) {
         return JointSpousePercentOf(amount, percent, remainder);
     }>},
    {"CalculateAutoTax", "net taxField rate", kAuto, Call<CalculateAutoTax>},
    {"AnnualiseAmount", "amount from to", kPence,
     Call<[](__int64 amount, Kiln::CDate from, Kiln::CDate to) { return AnnualiseAmount(amount, from, to); }>},

    // Identifiers.
    {"IsValidNINumber", "number", kYesNo, Call<IsValidNINumber, bool(Identifier)>},
    {"WhyNotNINumber", "number", kText, Call<WhyNotNINumber, CString(Identifier)>},
    {"IsValidUTR", "reference", kYesNo, Call<IsValidUTR, bool(Identifier)>},
    {"WhyNotUTR", "reference", kText, Call<WhyNotUTR, CString(Identifier)>},
    {"FormatSortCode", "code", kText, Call<FormatSortCode>},
    {"TidySortCodeString", "code", kText, Call<TidySortCodeString>},
    {"WhyNotSortCode", "code", kText, Call<WhyNotSortCode, CString(Identifier)>},
    {"BinaryToHex::Convert", "bytes", kText, Call<HexOf>},
    {"HexToBinary::Convert", "text", kBytes, Call<BytesOf>},
};

static_assert(std::all_of(std::begin(kRules), std::end(kRules), [](const CalcRule& rule) {
    const auto blanks = std::count(rule.arguments.begin(), rule.arguments.end(), ' ');
    const auto isOfRule = [](const Kind& kind) { return !kind.name.empty(); };
    return blanks + !rule.arguments.empty() ==
           std::count_if(rule.function.kinds.begin(), rule.function.kinds.end(), isOfRule);
}));

} // namespace

std::span<const CalcRule> CalcRules() { return kRules; }

std::vector<Argument> DeclaredArguments(const CalcRule& rule)
{
    std::vector<Argument> arguments;
    for (std::string_view names = rule.arguments; !names.empty();) {
        const std::string_view name = names.substr(0, names.find_first_of("? "));
        const bool isOptional = names.substr(name.size()).starts_with('?');
        arguments.push_back({name, rule.function.kinds[arguments.size()], isOptional});
        names.remove_prefix(std::min(names.size(), name.size() + isOptional + 1));
    }
    return arguments;
}

} // namespace Morv

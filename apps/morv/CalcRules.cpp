#include "CalcRules.h"

#include <cmath>

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

Json AmountOf(const Kiln::CAmt& amount) { return amount.IsValid() ? Json(amount.GetValue()) : Json(nullptr); }

Json FieldsOf(const X_DateStr_tag& record)
{
    return {{"day", record.day}, {"month", record.month}, {"year", record.year}};
}

Json PeriodOf(const Kiln::DatePeriod& period)
{
    return {{"from", DateOf(period.GetFrom())}, {"to", DateOf(period.GetTo())}};
}

/// Thousands separators while it lives, if `show`.
class CommaScope
{
public:
    explicit CommaScope(int show) { SetShowCommaSeparators(show); }
    CommaScope(const CommaScope&) = delete;
    CommaScope& operator=(const CommaScope&) = delete;
    ~CommaScope() { SetShowCommaSeparators(0); }
};

/// What a function writes into its caller's buffer.
template<class Write>
Json Written(Write write)
{
    char buffer[64];
    write(buffer, unsigned{sizeof buffer});
    return Json(buffer);
}

Json Parsed(const char* text)
{
    X_DateStr_tag record{};
    ParseDateStr(text, &record);
    return FieldsOf(record);
}

Json DateText(const X_DateStr_tag& record)
{
    CString text;
    ConvertDateToStr(&record, text);
    return TextOf(text);
}

Json Today()
{
    CString text;
    GetTodaysDate(text);
    return TextOf(text);
}

X_DateStr_tag FieldsFrom(const Values& a)
{
    return {static_cast<std::uint8_t>(a.Int(0)), static_cast<std::uint8_t>(a.Int(1)),
            static_cast<std::uint16_t>(a.Int(2))};
}

/// A rule on one or two records.
template<auto Function>
Json OnRecord(const Values& a)
{
    const X_DateStr_tag record = a.Record(0);
    return Json(Function(&record));
}
template<auto Function>
Json IsRecord(const Values& a)
{
    const X_DateStr_tag record = a.Record(0);
    return Json(Function(&record) != 0);
}
template<auto Function>
Json OnRecords(const Values& a)
{
    const X_DateStr_tag first = a.Record(0), second = a.Record(1);
    return Json(Function(&first, &second));
}

Json CurrencyText(__int64 pence)
{
    CString text;
    CurrencyToCStr(pence, text);
    return TextOf(text);
}

Json Allocated(__int64 amount, __int64 available)
{
    const __int64 taken = Allocate(amount, available);
    return {{"allocatedPence", taken}, {"availablePence", available}};
}

Json NotNegative(__int64 pence)
{
    ZeroIfNegative(pence);
    return Json(pence);
}

Json BytesOf(const CString& text)
{
    unsigned size = 0;
    const std::unique_ptr<unsigned char[]> bytes(HexToBinary::Convert(text, &size));
    return Json(std::vector<unsigned>(bytes.get(), bytes.get() + size));
}

Json HexOf(const std::string& bytes)
{
    return TextOf(BinaryToHex::Convert(reinterpret_cast<const unsigned char*>(bytes.data()),
                                       static_cast<unsigned>(bytes.size())));
}

constexpr CalcRule kRules[] = {
    // Tax years.
    {"GetMinRealTaxYear", "", kYear, [](const Values&) { return Json(GetMinRealTaxYear()); }},
    {"GetMaxRealTaxYear", "", kYear, [](const Values&) { return Json(GetMaxRealTaxYear()); }},
    {"GetMaxTaxYear", "", kRelative, [](const Values&) { return Json(GetMaxTaxYear()); }},
    {"GetNumTaxYears", "", kNumber, [](const Values&) { return Json(GetNumTaxYears()); }},
    {"GetDefaultRealTaxYear", "", kYear, [](const Values&) { return Json(GetDefaultRealTaxYear()); }},
    {"ConvertRealToRelativeTaxYear", "year:year", kRelative,
     [](const Values& a) { return Json(ConvertRealToRelativeTaxYear(a.Year(0))); }},
    {"ConvertRelativeToRealTaxYear", "relative:relative", kYear,
     [](const Values& a) { return Json(ConvertRelativeToRealTaxYear(a.Year(0))); }},
    {"GetCurrentTaxYear", "", kRelative, [](const Values&) { return Json(GetCurrentTaxYear()); }},
    {"GetCurrentRealTaxYear", "", kYear, [](const Values&) { return Json(GetCurrentRealTaxYear()); }},
    {"GetCurrentRealTaxYear_WithPFileYearOffset", "offset?:relative", kYear,
     [](const Values& a) {
         const CPFileYearOffsetter offsetter(a.Year(0));
         return Json(GetCurrentRealTaxYear_WithPFileYearOffset());
     }},
    {"FormatYearString2Digit", "year:int", kText,
     [](const Values& a) { return TextOf(FormatYearString2Digit(a.Int(0))); }},
    {"FormatYearString42Digit", "year:int", kText,
     [](const Values& a) { return TextOf(FormatYearString42Digit(a.Int(0))); }},
    {"FormatYearString42DigitWithHyphen", "year:int", kText,
     [](const Values& a) { return TextOf(FormatYearString42DigitWithHyphen(a.Int(0))); }},
    {"FormatYearString4Digit", "year:int", kText,
     [](const Values& a) { return TextOf(FormatYearString4Digit(a.Int(0))); }},
    {"GetTaxYearTitle", "relative:relative", kText,
     [](const Values& a) {
         return Written([&](char* buffer, unsigned size) { GetTaxYearTitle(a.Year(0), buffer, size); });
     }},
    {"TaxYear::GetRelativeTaxYear", "year:year", kRelative,
     [](const Values& a) { return Json(TaxYear(a.Year(0)).GetRelativeTaxYear()); }},
    {"TaxYear::GetStart", "year:year", kDate, [](const Values& a) { return DateOf(TaxYear(a.Year(0)).GetStart()); }},
    {"TaxYear::GetEnd", "year:year", kDate, [](const Values& a) { return DateOf(TaxYear(a.Year(0)).GetEnd()); }},
    {"TaxYear::GetPeriod", "year:year", kPeriod,
     [](const Values& a) { return PeriodOf(TaxYear(a.Year(0)).GetPeriod()); }},
    {"TaxYear::Format", "year:year", kText, [](const Values& a) { return TextOf(TaxYear(a.Year(0)).Format()); }},
    {"TaxYear::GetFirstTaxYear", "", kYear,
     [](const Values&) { return Json(TaxYear::GetFirstTaxYear().GetRealTaxYear()); }},
    {"TaxYear::GetLastTaxYear", "", kYear,
     [](const Values&) { return Json(TaxYear::GetLastTaxYear().GetRealTaxYear()); }},
    {"TaxYearHelpers::GetCurrentTaxYear", "", kYear,
     [](const Values&) { return Json(TaxYearHelpers::GetCurrentTaxYear().GetRealTaxYear()); }},
    {"TaxYearHelpers::GetDefaultTaxYear", "", kYear,
     [](const Values&) { return Json(TaxYearHelpers::GetDefaultTaxYear().GetRealTaxYear()); }},

    // Date strings.
    {"ParseDateStr", "text:text", kFields, [](const Values& a) { return Parsed(a.Text(0)); }},
    {"ConvertStrToDate", "text:text", kFields, [](const Values& a) { return FieldsOf(ConvertStrToDate(a.Text(0))); }},
    {"ConvertDateToStr", "date:longdate", kText, [](const Values& a) { return DateText(a.Record(0)); }},
    {"convert_date_to_str", "date:longdate", kText,
     [](const Values& a) {
         const X_DateStr_tag record = a.Record(0);
         return Written([&](char* buffer, unsigned size) { convert_date_to_str(&record, buffer, size); });
     }},
    {"GetTodaysDate", "", kText, [](const Values&) { return Today(); }},
    {"X_GetDate", "", kFields,
     [](const Values&) {
         X_DateStr_tag today{};
         X_GetDate(&today);
         return FieldsOf(today);
     }},
    {"DateIsNull", "date:longdate", kYesNo, IsRecord<DateIsNull>},
    {"DatesIdentical", "first:longdate second:longdate", kYesNo,
     [](const Values& a) { return Json(OnRecords<DatesIdentical>(a) != 0); }},
    {"CompareDates", "first:longdate second:longdate", kOrder, OnRecords<CompareDates>},
    {"DtoxL", "day:byte month:byte year:word", kLongDate,
     [](const Values& a) {
         const X_DateStr_tag record = FieldsFrom(a);
         return Json(DtoxL(&record));
     }},
    {"LtoxD", "date:longdate", kFields, [](const Values& a) { return FieldsOf(a.Record(0)); }},
    {"validXDate", "date:longdate", kYesNo, IsRecord<validXDate>},
    {"IsValidDate", "date:longdate", kYesNo, IsRecord<IsValidDate>},
    {"isleapyear", "year:int", kYesNo, [](const Values& a) { return Json(isleapyear(a.Int(0)) != 0); }},
    {"GetDayOfWeek", "day:int month:int year:int", kWeekday,
     [](const Values& a) { return Json(GetDayOfWeek(a.Int(0), a.Int(1), a.Int(2))); }},
    {"DayBetween", "from:longdate to:longdate", kDays, OnRecords<DayBetween>},
    {"arrDateFormatStrings", "choice:index", kText,
     [](const Values& a) { return Json(arrDateFormatStrings[a.Int(0)]); }},
    {"arrDateFormatStringsForDialogs", "choice:index", kText,
     [](const Values& a) { return Json(arrDateFormatStringsForDialogs[a.Int(0)]); }},

    // Rules on dates.
    {"GetTaxYear", "date:date", kYear, [](const Values& a) { return Json(GetTaxYear(a.Date(0))); }},
    {"GetTaxYearStart", "year:year", kDate, [](const Values& a) { return DateOf(GetTaxYearStart(a.Year(0))); }},
    {"GetTaxYearEnd", "year:year", kDate, [](const Values& a) { return DateOf(GetTaxYearEnd(a.Year(0))); }},
    {"GetTaxYearPeriod", "year:year", kPeriod, [](const Values& a) { return PeriodOf(GetTaxYearPeriod(a.Year(0))); }},
    {"IsDateInTaxYear", "date:date year:year", kYesNo,
     [](const Values& a) { return Json(IsDateInTaxYear(a.Date(0), a.Year(1))); }},
    {"TaxYearDays", "year:year from:date to:date", kDays,
     [](const Values& a) { return Json(TaxYearDays(a.Year(0), a.Date(1), a.Date(2))); }},
    {"DatesIntersect", "from1:date to1:date from2:date to2:date", kYesNo,
     [](const Values& a) { return Json(DatesIntersect(a.Date(0), a.Date(1), a.Date(2), a.Date(3)) != 0); }},
    {"PeriodHasLeapDay", "from:date to:date", kYesNo,
     [](const Values& a) { return Json(PeriodHasLeapDay(a.Date(0), a.Date(1)) != 0); }},
    {"CDateToLong", "date:date", kLongDate, [](const Values& a) { return Json(CDateToLong(a.Date(0))); }},
    {"LongToCDate", "date:longdate", kDate, [](const Values& a) { return DateOf(LongToCDate(a.LongDate(0))); }},
    {"AssessmentYearCheck", "date:date year:int", kPlace,
     [](const Values& a) { return Json(static_cast<int>(AssessmentYearCheck(a.Date(0), a.Int(1)))); }},
    {"DateBeforeAssessmentYear", "year:year date:longdate", kYesNo,
     [](const Values& a) { return Json(DateBeforeAssessmentYear(a.Year(0), a.Record(1)) != 0); }},
    {"DateAfterAssessmentYear", "year:year date:longdate", kYesNo,
     [](const Values& a) { return Json(DateAfterAssessmentYear(a.Year(0), a.Record(1)) != 0); }},
    {"CalculateFilingDate", "issued:date return:text", kDate,
     [](const Values& a) { return DateOf(CalculateFilingDate(a.Date(0), a.Text(1))); }},
    {"EnableSmallBusinessEntitlement", "start:date end:date", kYesNo,
     [](const Values& a) { return Json(EnableSmallBusinessEntitlement(a.Date(0), a.Date(1))); }},
    {"IsValidHalvessaTaxYearStart", "year:year", kYesNo,
     [](const Values& a) { return Json(IsValidHalvessaTaxYearStart(TaxYear(a.Year(0)))); }},
    {"IsValidHalvessaTaxYearEnd", "year:year", kYesNo,
     [](const Values& a) { return Json(IsValidHalvessaTaxYearEnd(TaxYear(a.Year(0)))); }},

    // Pence and their text.
    {"CurrencyToCStr", "amount:pence commas?:flag", kText,
     [](const Values& a) {
         const CommaScope commas(a.Int(1));
         return CurrencyText(a.Pence(0));
     }},
    {"ConvertLongPenceToStr", "amount:pence commas?:flag", kText,
     [](const Values& a) {
         const CommaScope commas(a.Int(1));
         return Written([&](char* buffer, unsigned size) { ConvertLongPenceToStr(a.Pence(0), buffer, size); });
     }},
    {"CStrToCurrency", "text:text", kPence, [](const Values& a) { return Json(CStrToCurrency(a.Text(0))); }},
    {"StrToCurrency", "text:text", kPence, [](const Values& a) { return Json(StrToCurrency(a.Text(0))); }},
    {"PoundsToPence", "text:text", kPence, [](const Values& a) { return Json(PoundsToPence(a.Text(0))); }},
    {"PenceToPounds", "amount:pence", kPounds, [](const Values& a) { return Json(PenceToPounds(a.Pence(0))); }},
    {"DecimalToCurrency", "value:decimal", kPence,
     [](const Values& a) { return Json(DecimalToCurrency(a.Decimal(0))); }},
    {"DecimalToCAmt", "value:decimal", kTenThousandths,
     [](const Values& a) { return AmountOf(DecimalToCAmt(a.Decimal(0))); }},
    {"ConvertAutoToStr", "value:pence blankAuto?:flag commas?:flag", kText,
     [](const Values& a) {
         const CommaScope commas(a.Int(2));
         return TextOf(ConvertAutoToStr(a.Pence(0), a.Int(1)));
     }},
    {"ConvertStrToAuto", "text:text", kAuto, [](const Values& a) { return Json(ConvertStrToAuto(a.Text(0))); }},
    {"StringToInt", "text:text", kNumber, [](const Values& a) { return Json(StringToInt(a.Text(0))); }},

    // Rates and shares.
    {"GrossFromNet", "net:pence rate:percent", kPence,
     [](const Values& a) { return Json(GrossFromNet(a.Pence(0), a.Real(1))); }},
    {"GrossFromTax", "tax:pence rate:percent", kPence,
     [](const Values& a) { return Json(GrossFromTax(a.Pence(0), a.Real(1))); }},
    {"TaxFromGross", "gross:pence rate:percent", kPence,
     [](const Values& a) { return Json(TaxFromGross(a.Pence(0), a.Real(1))); }},
    {"TaxFromNet", "net:pence rate:percent", kPence,
     [](const Values& a) { return Json(TaxFromNet(a.Pence(0), a.Real(1))); }},
    {"PercentOf", "amount:pence percent:percent", kPence,
     [](const Values& a) { return Json(PercentOf(a.Pence(0), a.Real(1))); }},
    {"Allocate", "amount:pence available:pence", "allocatedPence, availablePence",
     [](const Values& a) { return Allocated(a.Pence(0), a.Pence(1)); }},
    {"ZeroIfNegative", "amount:pence", kPence, [](const Values& a) { return NotNegative(a.Pence(0)); }},
    {"JointSpousePercentOf", "amount:amount percent:percent remainder:flag", kPenceOrNull,
     [](const Values& a) { return PenceOf(JointSpousePercentOf(a.Amount(0), a.Real(1), a.Int(2))); }},
    {"CalculateAutoTax", "net:pence taxField:pence rate:percent", kAuto,
     [](const Values& a) { return Json(CalculateAutoTax(a.Pence(0), a.Pence(1), a.Real(2))); }},
    {"AnnualiseAmount", "amount:pence from:date to:date", kPence,
     [](const Values& a) { return Json(AnnualiseAmount(a.Pence(0), a.Date(1), a.Date(2))); }},

    // Identifiers.
    {"IsValidNINumber", "number:identifier", kYesNo, [](const Values& a) { return Json(IsValidNINumber(a.Text(0))); }},
    {"WhyNotNINumber", "number:identifier", kText, [](const Values& a) { return TextOf(WhyNotNINumber(a.Text(0))); }},
    {"IsValidUTR", "reference:identifier", kYesNo, [](const Values& a) { return Json(IsValidUTR(a.Text(0))); }},
    {"WhyNotUTR", "reference:identifier", kText, [](const Values& a) { return TextOf(WhyNotUTR(a.Text(0))); }},
    {"FormatSortCode", "code:text", kText, [](const Values& a) { return TextOf(FormatSortCode(a.Text(0))); }},
    {"TidySortCodeString", "code:text", kText, [](const Values& a) { return TextOf(TidySortCodeString(a.Text(0))); }},
    {"WhyNotSortCode", "code:identifier", kText, [](const Values& a) { return TextOf(WhyNotSortCode(a.Text(0))); }},
    {"BinaryToHex::Convert", "bytes:bytes", kText, [](const Values& a) { return HexOf(a.Bytes(0)); }},
    {"HexToBinary::Convert", "text:text", kBytes, [](const Values& a) { return BytesOf(a.Text(0)); }},
};

} // namespace

std::span<const CalcRule> CalcRules() { return kRules; }

} // namespace Morv

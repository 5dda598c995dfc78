// Calls the rules with many seeded inputs and prints a digest of the results: one line per function, then the whole. On
// every target (compiler, optimisation, width, system) the lines must be the same. Only what is promised equal is
// called: no `long double`, no text of a binary fraction.
// usage: compare [CALLS PER FUNCTION]

#include <charconv>
#include <cinttypes>
#include <cstdio>
#include <cstring>

#include "Afx/text/Decimal.h"
#include "MorvUt/identifiers/Hex.h"
#include "MorvUt/identifiers/SortCode.h"
#include "MorvUt/identifiers/TaxIdentifiers.h"
#include "MorvUt/taxyear/TaxYear.h"
#include "MorvUt/ui/grids/Percentages.h"
#include "MorvUt/ui/progress/LongProcess.h"
#include "Values.h"
#if __has_include("MorvUt/taxyear/DateRules.h")
#include "MorvUt/taxyear/DateRules.h"
#define COMPARE_DATE_RULES
#endif
#if __has_include("MorvUt/money/Rates.h")
#include "MorvUt/money/Pence.h"
#include "MorvUt/money/Rates.h"
#define COMPARE_MONEY
#endif
#if __has_include("MorvUt/mappings/tables.def")
#include "MorvUt/mappings/TypeMappings.h"
#define COMPARE_MAPPINGS
#endif

using Compare::Digest;
using Compare::Inputs;

namespace
{

struct Function
{
    const char* name;
    void (*call)(Inputs& in, Digest& out);
};

void ParseDate(Inputs& in, Digest& out)
{
    Kiln::CDate date;
    const std::string text = in.DateText();
    out.Add(date.ParseDate(text.c_str()));
    out.Add(date);
    out.Add(Kiln::CDate::WhyNotDate(text.c_str()));
}

void Fields(Inputs& in, Digest& out)
{
    const int year = in.Int(90, 10'010), month = in.Int(0, 13), day = in.Int(0, 32);
    const Kiln::CDate date(year, month, day);
    out.Add(date);
    out.Add(date.GetYear() * 10'000 + date.GetMonth() * 100 + date.GetDay());
    out.Add(date.FormatIso());
}

void CalculateDates(Inputs& in, Digest& out)
{
    const Kiln::CDate a = in.Date(), b = in.Date();
    out.Add(a < b);
    out.Add(a == b);
    out.Add(a - b);
    out.Add(Kiln::DaysBetween(a, b));
    out.Add(a + in.Int(-1'000'000, 1'000'000));
}

void ParseAmount(Inputs& in, Digest& out)
{
    Kiln::CAmt amount;
    const CString text = in.AmountText();
    out.Add(amount.Parse(text));
    out.Add(amount);
    out.Add(amount.Format());
    out.Add(Kiln::CAmt::WhyNotAmount(text));
}

void CalculateAmounts(Inputs& in, Digest& out)
{
    const Kiln::CAmt a = in.Amount(), b = in.Amount();
    out.Add(a + b);
    out.Add(a - b);
    out.Add(a.GetPence());
    out.Add(a.Format());
}

void PercentOfAmount(Inputs& in, Digest& out)
{
    const Kiln::CAmt amount = in.Amount();
    const double percent = in.Rate();
    out.Add(amount.PercentOf(percent, 0));
    out.Add(amount.PercentOf(percent, 1));
}

DECIMAL OleDecimal(Inputs& in)
{
    DECIMAL value{};
    value.scale = static_cast<std::uint8_t>(in.Int(0, 29));
    value.sign = in.OneIn(2) ? 0x80 : 0;
    value.Lo64 = in.Bits() >> in.Int(0, 63);
    value.Hi32 = static_cast<std::uint32_t>(in.OneIn(2) ? 0 : in.Bits() >> in.Int(32, 63));
    return value;
}

void TaxYears(Inputs& in, Digest& out)
{
    const TaxYear year(in.Year());
    const short years = static_cast<short>(in.Int(-100, 100));
    out.Add(year.GetStart());
    out.Add(year.GetEnd());
    out.Add((year + years).GetRelativeTaxYear());
    out.Add(year.Format());
    for (const CString& title :
         {FormatYearString2Digit(year.GetRealTaxYear()), FormatYearString42DigitWithHyphen(year.GetRealTaxYear()),
          FormatYearString4Digit(year.GetRealTaxYear())})
        out.Add(title);
}

void Identifiers(Inputs& in, Digest& out)
{
    const std::string nino = in.Spoilt("AB123456C", "aZ09 "), utr = in.Text("0123456789", 10);
    const CString code = in.Text("0123456789- ", 9);
    out.Add(IsValidNINumber(nino.c_str()));
    out.Add(WhyNotNINumber(nino.c_str()));
    out.Add(IsValidUTR(utr.c_str()));
    out.Add(WhyNotUTR(utr.c_str()));
    out.Add(FormatSortCode(code));
    out.Add(TidySortCodeString(code));
    out.Add(WhyNotSortCode(code));
}

void Hexadecimal(Inputs& in, Digest& out)
{
    const std::string bytes = in.Text(std::string_view("\0\x7f\x80\xff Az", 7), 20);
    out.Add(BinaryToHex::Convert(reinterpret_cast<const unsigned char*>(bytes.data()),
                                 static_cast<unsigned>(bytes.size())));
}

#ifdef COMPARE_DATE_RULES

void DateStrings(Inputs& in, Digest& out)
{
    const std::string text = in.DateText();
    const X_DateStr_tag date = ConvertStrToDate(text.c_str()), other = ConvertStrToDate(in.DateText().c_str());
    CString back;
    ConvertDateToStr(&date, back);
    out.Add(back);
    out.Add(DtoxL(&date));
    out.Add(DayBetween(&date, &other));
    out.Add(CompareDates(&date, &other));
    out.Add(validXDate(&date));
}

void DateRules(Inputs& in, Digest& out)
{
    const Kiln::CDate a = in.Date(), b = in.Date(), c = in.Date(), d = in.Date();
    const short year = in.Year();
    out.Add(GetTaxYear(a));
    out.Add(IsDateInTaxYear(a, year));
    out.Add(TaxYearDays(year, a, b));
    out.Add(DatesIntersect(a, b, c, d));
    out.Add(PeriodHasLeapDay(a, b));
    out.Add(CDateToLong(a));
    out.Add(LongToCDate(in.Int(0, 99'999'999)));
    out.Add(static_cast<int>(AssessmentYearCheck(a, year)));
    out.Add(CalculateFilingDate(a, in.OneIn(2) ? "SA100" : "CT600"));
    out.Add(EnableSmallBusinessEntitlement(a, b));
}

#endif

#ifdef COMPARE_MONEY

void Grossing(Inputs& in, Digest& out)
{
    const Kiln::CAmt amount = in.Amount();
    const __int64 pence = in.Pence();
    const double rate = in.Rate();
    out.Add(GrossFromNet(amount, rate));
    out.Add(GrossFromNet(pence, rate));
    out.Add(GrossFromNet(static_cast<double>(pence), rate));
    out.Add(GrossFromTax(amount, rate));
    out.Add(GrossFromTax(pence, rate));
    out.Add(TaxFromGross(amount, rate));
    out.Add(TaxFromGross(pence, rate));
    out.Add(TaxFromNet(amount, rate));
    out.Add(TaxFromNet(pence, rate));
    out.Add(CalculateAutoTax(pence, in.Pence(), rate));
}

void SharesOf(Inputs& in, Digest& out)
{
    const Kiln::CAmt amount = in.Amount();
    const __int64 pence = in.Pence();
    const double percent = in.Rate();
    const int remainder = in.Int(0, 1);
    Kiln::CAmt available = in.Amount();
    __int64 left = in.Pence();
    out.Add(PercentOf(pence, percent));
    out.Add(JointSpousePercentOf(amount, percent, remainder));
    out.Add(JointSpousePercentOf(static_cast<double>(pence) / 100.0, percent, remainder));
    out.Add(Allocate(amount, available));
    out.Add(available);
    out.Add(Allocate(pence, left));
    out.Add(left);
}

void Annualising(Inputs& in, Digest& out)
{
    const Kiln::CAmt amount = in.Amount();
    const __int64 pence = in.Pence();
    const Kiln::CDate from = in.Date(), to = from + in.Int(-10, 1'500);
    out.Add(AnnualiseAmount(amount, from, to));
    out.Add(AnnualiseAmount(pence, from, to));
}

void PenceText(Inputs& in, Digest& out)
{
    const std::string text = in.AmountText();
    const __int64 pence = in.Pence();
    CString shown;
    CurrencyToCStr(pence, shown);
    out.Add(shown);
    out.Add(PenceToPounds(pence));
    out.Add(StrToCurrency(text.c_str()));
    out.Add(PoundsToPence(text.c_str()));
    out.Add(StringToInt(text.c_str()));
    out.Add(ConvertAutoToStr(pence, in.Int(0, 1)));
    out.Add(ConvertStrToAuto(CString(text)));
    out.Add(DecimalToCurrency(OleDecimal(in)));
}

#endif

void Percentages(Inputs& in, Digest& out)
{
    const Kiln::CAmt amount = in.Amount(), total = in.Amount();
    const PercentShare share = PercentShareOf(amount, total);
    out.Add(static_cast<int>(share.kind));
    out.Add(share.units);
    out.Add(FormatPercentUnits(share.units));
    Kiln::CAmt again = in.Amount();
    PercentsToAmounts({&share, 1}, total, {&again, 1});
    out.Add(again);
}

void Progress(Inputs& in, Digest& out)
{
    const int elapsed = in.Int(-1000, 1'000'000), done = in.Int(0, 1000), all = in.Int(0, 1000); // one after the other
    int seconds = SecondsToGo(elapsed, done, all).value_or(-1);
    out.Add(seconds);
    CLongProcess::RoundSecondsToGo(seconds);
    out.Add(CLongProcess::FormatTimeRemaining(seconds));
}

#ifdef COMPARE_MAPPINGS

void Mappings(Inputs& in, Digest& out)
{
    const auto tables = GetNamedMappings();
    const TypeMapping* const table =
        tables[static_cast<std::size_t>(in.Int(0, static_cast<int>(tables.size()) - 1))].table;
    const int last = static_cast<int>(GetMapCount(table)) - 1;
    const TypeMapping row = last < 0 ? kEndOfTable : table[in.Int(0, last)];
    const std::string key = in.Spoilt(row.shortName ? row.shortName : "", "aZ0 _");
    int index = -1;
    const char* name = "";
    out.Add(GetMapIndexFromShortName(table, key.c_str(), &index));
    out.Add(index);
    out.Add(GetMapLongNameFromIndex(table, &name, in.Int(-5, 120)));
    out.Add(std::string_view(name));
}

#endif

/// Each has inputs of its own, so that a new row changes no other line.
constexpr Function kFunctions[] = {
    {"dates: text", ParseDate},
    {"dates: fields", Fields},
    {"dates: arithmetic", CalculateDates},
    {"amounts: text", ParseAmount},
    {"amounts: arithmetic", CalculateAmounts},
    {"amounts: percentages", PercentOfAmount},
    {"amounts: OLE decimals", [](Inputs& in, Digest& out) { out.Add(Afx::DecimalToCy(OleDecimal(in)).value_or(-1)); }},
    {"tax years", TaxYears},
    {"identifiers", Identifiers},
    {"hexadecimal", Hexadecimal},
#ifdef COMPARE_DATE_RULES
    {"date strings", DateStrings},
    {"rules on dates", DateRules},
#endif
#ifdef COMPARE_MONEY
    {"money: grossing up", Grossing},
    {"money: shares", SharesOf},
    {"money: a year's worth", Annualising},
    {"money: pence and text", PenceText},
#endif
#ifdef COMPARE_MAPPINGS
    {"mappings", Mappings},
#endif
    {"screens: percentages", Percentages},
    {"screens: time to go", Progress},
};

} // namespace

int main(int argc, char** argv)
{
    int calls = 300'000;
    if (argc > 1 && std::from_chars(argv[1], argv[1] + std::strlen(argv[1]), calls).ec != std::errc()) {
        std::fputs("usage: compare [CALLS PER FUNCTION]\n", stderr);
        return 2;
    }
    const Kiln::YearHandlerScope fixedYear([](int, int) { return 2024; });
    Digest whole;
    for (const Function& function : kFunctions) {
        Digest seed, results;
        seed.Add(std::string_view(function.name));
        Inputs in(seed.Value());
        for (int i = 0; i < calls; ++i)
            function.call(in, results);
        whole.Add(results.Value());
        std::printf("%016" PRIx64 "  %s\n", results.Value(), function.name);
    }
    std::printf("%016" PRIx64 "  all, %d calls each\n", whole.Value(), calls);
}

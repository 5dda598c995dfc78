#include <cstdio>

#ifdef BENCH_HAS_FMT
#include <fmt/compile.h>
#include <fmt/format.h>
#endif

#include "MorvUt/taxyear/DateStrings.h"
#include "Subject.h"
#include "Values.h"

namespace Rules
{
namespace
{

std::string PrintfDate(const X_DateStr_tag& date)
{
    char buffer[16];
    const int length = std::snprintf(buffer, sizeof buffer, "%02d/%02d/%04d", date.day, date.month, date.year);
    return std::string(buffer, static_cast<std::size_t>(length));
}

void RegisterDateToText()
{
    Subject subject("date to text", Records(), [](const X_DateStr_tag& date) {
        CString text;
        ConvertDateToStr(&date, text);
        return text;
    });
    subject.Against("snprintf", PrintfDate);
#ifdef BENCH_HAS_FMT
    subject.Against("fmt, compiled format", [](const X_DateStr_tag& date) {
        return fmt::format(FMT_COMPILE("{:02}/{:02}/{:04}"), date.day, date.month, date.year);
    });
#endif
}

// All three read the format as the program runs.
void RegisterFormat()
{
    Subject subject("CString::Format of a date", Records(), [](const X_DateStr_tag& date) {
        CString text;
        text.Format("%02d/%02d/%04d", date.day, date.month, date.year);
        return text;
    });
    subject.Against("snprintf", PrintfDate);
#ifdef BENCH_HAS_FMT
    subject.Against("fmt", [](const X_DateStr_tag& date) {
        return fmt::format("{:02}/{:02}/{:04}", date.day, date.month, date.year);
    });
#endif
}

} // namespace

void RegisterFormats()
{
    RegisterDateToText();
    RegisterFormat();
}

} // namespace Rules

// Pence and dates to text and back, and days and tax years, against what a C++ developer would write instead.

#include <cctype>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string>
#include <vector>

#ifdef BENCH_HAS_FMT
#include <fmt/compile.h>
#endif

#include "MorvUt/MorvUt.h"
#include "Ratios.h"

namespace
{

constexpr std::size_t kCount = 1024;

/// Amounts as a ledger has them: mostly hundreds to tens of thousands of pounds, some negative.
std::vector<__int64> Amounts()
{
    std::vector<__int64> amounts;
    std::uint64_t state = 2024;
    for (std::size_t i = 0; i < kCount; ++i) {
        state = state * 6364136223846793005ULL + 1442695040888963407ULL;
        const auto size = static_cast<__int64>((state >> 33) % (i % 8 == 0 ? 1'000'000'000 : 5'000'000)) + 1;
        amounts.push_back(i % 9 == 0 ? -size : size);
    }
    return amounts;
}

std::vector<std::string> AmountTexts()
{
    std::vector<std::string> texts;
    for (const __int64 pence : Amounts()) {
        CString text;
        CurrencyToCStr(pence, text);
        texts.push_back(text.Str());
    }
    return texts;
}

std::vector<X_DateStr_tag> Records()
{
    std::vector<X_DateStr_tag> records;
    for (std::size_t i = 0; i < kCount; ++i) {
        const Kiln::CDate date = Kiln::CDate(1980, 1, 1) + static_cast<int>(i * 7919 % 18'000);
        X_DateStr_tag record{};
        LtoxD(CDateToLong(date), &record);
        records.push_back(record);
    }
    return records;
}

std::vector<std::string> DateTexts()
{
    std::vector<std::string> texts;
    for (const X_DateStr_tag& record : Records()) {
        CString text;
        ConvertDateToStr(&record, text);
        texts.push_back(text.Str());
    }
    return texts;
}

/// Times `action` on one item after another.
template<class Item, class Action>
void Each(benchmark::State& state, const std::vector<Item>& items, Action action)
{
    std::size_t i = 0;
    for (auto _ : state)
        action(items[i++ % kCount]);
}

template<class Action>
void Row(const char* name, Action action)
{
    benchmark::RegisterBenchmark(name, action);
}

void ShowCommas(std::string& text)
{
    const std::size_t skip = text[0] == '-';
    for (std::size_t at = text.size() - 3; at > skip + 3;)
        text.insert(at -= 3, 1, ',');
}

std::string ToCharsText(__int64 pence)
{
    char buffer[32];
    char* at = buffer;
    if (pence < 0)
        *at++ = '-';
    const auto size = static_cast<std::uint64_t>(pence < 0 ? -pence : pence);
    at = std::to_chars(at, std::end(buffer), size / 100).ptr;
    *at++ = '.';
    if (size % 100 < 10)
        *at++ = '0';
    at = std::to_chars(at, std::end(buffer), size % 100).ptr;
    return std::string(buffer, at);
}

std::string PrintfText(__int64 pence)
{
    char buffer[32];
    const long long size = pence < 0 ? -pence : pence;
    const int length =
        std::snprintf(buffer, sizeof buffer, "%s%lld.%02lld", pence < 0 ? "-" : "", size / 100, size % 100);
    return std::string(buffer, static_cast<std::size_t>(length));
}

#ifdef BENCH_HAS_FMT
std::string FmtText(__int64 pence)
{
    const auto size = static_cast<std::uint64_t>(pence < 0 ? -pence : pence);
    return fmt::format(FMT_COMPILE("{}{}.{:02}"), pence < 0 ? "-" : "", size / 100, size % 100);
}
#endif

template<class Peer>
void PenceToTextPeer(const char* plain, const char* withCommas, Peer peer)
{
    Row(plain, [peer](benchmark::State& state) {
        Each(state, Amounts(), [peer](__int64 pence) { benchmark::DoNotOptimize(peer(pence)); });
    });
    Row(withCommas, [peer](benchmark::State& state) {
        Each(state, Amounts(), [peer](__int64 pence) {
            std::string text = peer(pence);
            ShowCommas(text);
            benchmark::DoNotOptimize(text);
        });
    });
}

void RegisterPenceToText()
{
    for (const int commas : {0, 1})
        Row(commas ? "pence to text, commas/ours" : "pence to text/ours", [commas](benchmark::State& state) {
            SetShowCommaSeparators(commas);
            Each(state, Amounts(), [](__int64 pence) {
                CString text;
                CurrencyToCStr(pence, text);
                benchmark::DoNotOptimize(text);
            });
            SetShowCommaSeparators(0);
        });
    PenceToTextPeer("pence to text/to_chars", "pence to text, commas/to_chars and insert", ToCharsText);
    PenceToTextPeer("pence to text/snprintf", "pence to text, commas/snprintf and insert", PrintfText);
#ifdef BENCH_HAS_FMT
    PenceToTextPeer("pence to text/fmt compiled", "pence to text, commas/fmt compiled and insert", FmtText);
#endif
}

void RegisterTextToPence()
{
    Row("text to pence/ours", [](benchmark::State& state) {
        Each(state, AmountTexts(),
             [](const std::string& text) { benchmark::DoNotOptimize(StrToCurrency(text.c_str())); });
    });
    Row("text to pence/from_chars of a double", [](benchmark::State& state) {
        Each(state, AmountTexts(), [](const std::string& text) {
            double pounds = 0;
            std::from_chars(text.data(), text.data() + text.size(), pounds);
            benchmark::DoNotOptimize(static_cast<__int64>(pounds * 100 + (pounds < 0 ? -0.5 : 0.5)));
        });
    });
    Row("text to pence/from_chars of two integers", [](benchmark::State& state) {
        Each(state, AmountTexts(), [](const std::string& text) {
            const char* const end = text.data() + text.size();
            const bool minus = text[0] == '-';
            __int64 pounds = 0, pence = 0;
            const auto read = std::from_chars(text.data() + minus, end, pounds);
            if (read.ptr != end && *read.ptr == '.')
                std::from_chars(read.ptr + 1, end, pence);
            pounds = pounds * 100 + pence;
            benchmark::DoNotOptimize(minus ? -pounds : pounds);
        });
    });
    Row("text to pence/strtod", [](benchmark::State& state) {
        Each(state, AmountTexts(), [](const std::string& text) {
            const double pounds = std::strtod(text.c_str(), nullptr);
            benchmark::DoNotOptimize(static_cast<__int64>(pounds * 100 + (pounds < 0 ? -0.5 : 0.5)));
        });
    });
    Row("pounds to pence/ours", [](benchmark::State& state) {
        Each(state, AmountTexts(),
             [](const std::string& text) { benchmark::DoNotOptimize(PoundsToPence(text.c_str())); });
    });
    Row("pounds to pence/sscanf", [](benchmark::State& state) {
        Each(state, AmountTexts(), [](const std::string& text) {
            double pounds = 0;
            std::sscanf(text.c_str(), "%lf", &pounds);
            benchmark::DoNotOptimize(static_cast<__int64>(pounds * 100 + (pounds < 0 ? -0.5 : 0.5)));
        });
    });
}

void RegisterDateTexts()
{
    Row("text to date/ours", [](benchmark::State& state) {
        Each(state, DateTexts(), [](const std::string& text) {
            X_DateStr_tag record;
            ParseDateStr(text.c_str(), &record);
            benchmark::DoNotOptimize(record);
        });
    });
    Row("text to date/strptime", [](benchmark::State& state) {
        Each(state, DateTexts(), [](const std::string& text) {
            std::tm fields{};
            strptime(text.c_str(), "%d/%m/%Y", &fields);
            benchmark::DoNotOptimize(fields);
        });
    });
    Row("text to date/sscanf", [](benchmark::State& state) {
        Each(state, DateTexts(), [](const std::string& text) {
            int day = 0, month = 0, year = 0;
            std::sscanf(text.c_str(), "%d/%d/%d", &day, &month, &year);
            benchmark::DoNotOptimize(day + month + year);
        });
    });
    Row("date to text/ours", [](benchmark::State& state) {
        Each(state, Records(), [](const X_DateStr_tag& record) {
            CString text;
            ConvertDateToStr(&record, text);
            benchmark::DoNotOptimize(text);
        });
    });
    Row("date to text/snprintf", [](benchmark::State& state) {
        Each(state, Records(), [](const X_DateStr_tag& record) {
            char buffer[16];
            const int length =
                std::snprintf(buffer, sizeof buffer, "%02d/%02d/%04d", record.day, record.month, record.year);
            benchmark::DoNotOptimize(std::string(buffer, static_cast<std::size_t>(length)));
        });
    });
}

std::chrono::sys_days DaysOf(const X_DateStr_tag& record)
{
    using namespace std::chrono;
    return year_month_day(year(record.year), month(record.month), day(record.day));
}

std::time_t TimeOf(const X_DateStr_tag& record)
{
    std::tm fields{};
    fields.tm_year = record.year - 1900;
    fields.tm_mon = record.month - 1;
    fields.tm_mday = record.day;
    return timegm(&fields);
}

void RegisterDays()
{
    static constexpr X_DateStr_tag kFrom{6, 4, 2023};
    Row("days between/ours", [](benchmark::State& state) {
        Each(state, Records(),
             [](const X_DateStr_tag& record) { benchmark::DoNotOptimize(DayBetween(&kFrom, &record)); });
    });
    Row("days between/std::chrono", [](benchmark::State& state) {
        X_DateStr_tag from = kFrom;
        Each(state, Records(), [&](const X_DateStr_tag& record) {
            benchmark::DoNotOptimize(from);
            benchmark::DoNotOptimize((DaysOf(record) - DaysOf(from)).count());
        });
    });
    Row("days between/timegm", [](benchmark::State& state) {
        X_DateStr_tag from = kFrom;
        Each(state, Records(), [&](const X_DateStr_tag& record) {
            benchmark::DoNotOptimize(from);
            benchmark::DoNotOptimize((TimeOf(record) - TimeOf(from)) / 86'400);
        });
    });
}

void RegisterTaxYear()
{
    static const auto dates = [] {
        std::vector<Kiln::CDate> list;
        for (const X_DateStr_tag& record : Records())
            list.emplace_back(record.year, record.month, record.day);
        return list;
    }();
    Row("tax year of a date/ours", [](benchmark::State& state) {
        Each(state, dates, [](const Kiln::CDate& date) { benchmark::DoNotOptimize(GetTaxYear(date)); });
    });
    Row("tax year of a date/std::chrono", [](benchmark::State& state) {
        using namespace std::chrono;
        std::vector<sys_days> days;
        for (const X_DateStr_tag& record : Records())
            days.push_back(DaysOf(record));
        Each(state, days, [](const sys_days& day) {
            const year_month_day date(day);
            const year_month_day start(date.year(), April, std::chrono::day(6));
            benchmark::DoNotOptimize(static_cast<int>(date.year()) + (date >= start));
        });
    });
    Row("tax year of a date/gmtime", [](benchmark::State& state) {
        std::vector<std::time_t> times;
        for (const X_DateStr_tag& record : Records())
            times.push_back(TimeOf(record));
        Each(state, times, [](std::time_t time) {
            std::tm fields{};
            gmtime_r(&time, &fields);
            const bool isNext = fields.tm_mon > 3 || (fields.tm_mon == 3 && fields.tm_mday >= 6);
            benchmark::DoNotOptimize(fields.tm_year + 1900 + isNext);
        });
    });
}

} // namespace

int main(int argc, char** argv)
{
    RegisterPenceToText();
    RegisterTextToPence();
    RegisterDateTexts();
    RegisterDays();
    RegisterTaxYear();
    return Bench::RunAll(argc, argv);
}

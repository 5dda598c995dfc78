#include "Values.h"

#include "MorvUt/identifiers/TaxIdentifiers.h"
#include "MorvUt/money/Pence.h"
#include "MorvUt/taxyear/DateRules.h"

namespace Rules
{

std::vector<__int64> Amounts()
{
    Numbers numbers(2024);
    std::vector<__int64> amounts;
    for (std::size_t i = 0; i < kCount; ++i) {
        const __int64 size = numbers.Below(i % 8 == 0 ? 1'000'000'000 : 5'000'000) + 1;
        amounts.push_back(i % 9 == 0 ? -size : size);
    }
    return amounts;
}

std::vector<std::string> AmountTexts()
{
    SetShowCommaSeparators(0);
    std::vector<std::string> texts;
    for (const __int64 pence : Amounts()) {
        CString text;
        CurrencyToCStr(texts.size() % 7 == 0 ? pence / 100 * 100 + 100 : pence, text);
        if (texts.size() % 7 == 0)
            text = text.SpanIncluding("-0123456789");
        texts.push_back(text.Str());
    }
    return texts;
}

std::vector<std::string> PoundTexts()
{
    std::vector<std::string> texts;
    for (const __int64 pence : Amounts()) {
        SetShowCommaSeparators(texts.size() % 3 == 0);
        CString text;
        CurrencyToCStr(pence, text);
        if (texts.size() % 10 == 4)
            text += "7";
        else if (texts.size() % 10 == 8)
            text.Delete(text.GetLength() - 1);
        texts.push_back(text.Str());
    }
    SetShowCommaSeparators(0);
    return texts;
}

std::vector<Kiln::CDate> Dates()
{
    std::vector<Kiln::CDate> dates;
    for (std::size_t i = 0; i < kCount; ++i)
        dates.push_back(Kiln::CDate(1980, 1, 1) + static_cast<int>(i * 7919 % 18'000));
    return dates;
}

std::vector<X_DateStr_tag> Records()
{
    std::vector<X_DateStr_tag> records;
    for (const Kiln::CDate& date : Dates()) {
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

namespace
{

std::string Digits(Numbers& numbers, int count)
{
    std::string digits;
    while (count-- > 0)
        digits += static_cast<char>('0' + numbers.Below(10));
    return digits;
}

char Letter(Numbers& numbers) { return static_cast<char>('A' + numbers.Below(26)); }

/// Two neighbours changed places, a character lost or one too many.
void Mistype(std::string& text, Numbers& numbers)
{
    const std::size_t at = numbers.Below(static_cast<unsigned>(text.size() - 1));
    switch (numbers.Below(3)) {
    case 0:
        std::swap(text[at], text[at + 1]);
        break;
    case 1:
        text.erase(at, 1);
        break;
    default:
        text.insert(at, 1, text[at]);
    }
}

} // namespace

std::vector<std::string> NINumbers()
{
    Numbers numbers(1948);
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < kCount; ++i) {
        std::string text;
        if (i % 32 == 0) { // a temporary number
            text = Digits(numbers, 2) + Letter(numbers) + Digits(numbers, 5);
        } else {
            text = {Letter(numbers), Letter(numbers)};
            text += Digits(numbers, 6);
            if (i % 5 != 0)
                text += static_cast<char>('A' + numbers.Below(4));
        }
        if (i % 8 == 3)
            Mistype(text, numbers);
        texts.push_back(text);
    }
    return texts;
}

std::vector<std::string> UTRs()
{
    Numbers numbers(1996);
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < kCount; ++i) {
        std::string text = '0' + Digits(numbers, 9);
        while (!IsValidUTR(text.c_str()))
            ++text[0];
        if (i % 8 == 3)
            Mistype(text, numbers);
        texts.push_back(text);
    }
    return texts;
}

} // namespace Rules

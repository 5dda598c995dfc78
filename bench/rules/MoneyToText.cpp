#include <charconv>
#include <cstdio>
#include <cstring>

#ifdef BENCH_HAS_FMT
#include <fmt/compile.h>
#endif

#include "MorvUt/money/Pence.h"
#include "Subject.h"
#include "Values.h"

namespace Rules
{
namespace
{

CString OurText(__int64 pence)
{
    CString text;
    CurrencyToCStr(pence, text);
    return text;
}

std::uint64_t SizeOf(__int64 pence) { return static_cast<std::uint64_t>(pence < 0 ? -pence : pence); }

// Each peer writes into a buffer; the text is made of that.

char* WriteByToChars(char* at, char* end, __int64 pence)
{
    if (pence < 0)
        *at++ = '-';
    const std::uint64_t size = SizeOf(pence);
    at = std::to_chars(at, end, size / 100).ptr;
    *at++ = '.';
    if (size % 100 < 10)
        *at++ = '0';
    return std::to_chars(at, end, size % 100).ptr;
}

char* WriteByPrintf(char* at, char* end, __int64 pence)
{
    const unsigned long long size = SizeOf(pence);
    const auto room = static_cast<std::size_t>(end - at);
    return at + std::snprintf(at, room, "%s%llu.%02llu", pence < 0 ? "-" : "", size / 100, size % 100);
}

template<auto Write>
struct TextBy
{
    std::string operator()(__int64 pence) const
    {
        char buffer[32];
        return std::string(buffer, Write(buffer, std::end(buffer), pence));
    }
};

/// A caller's buffer with an amount, which the program ends with a 0.
struct Buffer
{
    char text[32];

    friend bool operator==(const Buffer& a, const Buffer& b) noexcept { return std::strcmp(a.text, b.text) == 0; }
};

template<auto Write>
struct BufferBy
{
    Buffer operator()(__int64 pence) const
    {
        Buffer buffer;
        *Write(buffer.text, std::end(buffer.text) - 1, pence) = '\0';
        return buffer;
    }
};

#ifdef BENCH_HAS_FMT
char* WriteByFmt(char* at, char*, __int64 pence)
{
    const std::uint64_t size = SizeOf(pence);
    return fmt::format_to(at, FMT_COMPILE("{}{}.{:02}"), pence < 0 ? "-" : "", size / 100, size % 100);
}

struct TextByFmt
{
    std::string operator()(__int64 pence) const
    {
        const std::uint64_t size = SizeOf(pence);
        return fmt::format(FMT_COMPILE("{}{}.{:02}"), pence < 0 ? "-" : "", size / 100, size % 100);
    }
};
#endif

/// The same with a comma before every three digits of the pounds.
template<class Plain>
auto WithCommas(Plain plain)
{
    return [plain](__int64 pence) {
        std::string text = plain(pence);
        const std::size_t skip = text[0] == '-';
        for (std::size_t at = text.size() - 3; at > skip + 3;)
            text.insert(at -= 3, 1, ',');
        return text;
    };
}

Buffer OurBuffer(__int64 pence)
{
    Buffer buffer;
    ConvertLongPenceToStr(pence, buffer.text, sizeof buffer.text);
    return buffer;
}

void RegisterPlain()
{
    Subject subject("pence to text", Amounts(), OurText, [] { SetShowCommaSeparators(0); });
    subject.Against("to_chars", TextBy<WriteByToChars>());
    subject.Against("snprintf", TextBy<WriteByPrintf>());
#ifdef BENCH_HAS_FMT
    subject.Against("fmt, compiled format", TextByFmt());
#endif
}

void RegisterWithCommas()
{
    Subject subject("pence to text with commas", Amounts(), OurText, [] { SetShowCommaSeparators(1); });
    subject.Against("to_chars, insert", WithCommas(TextBy<WriteByToChars>()));
    subject.Against("snprintf, insert", WithCommas(TextBy<WriteByPrintf>()));
#ifdef BENCH_HAS_FMT
    subject.Against("fmt, compiled format, insert", WithCommas(TextByFmt()));
#endif
}

void RegisterBuffer()
{
    Subject subject("pence into a buffer", Amounts(), OurBuffer, [] { SetShowCommaSeparators(0); });
    subject.Against("to_chars", BufferBy<WriteByToChars>());
    subject.Against("snprintf", BufferBy<WriteByPrintf>());
#ifdef BENCH_HAS_FMT
    subject.Against("fmt, compiled format", BufferBy<WriteByFmt>());
#endif
    subject.Slower(
        "ours writes the digits from the last to the first, for commas, and then copies them into the buffer, "
        "whose size it checks; the peer writes them where they stay");
}

} // namespace

void RegisterMoneyToText()
{
    RegisterPlain();
    RegisterWithCommas();
    RegisterBuffer();
}

} // namespace Rules

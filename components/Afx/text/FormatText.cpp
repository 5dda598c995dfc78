#include "Afx/text/FormatText.h"

#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>

#include "Afx/Exceptions.h"
#include "Afx/text/Utf8.h"

namespace Afx
{
namespace
{

using Detail::Placeholder;
using Size = Detail::FormatSize;

constexpr int kRealPrecision = 6;

/// Gathers the result in a buffer, so that short texts are appended at once; takes back what it appended when an
/// exception ends it.
class Writer
{
public:
    explicit Writer(std::string& out) noexcept : m_out(out), m_lengthBefore(out.size()) {}
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;
    ~Writer()
    {
        if (!m_finished)
            m_out.resize(m_lengthBefore);
    }

    void Put(char c)
    {
        if (m_used == sizeof m_buffer)
            Flush();
        m_buffer[m_used++] = c;
    }
    /// A whole number with zeros in front up to `width`, 20 at most.
    void PutNumber(std::uint32_t value, int width)
    {
        if (sizeof m_buffer - m_used < 20)
            Flush();
        int length = value < 10 ? 1 : value < 100 ? 2 : value < 1000 ? 3 : value < 10'000 ? 4 : 5;
        for (std::uint32_t rest = value / 100'000; rest != 0; rest /= 10)
            ++length;
        length = length < width ? width : length;
        for (char* at = m_buffer + m_used + length; at != m_buffer + m_used; value /= 10)
            *--at = static_cast<char>('0' + value % 10);
        m_used += static_cast<std::size_t>(length);
    }
    void Put(std::string_view text)
    {
        if (text.size() > sizeof m_buffer - m_used) {
            Flush();
            if (text.size() > sizeof m_buffer) {
                m_out += text;
                return;
            }
        }
        if (!text.empty())
            std::memcpy(m_buffer + m_used, text.data(), text.size());
        m_used += text.size();
    }
    void Fill(char c, int count)
    {
        for (; count > 0; --count)
            Put(c);
    }
    void Finish()
    {
        Flush();
        m_finished = true;
    }

private:
    void Flush()
    {
        m_out.append(m_buffer, m_used);
        m_used = 0;
    }

    std::string& m_out;
    std::size_t m_lengthBefore;
    std::size_t m_used = 0;
    bool m_finished = false;
    char m_buffer[256];
};

/// Walks over one format and writes it.
class Formatter
{
public:
    Formatter(std::string& out, std::string_view format, const FormatArg* args, std::size_t count) noexcept
        : m_writer(out), m_format(format), m_args(args), m_count(count)
    {}

    void Run();

private:
    [[noreturn]] void Fail(const Placeholder& place, std::string_view why) const;
    [[noreturn]] void FailUnused() const;
    bool WriteUsual();
    void Write(const Placeholder& place);
    void WriteSigned(const Placeholder& place, const FormatArg& arg);
    void WriteUnsigned(const Placeholder& place, const FormatArg& arg);
    void WriteChar(const Placeholder& place, const FormatArg& arg);
    void WriteText(const Placeholder& place, std::string_view text);
    void WriteReal(const Placeholder& place, const FormatArg& arg);
    void WriteDigits(const Placeholder& place, char sign, std::string_view digits);

    bool More() const noexcept { return m_at < m_format.size(); }

    Writer m_writer;
    std::string_view m_format;
    const FormatArg* m_args;
    std::size_t m_count;
    std::size_t m_at = 0;
    std::size_t m_used = 0; // arguments so far
};

[[noreturn]] void Throw(std::string message) { throw new CInvalidArgException(CString(std::move(message))); }

void Formatter::Fail(const Placeholder& place, std::string_view why) const
{
    std::string message = "Placeholder " + std::to_string(m_used + 1) + " (";
    message.append(place.text).append(") of the format \"").append(m_format).append("\" ").append(why);
    Throw(std::move(message));
}

void Formatter::FailUnused() const
{
    std::string message = "The format \"";
    message.append(m_format).append("\" takes ").append(std::to_string(m_used)).append(" arguments, not ");
    Throw(message + std::to_string(m_count));
}

void Formatter::Run()
{
    while (More()) {
        const char c = m_format[m_at];
        if (c != '%') {
            m_writer.Put(c);
            ++m_at;
        } else if (Detail::IsPerCentSign(m_format, m_at)) {
            m_writer.Put('%');
            m_at += 2;
        } else if (!WriteUsual()) {
            Write(Detail::PlaceholderReader::Read(m_format, m_at));
        }
    }
    if (m_used != m_count)
        FailUnused();
    m_writer.Finish();
}

/// Most placeholders are %s, %d or %0nd with the argument they should have: those are written without the detour over a
/// Placeholder. False, and nothing done, for any other.
bool Formatter::WriteUsual()
{
    const std::string_view rest = m_format.substr(m_at + 1, 3);
    if (rest.empty() || m_used == m_count)
        return false;
    const FormatArg& arg = m_args[m_used];
    if (rest[0] == 's' && arg.GetKind() == FormatArg::Kind::Text) {
        m_writer.Put(arg.Text());
        m_at += 2;
    } else {
        const bool hasWidth = rest.size() == 3 && rest[0] == '0' && rest[1] >= '1' && rest[1] <= '9';
        if (rest[hasWidth ? 2 : 0] != 'd' || arg.GetKind() != FormatArg::Kind::Signed || arg.Signed() < 0 ||
            arg.Signed() > std::numeric_limits<int>::max())
            return false;
        m_writer.PutNumber(static_cast<std::uint32_t>(arg.Signed()), hasWidth ? rest[1] - '0' : 1);
        m_at += hasWidth ? 4 : 2;
    }
    ++m_used;
    return true;
}

void Formatter::Write(const Placeholder& place)
{
    if (place.fault)
        Fail(place, place.fault);
    if (m_used == m_count)
        Fail(place, "has no argument");
    const FormatArg& arg = m_args[m_used];
    if (const char* const why = Detail::WhyNotArgument(place.conversion, arg.GetKind()))
        Fail(place, why);
    switch (place.conversion) {
    case 'd':
    case 'i':
        WriteSigned(place, arg);
        break;
    case 'c':
        WriteChar(place, arg);
        break;
    case 's':
        WriteText(place, arg.Text());
        break;
    case 'f':
    case 'g':
        WriteReal(place, arg);
        break;
    default:
        WriteUnsigned(place, arg);
    }
    ++m_used;
}

template<class T>
constexpr bool FitsBelow(std::uint64_t value) noexcept
{
    return value <= static_cast<std::uint64_t>(std::numeric_limits<T>::max());
}

bool FitsSigned(std::int64_t value, Size size) noexcept
{
    switch (size) {
    case Size::Int:
        return value >= std::numeric_limits<int>::min() && value <= std::numeric_limits<int>::max();
    case Size::Long:
        return value >= std::numeric_limits<long>::min() && value <= std::numeric_limits<long>::max();
    default:
        return true;
    }
}

bool FitsUnsigned(std::uint64_t value, Size size) noexcept
{
    switch (size) {
    case Size::Int:
        return FitsBelow<unsigned>(value);
    case Size::Long:
        return FitsBelow<unsigned long>(value);
    default:
        return true;
    }
}

/// The bits of a whole number or a character; a negative one is beyond every positive.
std::uint64_t BitsOf(const FormatArg& arg) noexcept
{
    return arg.GetKind() == FormatArg::Kind::Unsigned ? arg.Unsigned() : static_cast<std::uint64_t>(arg.Signed());
}

/// The digits of `value` at the end of `buffer`.
template<unsigned Base>
std::string_view Digits(std::uint64_t value, char (&buffer)[24], const char* alphabet) noexcept
{
    char* const end = buffer + sizeof buffer;
    char* first = end;
    auto low = static_cast<std::uint32_t>(value);
    for (; value != low; value /= Base, low = static_cast<std::uint32_t>(value)) // 64-bit division is slow
        *--first = alphabet[value % Base];
    do {
        *--first = alphabet[low % Base];
        low /= Base;
    } while (low != 0);
    return {first, static_cast<std::size_t>(end - first)};
}

char SignOf(const Placeholder& place, bool negative) noexcept
{
    return negative ? '-' : place.plus ? '+' : place.space ? ' ' : '\0';
}

void Formatter::WriteSigned(const Placeholder& place, const FormatArg& arg)
{
    bool negative = false;
    std::uint64_t magnitude = 0;
    if (arg.GetKind() == FormatArg::Kind::Signed) {
        const std::int64_t value = arg.Signed();
        if (!FitsSigned(value, place.size))
            Fail(place, "is too small for this value");
        negative = value < 0;
        magnitude = negative ? 0 - static_cast<std::uint64_t>(value) : static_cast<std::uint64_t>(value);
    } else {
        magnitude = arg.Unsigned();
        if (!FitsBelow<std::int64_t>(magnitude) || !FitsSigned(static_cast<std::int64_t>(magnitude), place.size))
            Fail(place, "is too small for this value");
    }
    char buffer[24];
    WriteDigits(place, SignOf(place, negative), Digits<10>(magnitude, buffer, kHexDigits));
}

void Formatter::WriteUnsigned(const Placeholder& place, const FormatArg& arg)
{
    if (arg.GetKind() == FormatArg::Kind::Signed && arg.Signed() < 0)
        Fail(place, "takes no negative number");
    const std::uint64_t value = BitsOf(arg);
    if (!FitsUnsigned(value, place.size))
        Fail(place, "is too small for this value");
    char buffer[24];
    if (place.conversion == 'u')
        WriteDigits(place, '\0', Digits<10>(value, buffer, kHexDigits));
    else
        WriteDigits(place, '\0', Digits<16>(value, buffer, place.conversion == 'x' ? kHexDigits : kCapitalHexDigits));
}

/// Sign, zeros and digits of a whole number in its field.
void Formatter::WriteDigits(const Placeholder& place, char sign, std::string_view digits)
{
    if (place.precision == 0 && digits == "0")
        digits = {};
    const int length = static_cast<int>(digits.size());
    int zeros = place.precision > length ? place.precision - length : 0;
    const int signLength = sign != '\0';
    if (place.zero && !place.left && place.precision < 0 && place.width > length + signLength)
        zeros = place.width - length - signLength;
    const int blanks = place.width - length - zeros - signLength;
    if (!place.left)
        m_writer.Fill(' ', blanks);
    if (sign)
        m_writer.Put(sign);
    m_writer.Fill('0', zeros);
    m_writer.Put(digits);
    if (place.left)
        m_writer.Fill(' ', blanks);
}

void Formatter::WriteChar(const Placeholder& place, const FormatArg& arg)
{
    const std::uint64_t code = BitsOf(arg);
    if (arg.GetKind() != FormatArg::Kind::Char && code > 127)
        Fail(place, "takes a character, 0 to 127");
    const char c = static_cast<char>(code);
    const int blanks = place.width - 1;
    if (!place.left)
        m_writer.Fill(' ', blanks);
    m_writer.Put(c);
    if (place.left)
        m_writer.Fill(' ', blanks);
}

void Formatter::WriteText(const Placeholder& place, std::string_view text)
{
    if (place.precision >= 0)
        text = CutUtf8(text, static_cast<std::size_t>(place.precision));
    const int blanks =
        text.size() < static_cast<std::size_t>(place.width) ? place.width - static_cast<int>(text.size()) : 0;
    if (!place.left)
        m_writer.Fill(' ', blanks);
    m_writer.Put(text);
    if (place.left)
        m_writer.Fill(' ', blanks);
}

void Formatter::WriteReal(const Placeholder& place, const FormatArg& arg)
{
    const double value = arg.Real();
    const int precision = place.precision < 0 ? kRealPrecision : place.precision;
    char buffer[std::numeric_limits<double>::max_exponent10 + 8 + Detail::kLongestFormatField];
    const bool isFixed = place.conversion == 'f';
    const std::to_chars_result end =
        std::to_chars(buffer, buffer + sizeof buffer, std::fabs(value),
                      isFixed ? std::chars_format::fixed : std::chars_format::general, precision);
    const std::string_view digits(buffer, static_cast<std::size_t>(end.ptr - buffer));
    Placeholder field = place;
    field.precision = -1; // spent; the rest is laid out as a whole number is
    field.zero &= std::isfinite(value);
    WriteDigits(field, SignOf(place, std::signbit(value)), digits);
}

} // namespace

void AppendFormat(std::string& out, std::string_view format, const FormatArg* args, std::size_t count)
{
    Formatter(out, format, args, count).Run();
}

} // namespace Afx

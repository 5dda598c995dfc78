#include "MorvUt/identifiers/Hex.h"

#include <memory>
#include <string>

IMPLEMENT_DYNAMIC(InvalidHexCharacterException, CException)
IMPLEMENT_DYNAMIC(InvalidHexStringException, CException)

namespace
{

constexpr unsigned kMaxBytes = (1u << 30) - 1; // the length of a text is an int
constexpr unsigned char kNoNibble = 0xFF;

/// The value of an upper-case hexadecimal digit; kNoNibble for any other character. Without branches, see Convert.
constexpr unsigned char Nibble(char character) noexcept
{
    const auto c = static_cast<unsigned char>(character);
    const auto digit = static_cast<unsigned char>(c - '0');
    const auto letter = static_cast<unsigned char>(c - 'A');
    const auto isDigit = static_cast<unsigned char>(digit < 10 ? 0xFF : 0);
    const auto isLetter = static_cast<unsigned char>(letter < 6 ? 0xFF : 0);
    return static_cast<unsigned char>((digit & isDigit) | ((letter + 10) & isLetter) |
                                      (~(isDigit | isLetter) & kNoNibble));
}

CString CharacterMessage(unsigned char character)
{
    CString message;
    message.Format("Character code %d is no hexadecimal digit: 0 to 9 and A to F are", int{character});
    return message;
}

CString StringMessage(InvalidHexReason reason, int length)
{
    if (reason != InvalidHexOddLength)
        return "There is no hexadecimal text";
    CString message;
    message.Format("A hexadecimal text has two characters for each byte; this has %d characters", length);
    return message;
}

} // namespace

InvalidHexCharacterException::InvalidHexCharacterException(unsigned char character)
    : CException(CharacterMessage(character)), m_character(character)
{}
InvalidHexCharacterException::~InvalidHexCharacterException() = default;

InvalidHexStringException::InvalidHexStringException(InvalidHexReason reason, const CString& text)
    : CException(StringMessage(reason, text.GetLength())), m_reason(reason), m_text(text)
{}
InvalidHexStringException::~InvalidHexStringException() = default;

CString BinaryToHex::Convert(const unsigned char* data, unsigned size)
{
    if (size > kMaxBytes)
        throw new CInvalidArgException("1 GiB or more is not written as hexadecimal text");
    if (!data)
        return {};
    std::string text(std::size_t{size} * 2, '\0');
    char* const out = text.data(); // a plain pointer: the compiler then does many bytes at once
    for (std::size_t i = 0; i < size; ++i) {
        out[2 * i] = static_cast<char>(NibbleToChar(static_cast<unsigned char>(data[i] >> 4)));
        out[2 * i + 1] = static_cast<char>(NibbleToChar(data[i]));
    }
    return CString(std::move(text));
}

unsigned char HexToBinary::CharToNibble(unsigned char character)
{
    const unsigned char nibble = Nibble(static_cast<char>(character));
    if (nibble == kNoNibble)
        throw new InvalidHexCharacterException(character);
    return nibble;
}

unsigned char* HexToBinary::Convert(const CString& text, unsigned* size)
{
    const std::string_view digits = text.View();
    if (digits.size() % 2 != 0)
        throw new InvalidHexStringException(InvalidHexOddLength, text);
    const std::size_t count = digits.size() / 2;
    if (size)
        *size = static_cast<unsigned>(count);
    auto bytes = std::make_unique_for_overwrite<unsigned char[]>(count ? count : 1);
    const char* const in = digits.data();
    unsigned char* const out = bytes.get();
    unsigned char seen = 0; // a bad character sets the upper bits; the loop itself does not branch
    for (std::size_t i = 0; i < count; ++i) {
        const unsigned char high = Nibble(in[2 * i]), low = Nibble(in[2 * i + 1]);
        out[i] = static_cast<unsigned char>(high << 4 | (low & 15));
        seen = static_cast<unsigned char>(seen | high | low);
    }
    if (seen > 15)
        for (const char c : digits)
            CharToNibble(static_cast<unsigned char>(c)); // throws at the first that is bad
    return bytes.release();
}

#include "MorvUt/identifiers/Hex.h"

#include <openssl/crypto.h>

#include "Subject.h"
#include "Values.h"

namespace Rules
{
namespace
{

using Data = std::vector<unsigned char>;

/// 8 to 64 bytes: keys, digests and what is enciphered with them.
std::vector<Data> Values()
{
    Numbers numbers(16);
    std::vector<Data> values;
    for (std::size_t i = 0; i < kCount; ++i) {
        Data data(8 + numbers.Below(57));
        for (unsigned char& byte : data)
            byte = static_cast<unsigned char>(numbers.Below(256));
        values.push_back(std::move(data));
    }
    return values;
}

CString OurHex(const Data& data) { return BinaryToHex::Convert(data.data(), static_cast<unsigned>(data.size())); }

std::vector<CString> Texts()
{
    std::vector<CString> texts;
    for (const Data& data : Values())
        texts.push_back(OurHex(data));
    return texts;
}

std::string LoopHex(const Data& data)
{
    constexpr char kDigits[] = "0123456789ABCDEF";
    std::string text;
    text.reserve(data.size() * 2);
    for (const unsigned char byte : data) {
        text += kDigits[byte >> 4];
        text += kDigits[byte & 15];
    }
    return text;
}

std::string OpenSslHex(const Data& data)
{
    std::string text(data.size() * 2, '\0');
    std::size_t length = 0; // the end mark is written where the text has its own
    OPENSSL_buf2hexstr_ex(text.data(), text.size() + 1, &length, data.data(), data.size(), '\0');
    return text;
}

/// An empty array when a character is no digit.
Bytes LoopBytes(const CString& text)
{
    const auto nibble = [](char c) {
        return c >= '0' && c <= '9' ? c - '0' : c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
    };
    const std::string& digits = text.Str();
    Bytes bytes{std::make_unique_for_overwrite<unsigned char[]>(digits.size() / 2), digits.size() / 2};
    for (std::size_t i = 0; i < bytes.size; ++i) {
        const int high = nibble(digits[2 * i]), low = nibble(digits[2 * i + 1]);
        if (high < 0 || low < 0)
            return {};
        bytes.data[i] = static_cast<unsigned char>(high << 4 | low);
    }
    return bytes;
}

Bytes OpenSslBytes(const CString& text)
{
    const std::size_t size = text.Str().size() / 2;
    Bytes bytes{std::make_unique_for_overwrite<unsigned char[]>(size), 0};
    if (!OPENSSL_hexstr2buf_ex(bytes.data.get(), size, &bytes.size, text.GetString(), '\0'))
        return {};
    return bytes;
}

} // namespace

void RegisterHex()
{
    Subject("binary to hexadecimal", Values(), OurHex)
        .Against("nibble loop", LoopHex)
        .Against("OPENSSL_buf2hexstr_ex", OpenSslHex);
    Subject("hexadecimal to binary", Texts(),
            [](const CString& text) {
                unsigned size = 0;
                std::unique_ptr<unsigned char[]> data(HexToBinary::Convert(text, &size));
                return Bytes{std::move(data), size};
            })
        .Against("nibble loop", LoopBytes)
        .Against("OPENSSL_hexstr2buf_ex", OpenSslBytes);
}

} // namespace Rules

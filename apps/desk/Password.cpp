#include "Password.h"

#include <vector>

#include "Afx/text/Numbers.h"
#include "MorvUt/identifiers/Hex.h"
#include "Shellkit/Digest.h"
#include "Shellkit/Random.h"

namespace Desk
{
namespace
{

constexpr char kMethod[] = "pbkdf2-sha256";
constexpr unsigned kRounds = 600'000;
constexpr unsigned kMostRounds = 100 * kRounds; // a damaged row must not keep the program busy for ever
constexpr std::size_t kSaltSize = 16, kKeySize = 32;

CString Hex(const Shellkit::Bytes& bytes)
{
    return BinaryToHex::Convert(bytes.data(), static_cast<unsigned>(bytes.size()));
}

Shellkit::Bytes Derive(std::string_view password, const Shellkit::Bytes& salt, unsigned rounds)
{
    return Shellkit::DeriveKey(password, salt, rounds, kKeySize);
}

/// The same time for whatever differs.
bool IsSame(std::string_view a, std::string_view b) noexcept
{
    unsigned difference = a.size() != b.size();
    for (std::size_t i = 0; i < a.size() && i < b.size(); ++i)
        difference |= static_cast<unsigned>(static_cast<unsigned char>(a[i]) ^ static_cast<unsigned char>(b[i]));
    return difference == 0;
}

/// The bytes of hexadecimal text; empty when it is none.
Shellkit::Bytes FromHex(const CString& text)
{
    const auto digit = [](char c) { return c >= '0' && c <= '9' ? c - '0' : c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1; };
    Shellkit::Bytes bytes;
    for (int i = 0; i + 1 < text.GetLength(); i += 2) {
        const int high = digit(text[i]), low = digit(text[i + 1]);
        if (high < 0 || low < 0)
            return {};
        bytes.push_back(static_cast<std::uint8_t>(high * 16 + low));
    }
    return bytes;
}

} // namespace

CString HashPassword(std::string_view password)
{
    const Shellkit::Bytes salt = Shellkit::RandomBytes(kSaltSize);
    CString hash;
    hash.Format("%s$%d$%s$%s", kMethod, static_cast<int>(kRounds), Hex(salt), Hex(Derive(password, salt, kRounds)));
    return hash;
}

bool IsPassword(std::string_view password, const CString& hash)
{
    std::vector<CString> parts;
    for (int at = 0; at >= 0;) {
        const CString part = hash.Tokenize("$", at);
        if (at >= 0)
            parts.push_back(part);
    }
    if (parts.size() != 4 || parts[0] != kMethod)
        return false;
    const unsigned rounds = Afx::ParseWhole<unsigned>(parts[1].View()).value_or(0);
    const Shellkit::Bytes salt = FromHex(parts[2]);
    return rounds > 0 && rounds <= kMostRounds && !salt.empty() &&
           IsSame(Hex(Derive(password, salt, rounds)).View(), parts[3].View());
}

} // namespace Desk

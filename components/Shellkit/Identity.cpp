#include "Shellkit/Identity.h"

#include <string_view>

#include "Afx/text/Ascii.h"
#include "Shellkit/Random.h"

namespace Shellkit
{
namespace
{

void AppendHex(std::string& out, std::uint32_t value, int digits)
{
    for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4)
        out += Afx::kCapitalHexDigits[value >> shift & 15];
}

} // namespace

GUID NewGuid()
{
    const Bytes random = RandomBytes(16);
    const auto join = [&](std::size_t at) { return static_cast<std::uint16_t>(random[at] << 8 | random[at + 1]); };
    GUID id{};
    id.Data1 = static_cast<std::uint32_t>(join(0)) << 16 | join(2);
    id.Data2 = join(4);
    id.Data3 = static_cast<std::uint16_t>((join(6) & 0x0fff) | 0x4000); // version 4: random
    id.Data4[0] = static_cast<std::uint8_t>((random[8] & 0x3f) | 0x80); // variant of RFC 4122
    for (std::size_t i = 1; i < 8; ++i)
        id.Data4[i] = random[8 + i];
    return id;
}

std::string FormatGuid(const GUID& id)
{
    std::string text;
    AppendHex(text, static_cast<std::uint32_t>(id.Data1), 8);
    text += '-';
    AppendHex(text, id.Data2, 4);
    text += '-';
    AppendHex(text, id.Data3, 4);
    text += '-';
    for (int i = 0; i < 8; ++i) {
        if (i == 2)
            text += '-';
        AppendHex(text, id.Data4[i], 2);
    }
    return text;
}

} // namespace Shellkit

CChainId::CChainId() : m_id(Shellkit::NewGuid()) {}

void CChainId::SetChainId(const GUID& id) { m_id = id; }

std::string CChainId::GetChainIdString() const { return Shellkit::FormatGuid(m_id); }

std::string CApplicationSessionId::GetSessionId()
{
    static const GUID session = Shellkit::NewGuid();
    return Shellkit::FormatGuid(session);
}

#include "Shellkit/Base64Url.h"

#include <string_view>

namespace Shellkit
{

std::string Base64Url(std::span<const std::uint8_t> data)
{
    constexpr std::string_view digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_";
    std::string text;
    text.reserve(data.size() / 3 * 4 + 3);
    unsigned waiting = 0, bits = 0; // bits of `waiting` not yet written
    for (const std::uint8_t byte : data) {
        waiting = (waiting << 8 | byte) & 0xfff; // never more than 12 wait
        for (bits += 8; bits >= 6; bits -= 6)
            text += digits[waiting >> (bits - 6) & 63];
    }
    if (bits > 0)
        text += digits[waiting << (6 - bits) & 63];
    return text;
}

} // namespace Shellkit

#include "Shellkit/Cipher.h"

#include <stdexcept>

#include "Shellkit/cipher/CipherPort.h"
#include "Shellkit/detail/Keys.h"

namespace Shellkit
{
namespace
{

using CipherPort::kNonceSize;
using CipherPort::kTagSize;

constexpr std::uint8_t kFormat = 1;
constexpr std::size_t kHeaderSize = 2; // format and key id, which the tag covers
static_assert(kEnvelopeOverhead == kHeaderSize + kNonceSize + kTagSize);
static_assert(kKeySize == CipherPort::kKeySize);

std::span<const std::uint8_t> AsBytes(std::string_view text) noexcept
{
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

[[noreturn]] void ThrowNoCipher() { throw std::runtime_error("The system's cipher library does not answer."); }

} // namespace

std::optional<Bytes> Seal(KeyId id, std::span<const std::uint8_t> plain)
{
    const auto key = Detail::KeyOf(id);
    if (!key)
        return std::nullopt;
    Bytes envelope(kEnvelopeOverhead + plain.size());
    envelope[0] = kFormat;
    envelope[1] = static_cast<std::uint8_t>(id);
    const std::span<std::uint8_t> whole(envelope);
    const auto nonce = whole.subspan<kHeaderSize, kNonceSize>();
    if (!CipherPort::FillRandom(nonce) ||
        !CipherPort::GcmSeal({key->Bytes(), nonce, whole.first<kHeaderSize>()}, plain,
                             whole.subspan(kHeaderSize + kNonceSize, plain.size()), whole.last<kTagSize>()))
        return std::nullopt;
    return envelope;
}

std::optional<Bytes> Seal(KeyId id, std::string_view plain) { return Seal(id, AsBytes(plain)); }

bool IsEnvelope(std::span<const std::uint8_t> bytes, KeyId key) noexcept
{
    return bytes.size() >= kEnvelopeOverhead && bytes[0] == kFormat && bytes[1] == static_cast<std::uint8_t>(key);
}

std::optional<Bytes> Open(std::span<const std::uint8_t> envelope)
{
    if (envelope.size() < kEnvelopeOverhead || envelope[0] != kFormat)
        return std::nullopt;
    const auto key = Detail::KeyOf(static_cast<KeyId>(envelope[1]));
    if (!key)
        return std::nullopt;
    Bytes plain(envelope.size() - kEnvelopeOverhead);
    const auto nonce = envelope.subspan<kHeaderSize, kNonceSize>();
    if (!CipherPort::GcmOpen({key->Bytes(), nonce, envelope.first<kHeaderSize>()},
                             envelope.subspan(kHeaderSize + kNonceSize, plain.size()), envelope.last<kTagSize>(),
                             plain)) {
        CipherPort::Wipe(plain); // what was deciphered before the tag failed
        return std::nullopt;
    }
    return plain;
}

std::optional<std::string> OpenText(std::span<const std::uint8_t> envelope)
{
    auto plain = Open(envelope);
    if (!plain)
        return std::nullopt;
    std::string text(plain->begin(), plain->end());
    CipherPort::Wipe(*plain);
    return text;
}

Bytes RandomBytes(std::size_t size)
{
    Bytes bytes(size);
    if (!CipherPort::FillRandom(bytes))
        throw std::runtime_error("The system gives no random numbers.");
    return bytes;
}

Bytes Sha256(std::string_view text)
{
    Bytes digest(CipherPort::kDigestSize);
    if (!CipherPort::Sha256(AsBytes(text), std::span(digest).first<CipherPort::kDigestSize>()))
        ThrowNoCipher();
    return digest;
}

Bytes DeriveKey(std::string_view password, std::span<const std::uint8_t> salt, unsigned rounds, std::size_t size)
{
    if (rounds == 0)
        throw std::invalid_argument("A key is derived in one round at least.");
    Bytes key(size);
    if (size && !CipherPort::Pbkdf2(AsBytes(password), salt, rounds, key))
        ThrowNoCipher();
    return key;
}

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

void Wipe(void* data, std::size_t size) noexcept
{
    if (data)
        CipherPort::Wipe({static_cast<std::uint8_t*>(data), size});
}

} // namespace Shellkit

#include "Shellkit/Envelope.h"

#include "Shellkit/cipher/CipherPort.h"
#include "Shellkit/detail/HeldKey.h"
#include "Shellkit/detail/NoCipher.h"

namespace Shellkit
{
namespace
{

using CipherPort::kNonceSize;
using CipherPort::kTagSize;

constexpr std::uint8_t kFormat = 1;
constexpr std::size_t kHeaderSize = 2; // format and key id, which the tag covers
static_assert(kEnvelopeOverhead == kHeaderSize + kNonceSize + kTagSize);

/// The application key is the digest of this. It is the same in every copy of the program, so it hides what it
/// enciphers from a casual reader of the program's file and from nobody else: nothing of a practice may rest under it.
constexpr std::uint8_t kApplicationSeed[] = {
    0x5d, 0x1f, 0xc2, 0x88, 0x3e, 0x97, 0x04, 0xb6, 0xe9, 0x70, 0x2b, 0xdd, 0x41, 0xa5, 0x16, 0xf8, //
    0x8c, 0x63, 0xfa, 0x35, 0x0e, 0xd7, 0x92, 0x49, 0xb1, 0x2c, 0x7e, 0xc4, 0x58, 0x9b, 0xe3, 0x06};

std::optional<Detail::SecretKey> ApplicationKey()
{
    Detail::SecretKey key;
    if (!CipherPort::Sha256(kApplicationSeed, key.Bytes()))
        return std::nullopt;
    return key;
}

std::optional<Detail::SecretKey> KeyOf(KeyId id)
{
    if (id == KeyId::Application)
        return ApplicationKey();
    return id == KeyId::Practice ? Detail::PracticeKey().Get() : std::nullopt; // any other number in a stored envelope
}

using KeyBytes = std::span<const std::uint8_t, CipherPort::kKeySize>;

std::optional<Bytes> SealUnder(KeyBytes key, KeyId id, std::span<const std::uint8_t> plain)
{
    Bytes envelope(kEnvelopeOverhead + plain.size());
    envelope[0] = kFormat;
    envelope[1] = static_cast<std::uint8_t>(id);
    const std::span<std::uint8_t> whole(envelope);
    const auto nonce = whole.subspan<kHeaderSize, kNonceSize>();
    if (!CipherPort::FillRandom(nonce) ||
        !CipherPort::GcmSeal({key, nonce, whole.first<kHeaderSize>()}, plain,
                             whole.subspan(kHeaderSize + kNonceSize, plain.size()), whole.last<kTagSize>()))
        return std::nullopt;
    return envelope;
}

/// `envelope` has the length and the format of one.
std::optional<Bytes> OpenUnder(KeyBytes key, std::span<const std::uint8_t> envelope)
{
    Bytes plain(envelope.size() - kEnvelopeOverhead);
    const auto nonce = envelope.subspan<kHeaderSize, kNonceSize>();
    if (!CipherPort::GcmOpen({key, nonce, envelope.first<kHeaderSize>()},
                             envelope.subspan(kHeaderSize + kNonceSize, plain.size()), envelope.last<kTagSize>(),
                             plain)) {
        CipherPort::Wipe(plain); // what was deciphered before the tag failed
        return std::nullopt;
    }
    return plain;
}

} // namespace

std::string CipherProblem() { return CipherPort::Problem(); }

std::optional<Bytes> Seal(KeyId id, std::span<const std::uint8_t> plain)
{
    Detail::NeedCipher();
    const auto key = KeyOf(id);
    return key ? SealUnder(key->Bytes(), id, plain) : std::nullopt;
}

std::optional<Bytes> Seal(KeyId id, std::string_view plain) { return Seal(id, AsBytes(plain)); }

std::optional<Bytes> SealWith(std::span<const std::uint8_t> practiceKey, std::span<const std::uint8_t> plain)
{
    Detail::NeedCipher();
    if (practiceKey.size() != CipherPort::kKeySize)
        return std::nullopt;
    return SealUnder(practiceKey.first<CipherPort::kKeySize>(), KeyId::Practice, plain);
}

bool IsEnvelope(std::span<const std::uint8_t> bytes, KeyId key) noexcept
{
    return bytes.size() >= kEnvelopeOverhead && bytes[0] == kFormat && bytes[1] == static_cast<std::uint8_t>(key);
}

std::optional<Bytes> Open(std::span<const std::uint8_t> envelope)
{
    Detail::NeedCipher();
    if (envelope.size() < kEnvelopeOverhead || envelope[0] != kFormat)
        return std::nullopt;
    const auto key = KeyOf(static_cast<KeyId>(envelope[1]));
    return key ? OpenUnder(key->Bytes(), envelope) : std::nullopt;
}

std::optional<Bytes> OpenWith(std::span<const std::uint8_t> practiceKey, std::span<const std::uint8_t> envelope)
{
    Detail::NeedCipher();
    if (practiceKey.size() != CipherPort::kKeySize || !IsEnvelope(envelope, KeyId::Practice))
        return std::nullopt;
    return OpenUnder(practiceKey.first<CipherPort::kKeySize>(), envelope);
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

} // namespace Shellkit

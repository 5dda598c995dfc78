#include "Shellkit/Digest.h"

#include <stdexcept>

#include "Shellkit/cipher/CipherPort.h"
#include "Shellkit/detail/NoCipher.h"

namespace Shellkit
{
Bytes Sha256(std::string_view text)
{
    Bytes digest(CipherPort::kDigestSize);
    if (!CipherPort::Sha256(AsBytes(text), std::span(digest).first<CipherPort::kDigestSize>()))
        Detail::ThrowNoCipher();
    return digest;
}

Bytes DeriveKey(std::string_view password, std::span<const std::uint8_t> salt, unsigned rounds, std::size_t size)
{
    if (rounds == 0)
        throw std::invalid_argument("A key is derived in one round at least.");
    Bytes key(size);
    if (size && !CipherPort::Pbkdf2(AsBytes(password), salt, rounds, key))
        Detail::ThrowNoCipher();
    return key;
}

} // namespace Shellkit

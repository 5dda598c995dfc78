#include "Shellkit/cipher/CipherPort.h"

#include <algorithm>
#include <limits>

#include "Afx/Platform.h"

#include <bcrypt.h>

namespace Shellkit::CipherPort
{
namespace
{

bool Done(NTSTATUS status) noexcept { return status >= 0; }

/// The system counts in ULONG, of 32 bits also in a 64-bit program.
bool Fits(std::size_t size) noexcept { return size <= std::numeric_limits<ULONG>::max(); }
ULONG Size(std::size_t size) noexcept { return static_cast<ULONG>(size); }

/// The system's functions take their input without const, and some refuse null for an empty one.
PUCHAR Data(Input data) noexcept
{
    static UCHAR none = 0;
    return data.empty() ? &none : const_cast<PUCHAR>(data.data());
}

/// An algorithm of the system; null when it has none of that name.
class Algorithm
{
public:
    explicit Algorithm(const wchar_t* name, ULONG flags = 0) noexcept
    {
        if (!Done(BCryptOpenAlgorithmProvider(&m_handle, name, nullptr, flags)))
            m_handle = nullptr;
    }
    ~Algorithm()
    {
        if (m_handle)
            BCryptCloseAlgorithmProvider(m_handle, 0);
    }
    Algorithm(const Algorithm&) = delete;
    Algorithm& operator=(const Algorithm&) = delete;

    explicit operator bool() const noexcept { return m_handle != nullptr; }
    BCRYPT_ALG_HANDLE Get() const noexcept { return m_handle; }

private:
    BCRYPT_ALG_HANDLE m_handle = nullptr;
};

/// A key for AES in Galois/counter mode; null when the system cannot do that.
class GcmKey
{
public:
    explicit GcmKey(Input key) noexcept : m_aes(BCRYPT_AES_ALGORITHM)
    {
        wchar_t mode[] = BCRYPT_CHAIN_MODE_GCM;
        if (!m_aes ||
            !Done(
                BCryptSetProperty(m_aes.Get(), BCRYPT_CHAINING_MODE, reinterpret_cast<PUCHAR>(mode), sizeof mode, 0)) ||
            !Done(BCryptGenerateSymmetricKey(m_aes.Get(), &m_handle, nullptr, 0, Data(key), Size(key.size()), 0)))
            m_handle = nullptr;
    }
    ~GcmKey()
    {
        if (m_handle)
            BCryptDestroyKey(m_handle);
    }
    GcmKey(const GcmKey&) = delete;
    GcmKey& operator=(const GcmKey&) = delete;

    explicit operator bool() const noexcept { return m_handle != nullptr; }
    BCRYPT_KEY_HANDLE Get() const noexcept { return m_handle; }

private:
    Algorithm m_aes; // outlives the key
    BCRYPT_KEY_HANDLE m_handle = nullptr;
};

/// What the system's functions want to know about one GCM operation; they write the tag, or read it.
BCRYPT_AUTHENTICATED_CIPHER_MODE_INFO ModeInfo(const GcmParameters& with, Output tag) noexcept
{
    BCRYPT_AUTHENTICATED_CIPHER_MODE_INFO info;
    BCRYPT_INIT_AUTH_MODE_INFO(info);
    info.pbNonce = Data(with.nonce);
    info.cbNonce = Size(with.nonce.size());
    info.pbAuthData = Data(with.associated);
    info.cbAuthData = Size(with.associated.size());
    info.pbTag = tag.data();
    info.cbTag = Size(tag.size());
    return info;
}

bool FitsAll(const GcmParameters& with, std::size_t from, std::size_t to) noexcept
{
    return from == to && Fits(from) && Fits(with.associated.size());
}

class Hash
{
public:
    explicit Hash(const Algorithm& algorithm) noexcept
    {
        if (!algorithm || !Done(BCryptCreateHash(algorithm.Get(), &m_handle, nullptr, 0, nullptr, 0, 0)))
            m_handle = nullptr;
    }
    ~Hash()
    {
        if (m_handle)
            BCryptDestroyHash(m_handle);
    }
    Hash(const Hash&) = delete;
    Hash& operator=(const Hash&) = delete;

    bool Digest(Input data, Output digest) noexcept
    {
        return m_handle && Done(BCryptHashData(m_handle, Data(data), Size(data.size()), 0)) &&
               Done(BCryptFinishHash(m_handle, digest.data(), Size(digest.size()), 0));
    }

private:
    BCRYPT_HASH_HANDLE m_handle = nullptr;
};

} // namespace

std::string Problem() { return {}; }

bool FillRandom(Output out) noexcept
{
    return Fits(out.size()) && (out.empty() || Done(BCryptGenRandom(nullptr, out.data(), Size(out.size()),
                                                                    BCRYPT_USE_SYSTEM_PREFERRED_RNG)));
}

bool GcmSeal(const GcmParameters& with, Input plain, Output text, std::span<std::uint8_t, kTagSize> tag) noexcept
{
    const GcmKey key(with.key);
    auto info = ModeInfo(with, tag);
    ULONG done = 0;
    return key && FitsAll(with, plain.size(), text.size()) &&
           Done(BCryptEncrypt(key.Get(), Data(plain), Size(plain.size()), &info, nullptr, 0, Data(text),
                              Size(text.size()), &done, 0)) &&
           done == text.size();
}

bool GcmOpen(const GcmParameters& with, Input text, std::span<const std::uint8_t, kTagSize> tag, Output plain) noexcept
{
    const GcmKey key(with.key);
    std::array<std::uint8_t, kTagSize> expected; // the call takes it without const
    std::copy(tag.begin(), tag.end(), expected.begin());
    auto info = ModeInfo(with, expected);
    ULONG done = 0;
    return key && FitsAll(with, text.size(), plain.size()) &&
           Done(BCryptDecrypt(key.Get(), Data(text), Size(text.size()), &info, nullptr, 0, Data(plain),
                              Size(plain.size()), &done, 0)) &&
           done == plain.size();
}

bool Sha256(Input data, std::span<std::uint8_t, kDigestSize> digest) noexcept
{
    const Algorithm sha(BCRYPT_SHA256_ALGORITHM);
    return Fits(data.size()) && Hash(sha).Digest(data, digest);
}

bool Pbkdf2(Input password, Input salt, unsigned rounds, Output key) noexcept
{
    const Algorithm hmac(BCRYPT_SHA256_ALGORITHM, BCRYPT_ALG_HANDLE_HMAC_FLAG);
    return rounds > 0 && hmac && Fits(password.size()) && Fits(salt.size()) && Fits(key.size()) &&
           Done(BCryptDeriveKeyPBKDF2(hmac.Get(), Data(password), Size(password.size()), Data(salt), Size(salt.size()),
                                      rounds, key.data(), Size(key.size()), 0));
}

void Wipe(Output data) noexcept { SecureZeroMemory(data.data(), data.size()); }

} // namespace Shellkit::CipherPort

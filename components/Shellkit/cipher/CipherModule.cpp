// The module's side: the ciphers are OpenSSL's.

#include <algorithm>
#include <climits>
#include <memory>

#include <openssl/crypto.h>
#include <openssl/err.h>
#include <openssl/evp.h>
#include <openssl/rand.h>

#include "Shellkit/cipher/CipherModule.h"

namespace Shellkit::OpenSsl
{
namespace
{

using CipherPort::GcmParameters;
using CipherPort::Input;
using CipherPort::kDigestSize;
using CipherPort::kTagSize;
using CipherPort::Output;

struct FreeContext
{
    void operator()(EVP_CIPHER_CTX* context) const noexcept { EVP_CIPHER_CTX_free(context); }
};
using CipherContext = std::unique_ptr<EVP_CIPHER_CTX, FreeContext>;

/// Takes back what a failed call leaves in the thread's error queue, where a TLS connection would find it.
class QuietErrors
{
public:
    QuietErrors() noexcept { ERR_set_mark(); }
    ~QuietErrors() { ERR_pop_to_mark(); }
    QuietErrors(const QuietErrors&) = delete;
    QuietErrors& operator=(const QuietErrors&) = delete;
};

/// OpenSSL counts in int.
bool Fits(std::size_t size) noexcept { return size <= static_cast<std::size_t>(INT_MAX); }
int Int(std::size_t size) noexcept { return static_cast<int>(size); }

const char* Chars(Input data) noexcept { return reinterpret_cast<const char*>(data.data()); }

bool SealInto(EVP_CIPHER_CTX* context, const GcmParameters& with, Input plain, Output text, Output tag) noexcept
{
    int done = 0;
    std::uint8_t last[kTagSize]; // GCM leaves nothing for it
    return EVP_EncryptInit_ex(context, EVP_aes_256_gcm(), nullptr, with.key.data(), with.nonce.data()) == 1 &&
           EVP_EncryptUpdate(context, nullptr, &done, with.associated.data(), Int(with.associated.size())) == 1 &&
           (plain.empty() || EVP_EncryptUpdate(context, text.data(), &done, plain.data(), Int(plain.size())) == 1) &&
           EVP_EncryptFinal_ex(context, last, &done) == 1 &&
           EVP_CIPHER_CTX_ctrl(context, EVP_CTRL_GCM_GET_TAG, Int(kTagSize), tag.data()) == 1;
}

bool OpenInto(EVP_CIPHER_CTX* context, const GcmParameters& with, Input text, Output tag, Output plain) noexcept
{
    int done = 0;
    std::uint8_t last[kTagSize];
    return EVP_DecryptInit_ex(context, EVP_aes_256_gcm(), nullptr, with.key.data(), with.nonce.data()) == 1 &&
           EVP_DecryptUpdate(context, nullptr, &done, with.associated.data(), Int(with.associated.size())) == 1 &&
           (text.empty() || EVP_DecryptUpdate(context, plain.data(), &done, text.data(), Int(text.size())) == 1) &&
           EVP_CIPHER_CTX_ctrl(context, EVP_CTRL_GCM_SET_TAG, Int(kTagSize), tag.data()) == 1 &&
           EVP_DecryptFinal_ex(context, last, &done) == 1;
}

bool FillRandom(Output out) noexcept
{
    const QuietErrors quiet;
    return Fits(out.size()) && (out.empty() || RAND_bytes(out.data(), Int(out.size())) == 1);
}

bool GcmSeal(const GcmParameters& with, Input plain, Output text, std::span<std::uint8_t, kTagSize> tag) noexcept
{
    const QuietErrors quiet;
    const CipherContext context(EVP_CIPHER_CTX_new());
    return context && text.size() == plain.size() && Fits(plain.size()) && Fits(with.associated.size()) &&
           SealInto(context.get(), with, plain, text, tag);
}

bool GcmOpen(const GcmParameters& with, Input text, std::span<const std::uint8_t, kTagSize> tag, Output plain) noexcept
{
    const QuietErrors quiet;
    const CipherContext context(EVP_CIPHER_CTX_new());
    std::array<std::uint8_t, kTagSize> expected; // the call takes it without const
    std::copy(tag.begin(), tag.end(), expected.begin());
    return context && plain.size() == text.size() && Fits(text.size()) && Fits(with.associated.size()) &&
           OpenInto(context.get(), with, text, expected, plain);
}

bool Sha256(Input data, std::span<std::uint8_t, kDigestSize> digest) noexcept
{
    const QuietErrors quiet;
    return EVP_Digest(data.data(), data.size(), digest.data(), nullptr, EVP_sha256(), nullptr) == 1;
}

bool Pbkdf2(Input password, Input salt, unsigned rounds, Output key) noexcept
{
    const QuietErrors quiet;
    return rounds > 0 && Fits(rounds) && Fits(password.size()) && Fits(salt.size()) && Fits(key.size()) &&
           PKCS5_PBKDF2_HMAC(Chars(password), Int(password.size()), salt.data(), Int(salt.size()), Int(rounds),
                             EVP_sha256(), Int(key.size()), key.data()) == 1;
}

} // namespace
} // namespace Shellkit::OpenSsl

const Shellkit::CipherFunctions* MorvUtCiphers()
{
    using namespace Shellkit::OpenSsl;
    static constexpr Shellkit::CipherFunctions kFunctions{&FillRandom, &GcmSeal, &GcmOpen, &Sha256, &Pbkdf2};
    return &kFunctions;
}

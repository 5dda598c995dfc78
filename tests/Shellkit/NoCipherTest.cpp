#include <stdexcept>
#include <string_view>

#include <gtest/gtest.h>
#include <openssl/crypto.h>
#include <openssl/provider.h>

#include "Shellkit/Cipher.h"

using Shellkit::Bytes;
using Shellkit::KeyId;

namespace
{

Bytes Raw(std::string_view text) { return {text.begin(), text.end()}; }

/// While it lives, OpenSSL has no algorithm to offer on this thread.
class WithoutCipher
{
public:
    WithoutCipher() : m_empty(OSSL_LIB_CTX_new()), m_none(OSSL_PROVIDER_load(m_empty, "null"))
    {
        m_before = OSSL_LIB_CTX_set0_default(m_empty);
    }
    ~WithoutCipher()
    {
        OSSL_LIB_CTX_set0_default(m_before);
        OSSL_PROVIDER_unload(m_none);
        OSSL_LIB_CTX_free(m_empty);
    }
    WithoutCipher(const WithoutCipher&) = delete;
    WithoutCipher& operator=(const WithoutCipher&) = delete;

private:
    OSSL_LIB_CTX* m_empty;
    OSSL_PROVIDER* m_none;
    OSSL_LIB_CTX* m_before;
};

} // namespace

TEST(NoCipher, SealsOpensAndMakesNothing)
{
    const auto sealed = Shellkit::Seal(KeyId::Application, "token");
    ASSERT_TRUE(sealed);
    Bytes text = Raw("password");
    {
        const WithoutCipher none;
        EXPECT_FALSE(Shellkit::Seal(KeyId::Application, "id"));
        EXPECT_FALSE(Shellkit::Open(*sealed));
        EXPECT_THROW(Shellkit::RandomBytes(1), std::runtime_error);
        EXPECT_THROW(Shellkit::Sha256(""), std::runtime_error);
        EXPECT_THROW(Shellkit::DeriveKey("p", {}, 1, 16), std::runtime_error);
        EXPECT_THROW(Encrypt(text.data(), 8), std::runtime_error);
        EXPECT_EQ(text, Raw("password"));
    }
    EXPECT_EQ(Shellkit::OpenText(*sealed), "token");
}

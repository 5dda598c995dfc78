#include <stdexcept>

#include <gtest/gtest.h>
#include <openssl/crypto.h>
#include <openssl/provider.h>

#include "Shellkit/Bytes.h"
#include "Shellkit/Digest.h"
#include "Shellkit/Envelope.h"
#include "Shellkit/MemoryCipher.h"
#include "Shellkit/Random.h"

using Shellkit::Bytes;
using Shellkit::KeyId;

TEST(NoCipher, SealsOpensAndMakesNothing)
{
    const Bytes sealed = Shellkit::Seal(KeyId::Application, "token").value();
    const Bytes password = {'p', 'a', 's', 's', 'w', 'o', 'r', 'd'};
    Bytes text = password;
    OSSL_LIB_CTX* const empty = OSSL_LIB_CTX_new();
    OSSL_PROVIDER* const none = OSSL_PROVIDER_load(empty, "null");
    OSSL_LIB_CTX* const before = OSSL_LIB_CTX_set0_default(empty); // no algorithm to offer on this thread
    EXPECT_FALSE(Shellkit::Seal(KeyId::Application, "id"));
    EXPECT_FALSE(Shellkit::Open(sealed));
    EXPECT_THROW(Shellkit::RandomBytes(1), std::runtime_error);
    EXPECT_THROW(Shellkit::Sha256(""), std::runtime_error);
    EXPECT_THROW(Shellkit::DeriveKey("p", {}, 1, 16), std::runtime_error);
    EXPECT_THROW(Encrypt(text.data(), 8), std::runtime_error);
    EXPECT_EQ(text, password);
    OSSL_LIB_CTX_set0_default(before);
    OSSL_PROVIDER_unload(none);
    OSSL_LIB_CTX_free(empty);
    EXPECT_EQ(Shellkit::OpenText(sealed), "token");
}

#include "Shellkit/Base64Url.h"
#include "Shellkit/Bytes.h"
#include "Shellkit/Digest.h"
#include "Shellkit/Envelope.h"
#include "Shellkit/MemoryCipher.h"
#include "Shellkit/PracticeKey.h"
#include "Shellkit/Random.h"

#include <functional>
#include <numeric>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>

#include "support/Test.h"

using Shellkit::Bytes;
using Shellkit::KeyId;

namespace
{

Bytes FromHex(std::string_view text)
{
    Bytes bytes;
    for (std::size_t i = 0; i < text.size(); i += 2)
        bytes.push_back(static_cast<std::uint8_t>(std::stoi(std::string(text.substr(i, 2)), nullptr, 16)));
    return bytes;
}

Bytes Raw(std::string_view text) { return {text.begin(), text.end()}; }

const Bytes kKey = FromHex("000102030405060708090a0b0c0d0e0f101112131415161718191a1b1c1d1e1f");

class Envelope : public testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(Shellkit::SetPracticeKey(kKey)); }
    void TearDown() override { Shellkit::SetPracticeKey({}); }
};

} // namespace

TEST(Sha256, GivesThePublishedDigests)
{
    EXPECT_EQ(Shellkit::Sha256(""), FromHex("e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855"));
    EXPECT_EQ(Shellkit::Sha256("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"), // FIPS 180, two blocks
              FromHex("248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1"));
}

TEST(DeriveKey, GivesTheKeysOfRfc7914)
{
    EXPECT_EQ(Shellkit::DeriveKey("passwd", Raw("salt"), 1, 64),
              FromHex("55ac046e56e3089fec1691c22544b605f94185216dde0465e68b9d57c20dacbc"
                      "49ca9cccf179b645991664b39d77ef317c71b845b1e30bd509112041d3a19783"));
    EXPECT_EQ(Shellkit::DeriveKey("Password", Raw("NaCl"), 80'000, 64),
              FromHex("4ddcd8f60b98be21830cee5ef22701f9641a4418d04c0414aeff08876b34ab56"
                      "a1d425a1225833549adb841b51c9b3176a272bdebba1d078478f62b397f33c8d"));
    EXPECT_THROW(Shellkit::DeriveKey("passwd", Raw("salt"), 0, 64), std::invalid_argument);
}

TEST(Base64Url, GivesThePublishedTexts)
{
    EXPECT_EQ(Shellkit::Base64Url({}), "");
    EXPECT_EQ(Shellkit::Base64Url(Raw("f")), "Zg");            // RFC 4648, no padding
    EXPECT_EQ(Shellkit::Base64Url(FromHex("fbffbf")), "-_-_"); // the two digits that the URL alphabet changes
    EXPECT_EQ(Shellkit::Base64Url(Shellkit::Sha256("dBjftJeZ4CVP-mB92K27uhbUJU1p1r_wW1gFWFOEjXk")),
              "E9Melhoa2OwvFrEMTJguCHaoeK1t8URWbuGJSstw-cM"); // RFC 7636, the code challenge
}

TEST_F(Envelope, OpensWhatWasSealed)
{
    for (const KeyId key : {KeyId::Application, KeyId::Practice})
        for (const std::string& text : {std::string(), std::string("a\0b", 3), std::string(100'000, 'z')}) {
            const Bytes envelope = Shellkit::Seal(key, text).value();
            EXPECT_EQ(envelope.size(), text.size() + Shellkit::kEnvelopeOverhead);
            EXPECT_EQ(Shellkit::OpenText(envelope), text);
        }
}

TEST_F(Envelope, OpensByItsFormat)
{
    // Made by another AES-GCM implementation.
    const ::Test::Case<const char*, std::optional<std::string>> rows[] = {
        {"0100a0a1a2a3a4a5a6a7a8a9aaabaacd0729a465514810a1d7b6b8a2367decfaed6e1d0ad66dea1875242a", "refresh token",
         "in built programs"},
        {"0101a0a1a2a3a4a5a6a7a8a9aaab947d1a5f20b86a9f160aecb669bba7d2890bc72f997c4c49be06631316", "refresh token",
         "in practices' databases"},
        {"0201a0a1a2a3a4a5a6a7a8a9aaab947d1a5f20b86a9f160aecb6690d038722c1b20c93c3a35ad2b8049b09", std::nullopt,
         "of a later format, sealed with our key"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Shellkit::OpenText(FromHex(row.in)), row.out) << row.why;
}

TEST_F(Envelope, ChangedOrCutAnywhereDoesNotOpen)
{
    const Bytes sealed = Shellkit::Seal(KeyId::Practice, "refresh token").value();
    for (std::size_t at = 0; at < sealed.size(); ++at) {
        EXPECT_FALSE(Shellkit::Open(std::span(sealed).first(at))) << at;
        for (unsigned bit = 0; bit < 8; ++bit) {
            Bytes envelope = sealed;
            envelope[at] = static_cast<std::uint8_t>(envelope[at] ^ 1u << bit);
            EXPECT_FALSE(Shellkit::Open(envelope)) << "byte " << at << " bit " << bit;
        }
    }
    Bytes longer = sealed;
    longer.push_back(0);
    EXPECT_FALSE(Shellkit::Open(longer));
}

TEST_F(Envelope, NeedsTheKeyItWasMadeWith)
{
    const Bytes sealed = Shellkit::Seal(KeyId::Practice, "token").value();
    Bytes other = kKey;
    other.back() ^= 1;
    ASSERT_TRUE(Shellkit::SetPracticeKey(other));
    EXPECT_FALSE(Shellkit::Open(sealed));

    ASSERT_TRUE(Shellkit::SetPracticeKey({}));
    EXPECT_FALSE(Shellkit::HasPracticeKey());
    EXPECT_FALSE(Shellkit::Open(sealed));
    EXPECT_FALSE(Shellkit::Seal(KeyId::Practice, "token")); // never under another key instead
    const auto id = Shellkit::Seal(KeyId::Application, "id");
    EXPECT_TRUE(id && !Shellkit::IsEnvelope(*id, KeyId::Practice));

    ASSERT_TRUE(Shellkit::SetPracticeKey(kKey));
    EXPECT_FALSE(Shellkit::Seal(static_cast<KeyId>(2), "token"));
    for (const std::size_t size : {1u, 16u, 31u, 33u, 64u})
        EXPECT_FALSE(Shellkit::SetPracticeKey(Bytes(size))) << size;
    EXPECT_EQ(Shellkit::OpenText(sealed), "token") << "a key of another length is refused, the old one stays";
}

TEST_F(Envelope, OfOneTextLooksDifferentEachTime)
{
    std::set<Bytes> seen;
    for (int i = 0; i < 50; ++i)
        seen.insert(Shellkit::Seal(KeyId::Practice, "token").value());
    EXPECT_EQ(seen.size(), 50u);
}

TEST(EncryptInPlace, ComesBackAtEveryLength)
{
    for (unsigned length = 0; length <= 300; ++length) {
        const Bytes plain = Shellkit::RandomBytes(length + 1); // the last byte behind the text: not to be touched
        Bytes text = plain;
        Encrypt(text.data(), length);
        EXPECT_EQ(text.back(), plain.back());
        EXPECT_TRUE(text != plain || length < 16) << length; // a short text may by chance stay
        Decrypt(text.data(), length);
        EXPECT_EQ(text, plain) << length;
    }
    Encrypt(nullptr, 0);
    Decrypt(nullptr, 0);
}

TEST(EncryptInPlace, TwoTextsLaidOverEachOtherGiveNothingAway)
{
    // With one key stream for all texts the difference of two enciphered texts would be that of the plain ones.
    const Bytes plain = Raw("correct horse battery");
    for (std::size_t at = 0; at < plain.size(); ++at) {
        Bytes one = plain, other = plain;
        other[at] ^= 0x20;
        Encrypt(one.data(), 21);
        Encrypt(other.data(), 21);
        const int equal =
            std::inner_product(one.begin(), one.end(), other.begin(), 0, std::plus<>(), std::equal_to<>());
        EXPECT_LT(equal, 8) << "difference in byte " << at; // 20 with a key stream; by chance each byte once in 256
    }
}

TEST(Wipe, LeavesZeros)
{
    Bytes secret = Raw("secret");
    Shellkit::Wipe(secret.data(), 5);
    EXPECT_EQ(secret, (Bytes{0, 0, 0, 0, 0, 't'}));
    Shellkit::Wipe(nullptr, 0);
}

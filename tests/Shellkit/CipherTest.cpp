#include "Shellkit/Cipher.h"

#include <algorithm>
#include <set>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include "support/Case.h"

using Shellkit::Bytes;
using Shellkit::KeyId;

namespace
{

std::string Hex(const Bytes& bytes)
{
    std::string text;
    for (const std::uint8_t byte : bytes) {
        text += "0123456789abcdef"[byte >> 4];
        text += "0123456789abcdef"[byte & 15];
    }
    return text;
}

Bytes FromHex(const std::string& text)
{
    Bytes bytes;
    for (std::size_t i = 0; i < text.size(); i += 2)
        bytes.push_back(static_cast<std::uint8_t>(std::stoi(text.substr(i, 2), nullptr, 16)));
    return bytes;
}

Bytes Raw(std::string_view text) { return {text.begin(), text.end()}; }

/// 00 01 02 ... 1f
Bytes CountingKey()
{
    Bytes key(Shellkit::kKeySize);
    for (std::size_t i = 0; i < key.size(); ++i)
        key[i] = static_cast<std::uint8_t>(i);
    return key;
}

class Envelope : public testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(Shellkit::SetPracticeKey(CountingKey())); }
    void TearDown() override { Shellkit::SetPracticeKey({}); }
};

} // namespace

TEST(Sha256, GivesThePublishedDigests)
{
    const ::Test::Case<std::string, std::string> rows[] = {
        {"", "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855", "empty"},
        {"abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq",
         "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1", "FIPS 180, two blocks"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Hex(Shellkit::Sha256(row.in)), row.out) << row.why;
}

TEST(DeriveKey, GivesTheKeysOfRfc7914)
{
    EXPECT_EQ(Hex(Shellkit::DeriveKey("passwd", Raw("salt"), 1, 64)),
              "55ac046e56e3089fec1691c22544b605f94185216dde0465e68b9d57c20dacbc"
              "49ca9cccf179b645991664b39d77ef317c71b845b1e30bd509112041d3a19783");
    EXPECT_EQ(Hex(Shellkit::DeriveKey("Password", Raw("NaCl"), 80'000, 64)),
              "4ddcd8f60b98be21830cee5ef22701f9641a4418d04c0414aeff08876b34ab56"
              "a1d425a1225833549adb841b51c9b3176a272bdebba1d078478f62b397f33c8d");
    EXPECT_THROW(Shellkit::DeriveKey("passwd", Raw("salt"), 0, 64), std::invalid_argument);
}

TEST(Base64Url, GivesThePublishedTexts)
{
    const ::Test::Case<Bytes, const char*> rows[] = {
        {{}, "", "empty"},
        {Raw("f"), "Zg", "RFC 4648, no padding after one byte"},
        {{0xfb, 0xff, 0xbf}, "-_-_", "the two digits that the URL alphabet changes"},
        {Shellkit::Sha256("dBjftJeZ4CVP-mB92K27uhbUJU1p1r_wW1gFWFOEjXk"), "E9Melhoa2OwvFrEMTJguCHaoeK1t8URWbuGJSstw-cM",
         "RFC 7636, the code challenge"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Shellkit::Base64Url(row.in), row.out) << row.why;
}

TEST_F(Envelope, OpensWhatWasSealed)
{
    const std::string texts[] = {"", "x", "refresh token", std::string("a\0b", 3), std::string(100'000, 'z')};
    for (const KeyId key : {KeyId::Application, KeyId::Practice}) {
        for (const std::string& text : texts) {
            const auto envelope = Shellkit::Seal(key, text);
            ASSERT_TRUE(envelope);
            EXPECT_EQ(envelope->size(), text.size() + Shellkit::kEnvelopeOverhead);
            EXPECT_EQ(Shellkit::OpenText(*envelope), text);
        }
    }
}

TEST_F(Envelope, OfAnEarlierVersionOpens)
{
    // Made by another AES-GCM implementation; what stands in practices' databases and in built programs looks so.
    const char* const envelopes[] = {
        "0100a0a1a2a3a4a5a6a7a8a9aaabaacd0729a465514810a1d7b6b8a2367decfaed6e1d0ad66dea1875242a",
        "0101a0a1a2a3a4a5a6a7a8a9aaab947d1a5f20b86a9f160aecb669bba7d2890bc72f997c4c49be06631316",
    };
    for (const char* const envelope : envelopes)
        EXPECT_EQ(Shellkit::OpenText(FromHex(envelope)), "refresh token") << envelope;
}

TEST_F(Envelope, WithOneBitChangedAnywhereDoesNotOpen)
{
    const auto sealed = Shellkit::Seal(KeyId::Practice, "refresh token");
    ASSERT_TRUE(sealed);
    for (std::size_t at = 0; at < sealed->size(); ++at) {
        for (unsigned bit = 0; bit < 8; ++bit) {
            Bytes envelope = *sealed;
            envelope[at] = static_cast<std::uint8_t>(envelope[at] ^ 1u << bit);
            EXPECT_FALSE(Shellkit::Open(envelope)) << "byte " << at << " bit " << bit;
        }
    }
}

TEST_F(Envelope, OfAnotherLengthDoesNotOpen)
{
    const auto sealed = Shellkit::Seal(KeyId::Practice, "token");
    ASSERT_TRUE(sealed);
    for (std::size_t size = 0; size < sealed->size(); ++size)
        EXPECT_FALSE(Shellkit::Open(std::span(*sealed).first(size))) << size;
    Bytes longer = *sealed;
    longer.push_back(0);
    EXPECT_FALSE(Shellkit::Open(longer));
}

TEST_F(Envelope, NeedsTheKeyItWasMadeWith)
{
    const auto sealed = Shellkit::Seal(KeyId::Practice, "token");
    ASSERT_TRUE(sealed);
    Bytes other = CountingKey();
    other.back() ^= 1;
    ASSERT_TRUE(Shellkit::SetPracticeKey(other));
    EXPECT_FALSE(Shellkit::Open(*sealed));

    ASSERT_TRUE(Shellkit::SetPracticeKey({}));
    EXPECT_FALSE(Shellkit::HasPracticeKey());
    EXPECT_FALSE(Shellkit::Open(*sealed));
    EXPECT_FALSE(Shellkit::Seal(KeyId::Practice, "token")); // never under another key instead
    EXPECT_TRUE(Shellkit::Seal(KeyId::Application, "id"));

    ASSERT_TRUE(Shellkit::SetPracticeKey(CountingKey()));
    EXPECT_EQ(Shellkit::OpenText(*sealed), "token");
}

TEST_F(Envelope, KeyOfAnotherLengthIsRefusedAndTheOldOneStays)
{
    for (const std::size_t size : {1u, 16u, 31u, 33u, 64u})
        EXPECT_FALSE(Shellkit::SetPracticeKey(Bytes(size))) << size;
    EXPECT_TRUE(Shellkit::HasPracticeKey());
    EXPECT_FALSE(Shellkit::Seal(static_cast<KeyId>(2), "text"));
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
        const Bytes plain = Shellkit::RandomBytes(length);
        Bytes text = plain;
        text.push_back(0x5a); // behind the text: not to be touched
        Encrypt(text.data(), length);
        EXPECT_EQ(text.back(), 0x5a);
        const bool changed = !std::equal(plain.begin(), plain.end(), text.begin());
        EXPECT_TRUE(changed || length < 16) << length; // a short text may by chance stay
        Decrypt(text.data(), length);
        EXPECT_TRUE(std::equal(plain.begin(), plain.end(), text.begin())) << length;
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
        int equal = 0;
        for (std::size_t i = 0; i < plain.size(); ++i)
            equal += one[i] == other[i];
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

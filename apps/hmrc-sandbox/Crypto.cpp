#include "Crypto.h"

#include <algorithm>
#include <array>
#include <openssl/evp.h>
#include <openssl/rand.h>
#include <stdexcept>

namespace Sandbox
{

std::string RandomText()
{
    std::array<unsigned char, 20> bytes;
    if (RAND_bytes(bytes.data(), static_cast<int>(bytes.size())) != 1)
        throw std::runtime_error("the system gave no random bytes");
    constexpr char kHex[] = "0123456789abcdef";
    std::string text;
    for (const unsigned char byte : bytes) {
        text += kHex[byte >> 4];
        text += kHex[byte & 15];
    }
    return text;
}

std::string S256Challenge(std::string_view verifier)
{
    std::array<unsigned char, 32> digest;
    unsigned int length = 0;
    if (EVP_Digest(verifier.data(), verifier.size(), digest.data(), &length, EVP_sha256(), nullptr) != 1)
        throw std::runtime_error("SHA-256 failed");
    std::array<unsigned char, 45> base64; // 44 characters and a final zero
    const int size = EVP_EncodeBlock(base64.data(), digest.data(), static_cast<int>(length));
    std::string text(base64.begin(), base64.begin() + size);
    std::replace(text.begin(), text.end(), '+', '-');
    std::replace(text.begin(), text.end(), '/', '_');
    text.erase(text.find_last_not_of('=') + 1);
    return text;
}

} // namespace Sandbox

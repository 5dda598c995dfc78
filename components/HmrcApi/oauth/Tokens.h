#pragma once

// Tokens in plain text.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "HmrcApi/Export.h"

namespace HmrcApi
{

/// The tokens of a grant in plain text; wiped when destroyed or replaced.
class HMRCAPI_API COAuth2Tokens
{
public:
    COAuth2Tokens() = default;
    COAuth2Tokens(const COAuth2Tokens&) = default;
    COAuth2Tokens& operator=(const COAuth2Tokens& other);
    ~COAuth2Tokens();

    std::string accessToken;
    std::string refreshToken;
    std::string tokenType;
    std::string scope;
    std::int32_t expiresIn = 0; // seconds
};

void Wipe(std::string& secret) noexcept;

/// Enciphers with the practice's key; nothing when there is no key.
std::optional<std::vector<unsigned char>> SealToken(std::string_view token);
/// Empty when it cannot be read.
std::string OpenToken(const std::vector<unsigned char>& token);

} // namespace HmrcApi

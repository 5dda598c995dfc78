#include "HmrcApi/oauth/Tokens.h"

#include "Shellkit/Bytes.h"
#include "Shellkit/Envelope.h"

namespace HmrcApi
{

void Wipe(std::string& secret) noexcept
{
    Shellkit::Wipe(secret.data(), secret.size());
    secret.clear();
}

COAuth2Tokens::~COAuth2Tokens()
{
    Wipe(accessToken);
    Wipe(refreshToken);
}

COAuth2Tokens& COAuth2Tokens::operator=(const COAuth2Tokens& other)
{
    COAuth2Tokens copy(other); // takes what was here along, and wipes it
    accessToken.swap(copy.accessToken);
    refreshToken.swap(copy.refreshToken);
    tokenType.swap(copy.tokenType);
    scope.swap(copy.scope);
    expiresIn = copy.expiresIn;
    return *this;
}

std::optional<std::vector<unsigned char>> SealToken(std::string_view token)
{
    return Shellkit::Seal(Shellkit::KeyId::Practice, token);
}

std::string OpenToken(const std::vector<unsigned char>& token)
{
    return Shellkit::OpenText(token).value_or(std::string());
}

} // namespace HmrcApi

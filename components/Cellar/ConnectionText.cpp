#include "Cellar/ConnectionText.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>

#include "Afx/text/TextFold.h"
#include "Cellar/DatabaseError.h"

namespace Cellar
{
namespace
{

constexpr std::string_view kScheme = "odbc:";
constexpr std::array<std::string_view, 2> kPasswords{"PWD", "Password"};
constexpr std::array<std::string_view, 2> kOurs{"PasswordFile", "KeyFile"};

template<std::size_t N>
bool IsAmong(std::string_view name, const std::array<std::string_view, N>& names) noexcept
{
    return std::any_of(names.begin(), names.end(), [&](auto each) { return Afx::EqualNoCase(name, each); });
}

std::string_view Trimmed(std::string_view text) noexcept
{
    const auto first = text.find_first_not_of(" \t\r\n");
    return first == text.npos ? std::string_view() : text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

/// Takes a value and the semicolon behind it off `text`.
std::string TakeValue(std::string_view& text)
{
    std::string value;
    std::size_t at = 0;
    if (text.starts_with('{')) {
        for (at = 1; at < text.size(); ++at) {
            if (text[at] == '}' && !text.substr(at).starts_with("}}"))
                break;
            value += text[at];
            if (text[at] == '}')
                ++at;
        }
    } else {
        at = std::min(text.find(';'), text.size());
        value = Trimmed(text.substr(0, at));
    }
    const std::size_t end = text.find(';', std::min(at, text.size()));
    text.remove_prefix(end == text.npos ? text.size() : end + 1);
    return value;
}

std::string InBraces(std::string_view value)
{
    std::string text = "{";
    for (const char c : value)
        text.append(c == '}' ? 2 : 1, c);
    return text + '}';
}

std::string Attribute(const std::string& name, const std::string& value)
{
    const bool isPlain = value.find_first_of(";{}=%") == value.npos && value.size() == Trimmed(value).size();
    return name + '=' + (isPlain ? value : InBraces(value)) + ';';
}

/// `text` with "***" for what stands behind each `name`, in any case: a value as of a connection text, or its
/// beginning.
std::string WithoutValuesOf(std::string_view name, std::string text)
{
    for (std::size_t at = 0; at + name.size() < text.size(); ++at) {
        if (!Afx::EqualNoCase(std::string_view(text).substr(at, name.size()), name))
            continue;
        at += name.size();
        std::string_view rest = std::string_view(text).substr(at);
        TakeValue(rest);
        const bool hasMore = text[text.size() - rest.size() - 1] == ';';
        text.replace(at, text.size() - rest.size() - at, hasMore ? "***;" : "***");
    }
    return text;
}

std::string FromEnvironment(const char* name)
{
    const char* const text = std::getenv(name);
    return text ? text : "";
}

std::string FirstLine(const std::string& path)
{
    constexpr std::size_t kLongest = 4096; // a device may go on for ever
    std::ifstream file(path, std::ios::binary);
    std::string line;
    char c = 0;
    while (line.size() <= kLongest && file.get(c) && c != '\n')
        line += c;
    if (line.size() > kLongest || (c != '\n' && !file.eof()))
        throw DatabaseError(DatabaseError::Category::CannotOpen, "",
                            "cannot read the password of the server's database from the file " + path +
                                "; check PasswordFile, and your right to read it",
                            "");
    if (line.ends_with('\r'))
        line.pop_back();
    return line;
}

} // namespace

bool ServerText::Is(std::string_view connectionText) noexcept
{
    return Afx::EqualNoCase(connectionText.substr(0, kScheme.size()), kScheme);
}

ServerText::ServerText(std::string_view connectionText)
{
    if (Is(connectionText))
        connectionText.remove_prefix(kScheme.size());
    while (!connectionText.empty()) {
        const std::size_t equals = connectionText.find_first_of("=;");
        const std::string name(Trimmed(connectionText.substr(0, equals)));
        connectionText.remove_prefix(std::min(equals, connectionText.size()));
        const bool hasValue = connectionText.starts_with('=');
        if (!connectionText.empty())
            connectionText.remove_prefix(1);
        if (hasValue)
            m_attributes.emplace_back(name, TakeValue(connectionText));
    }
}

std::string ServerText::Get(std::string_view name) const
{
    for (const auto& [each, value] : m_attributes)
        if (Afx::EqualNoCase(each, name))
            return value;
    return {};
}

bool ServerText::IsForSqlServer() const
{
    return Afx::FoldLower(Get("Driver")).find("sql server") != std::string::npos;
}

std::string ServerText::GetKeyFile() const
{
    const std::string file = Get("KeyFile");
    return file.empty() ? FromEnvironment("MORVUT_KEY_FILE") : file;
}

std::string ServerText::GetPassword() const
{
    for (const std::string_view name : kPasswords)
        if (std::string password = Get(name); !password.empty())
            return password;
    const std::string file = Get("PasswordFile");
    return file.empty() ? FromEnvironment("MORVUT_PASSWORD") : FirstLine(file);
}

std::string ServerText::GetShown() const
{
    std::string text(kScheme);
    for (const auto& [name, value] : m_attributes)
        if (!IsAmong(name, kPasswords))
            text += Attribute(name, HidePasswords(value)); // in options for the driver's own library
    if (text.ends_with(';'))
        text.pop_back();
    return text;
}

std::string ServerText::HidePasswords(std::string text)
{
    for (const std::string_view name : kPasswords)
        text = WithoutValuesOf(std::string(name) + '=', std::move(text));
    return text;
}

std::string ServerText::WithoutPassword(std::string message) const
{
    message = HidePasswords(std::move(message));
    const std::string password = GetPassword();
    for (const std::string& secret : {InBraces(password), password})
        for (std::size_t at = 0; !password.empty() && (at = message.find(secret, at)) != message.npos; at += 3)
            message.replace(at, secret.size(), "***");
    return message;
}

std::string ServerText::GetForDriver(std::string_view settings) const
{
    std::string text;
    for (const auto& [name, value] : m_attributes)
        if (!IsAmong(name, kPasswords) && !IsAmong(name, kOurs))
            text += Attribute(name, value);
    text += settings;
    if (const std::string password = GetPassword(); !password.empty())
        text += "PWD=" + InBraces(password) + ';';
    return text;
}

} // namespace Cellar

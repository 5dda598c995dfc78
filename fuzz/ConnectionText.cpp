#include "Cellar/ConnectionText.h"

#include <string>

#include "Afx/text/TextFold.h"
#include "fuzz/Targets.h"

namespace Fuzz
{
namespace
{

using Cellar::ServerText;

// The brace has to be doubled.
constexpr char kPassword[] = "zQ7 pass;wo}rd=Zq9", kItsBeginning[] = "zQ7 pass";

std::string InBraces(std::string_view value)
{
    std::string text = "{";
    for (const char c : value)
        text.append(c == '}' ? 2 : 1, c);
    return text + '}';
}

/// Attributes that the driver is to see: two readings of them must agree.
constexpr const char* kNames[] = {"Driver", "Servername", "Server", "Database", "UID", "Port", "Sslmode"};

void CheckSame(const ServerText& a, const ServerText& b, const char* property)
{
    for (const char* name : kNames)
        Require(a.Get(name) == b.Get(name), property);
    Require(a.IsForSqlServer() == b.IsForSqlServer(), property);
}

} // namespace

void ConnectionText(std::string_view input)
{
    const ServerText text(input);
    const std::string shown = text.GetShown();
    Require(ServerText::Is(shown), "what is shown is a server's connection text");
    Require(ServerText(shown).GetShown() == shown, "what is shown is shown as itself");

    // With a password, so that no file is read for one.
    std::string_view own = input;
    if (ServerText::Is(own))
        own.remove_prefix(std::string_view("odbc:").size());
    const ServerText with("odbc:PWD=" + InBraces(kPassword) + ';' + std::string(own));
    const ServerText driver("odbc:" + with.GetForDriver({})); // an attribute's name may begin so too
    CheckSame(with, driver, "the driver gets the same attributes");
    Require(driver.Get("PasswordFile").empty() && driver.Get("KeyFile").empty(),
            "what is ours never reaches the driver");
    Require(with.GetPassword() == kPassword, "the first password counts, to the letter");
    if (input.find(kItsBeginning) == input.npos) { // else another attribute may show the same
        Require(with.GetShown().find(kItsBeginning) == std::string::npos, "a password is not shown");
        Require(with.WithoutPassword("failed: " + with.GetForDriver({})).find(kItsBeginning) == std::string::npos,
                "nor told by the driver");
    }
    Require(driver.GetPassword() == kPassword, "the driver gets the password, to the letter");

    // A value is any text.
    const ServerText value("Database=" + InBraces(input) + ";UID=anna");
    Require(value.Get("database") == input && value.Get("UID") == "anna", "a value in braces comes back");
    CheckSame(value, ServerText("odbc:" + value.GetForDriver({})), "the driver gets the same attributes");
    (void)ServerText::HidePasswords(std::string(input));
}

} // namespace Fuzz

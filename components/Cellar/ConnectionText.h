#pragma once

// What a connection text says besides where the database is.

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Cellar/Export.h"

namespace Cellar
{

/// `odbc:Driver=PostgreSQL Unicode;Servername=…;Database=…;UID=…;PasswordFile=PATH;KeyFile=PATH`: the attributes of a
/// server's connection text. PasswordFile and KeyFile are ours and never reach the driver. A value may stand in braces,
/// in which `}}` means one. Names ignore case; of one that stands twice the first counts.
class CELLAR_API ServerText
{
public:
    /// `odbc:` in any case stands in front.
    static bool Is(std::string_view connectionText) noexcept;
    explicit ServerText(std::string_view connectionText);

    /// Empty when there is none.
    std::string Get(std::string_view name) const;
    /// By its driver's name; otherwise PostgreSQL is meant.
    bool IsForSqlServer() const;
    /// Path of the practice's key: KeyFile, else the environment's MORVUT_KEY_FILE; may be empty.
    std::string GetKeyFile() const;
    /// PWD or Password, else the first line of PasswordFile, else the environment's MORVUT_PASSWORD; may be empty.
    /// Throws DatabaseError (CannotOpen) when the file cannot be read.
    std::string GetPassword() const;
    /// As it may be shown: `odbc:` and all attributes but the password.
    std::string GetShown() const;
    /// Any text with "***" for what stands behind PWD= and Password=, also where it is cut.
    static std::string HidePasswords(std::string text);
    /// A driver's message that may quote the connection text, without the password.
    std::string WithoutPassword(std::string message) const;
    /// For the driver: its own attributes, then those of `settings` ("Name=value;…"), then the password.
    std::string GetForDriver(std::string_view settings) const;

private:
    std::vector<std::pair<std::string, std::string>> m_attributes; // values without braces
};

/// Why this program cannot open servers' databases; empty when it can. Loads what they need.
CELLAR_API std::string ServerDriverProblem();

} // namespace Cellar

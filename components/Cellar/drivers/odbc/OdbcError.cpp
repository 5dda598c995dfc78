#include "Cellar/drivers/odbc/OdbcError.h"

#include <algorithm>
#include <array>

#include "Cellar/drivers/odbc/WideText.h"

namespace Cellar::Odbc
{
namespace
{

using Category = DatabaseError::Category;

/// SQLSTATEs begin with a class of two characters; 0 as native code is any.
struct Meaning
{
    std::string_view state; // or its beginning
    SQLINTEGER native;
    Category category;
    const char* phrase;
};

/// Special ones before the classes that they belong to.
constexpr Meaning kMeanings[] = {
    {"23505", 0, Category::DuplicateKey, "a row with this key is there already"},
    {"23000", 2627, Category::DuplicateKey, "a row with this key is there already"}, // SQL Server: a key, ...
    {"23000", 2601, Category::DuplicateKey, "a row with this key is there already"}, // ... a unique index
    {"23", 0, Category::Constraint, "the row breaks a rule of its table"},
    {"22001", 0, Category::Constraint, "a text is longer than its column"},
    {"22003", 0, Category::Constraint, "a number does not fit its column"},
    {"2200H", 0, Category::Other, "the table has no free id left"},
    {"22", 0, Category::Other, "a value does not fit its column"},
    {"40", 0, Category::Busy, "another workstation is writing the same; try again"}, // deadlock, serialisation
    {"55P03", 0, Category::Busy, "another workstation is writing to the database; try again"},
    {"57014", 0, Category::Busy, "the server gave the statement up after its time limit; try again"},
    {"HYT00", 0, Category::Busy, "another workstation is writing to the database; try again"},
    {"42000", 1222, Category::Busy, "another workstation is writing to the database; try again"},
    {"42000", 50000, Category::Busy, "another workstation is writing to the database; try again"}, // of our own lock
    {"", 1105, Category::ReadOnly, "the server's disk is full; tell its administrator, then try again"},
    {"", 1101, Category::ReadOnly, "the server's disk is full; tell its administrator, then try again"},
    {"", 9002, Category::ReadOnly, "the server's disk is full; tell its administrator, then try again"}, // its log's
    {"", 3906, Category::ReadOnly, "the server's database can only be read (a replica?); name the main server"},
    {"", 229, Category::ReadOnly, "the server's user has no right to it; ask the administrator for the right"},
    {"", 2628, Category::Constraint, "a text is longer than its column"},
    {"08", 0, Category::LostConnection, "the connection to the server was lost; open the practice again"},
    {"57P", 0, Category::LostConnection, "the server has ended the connection; open the practice again"},
    {"HYT01", 0, Category::LostConnection, "the server does not answer; open the practice again"},
    {"53100", 0, Category::ReadOnly, "the server's disk is full; tell its administrator, then try again"},
    {"25006", 0, Category::ReadOnly, "the server's database can only be read (a replica?); name the main server"},
    {"42501", 0, Category::ReadOnly, "the server's user has no right to it; ask the administrator for the right"},
    {"25P02", 0, Category::Other, "an earlier statement of this transaction has failed; close it and begin again"},
    {"53", 0, Category::Other, "the server lacks resources; tell its administrator"},
    {"42", 0, Category::Syntax, "the server does not take the statement"},
    {"37", 0, Category::Syntax, "the server does not take the statement"},
    {"0A", 0, Category::Syntax, "the server cannot do that"},
    {"S0", 0, Category::Syntax, "the server does not take the statement"},
};

/// Words of the messages with which drivers refuse a connection; they give one SQLSTATE for all reasons.
struct Refusal
{
    std::string_view words;
    const char* advice;
};
constexpr Refusal kRefusals[] = {
    {"ata source name not found", "name an installed driver: Driver=PostgreSQL Unicode (odbcinst -q -d lists them)"},
    {"open lib", "install the driver that Driver names, for PostgreSQL the package odbc-postgresql"},
    {"password", "check UID and the password (PasswordFile, or MORVUT_PASSWORD in the environment)"},
    {"Login failed", "check UID and the password (PasswordFile, or MORVUT_PASSWORD in the environment)"},
    {"role ", "check UID"},
    {"pg_hba.conf", "ask the server's administrator to let this computer and user in"},
    {"root certificate", "put the certificate of whoever issued the server's there, or name its file in PGSSLROOTCERT"},
    {"certificate", "check that Servername is the name in the server's certificate, and whom this computer trusts"},
    {"SSL", "check SSLmode, and that the server offers encrypted connections"},
    {"database ", "check Database, or let the administrator make it"},
    {"too many", "the server takes no more connections; close some, or tell its administrator"},
    {"starting up", "the server is starting; try again"},
    {"shutting down", "the server is being ended; try again later"},
    {"", "check Servername and Port, and that the server is running"},
};

/// Without the "[vendor][part]" in front and the lines behind, which repeat the row.
std::string OneLine(std::string text)
{
    while (text.starts_with('[') && text.find(']') != text.npos)
        text.erase(0, text.find(']') + 1);
    text.erase(std::min(text.find('\n'), text.size()));
    text.erase(text.find_last_not_of(" ;\r\t") + 1);
    return ServerText::HidePasswords(std::move(text));
}

std::string WithoutValues(const Diagnosis& diagnosis)
{
    std::string text = diagnosis.text;
    for (const char* const before : {" The duplicate key value", " Truncated value"})
        text.erase(std::min(text.find(before), text.size()));
    if (!diagnosis.state.starts_with("22"))
        return text;
    for (const char mark : {'"', '\''}) {
        const std::size_t first = text.find(mark), last = text.rfind(mark);
        if (first != last)
            text.replace(first, last - first + 1, "...");
    }
    return text;
}

} // namespace

Diagnosis Diagnose(SQLSMALLINT type, SQLHANDLE handle)
{
    Diagnosis diagnosis;
    std::array<SQLWCHAR, 6> state{};
    std::array<SQLWCHAR, 1024> text{};
    SQLSMALLINT length = 0;
    if (!handle || !IsDone(SQLGetDiagRecW(type, handle, 1, state.data(), &diagnosis.native, text.data(),
                                          static_cast<SQLSMALLINT>(text.size()), &length))) {
        diagnosis.state = "HY000";
        diagnosis.text = "the driver does not say why";
        return diagnosis;
    }
    for (std::size_t i = 0; i < 5; ++i)
        diagnosis.state += static_cast<char>(state[i]);
    const auto size = std::clamp<std::size_t>(static_cast<std::size_t>(length), 0, text.size() - 1);
    std::string utf8;
    AppendUtf8(utf8, {reinterpret_cast<const char16_t*>(text.data()), size});
    diagnosis.text = OneLine(std::move(utf8));
    return diagnosis;
}

DatabaseError ErrorOf(const Diagnosis& diagnosis)
{
    for (const Meaning& meaning : kMeanings)
        if (diagnosis.state.starts_with(meaning.state) && (meaning.native == 0 || meaning.native == diagnosis.native))
            return DatabaseError(meaning.category, diagnosis.state, meaning.phrase + (": " + WithoutValues(diagnosis)),
                                 "");
    return DatabaseError(Category::Other, diagnosis.state, WithoutValues(diagnosis), "");
}

DatabaseError CannotConnect(const Diagnosis& diagnosis, const ServerText& text)
{
    const auto refusal = std::find_if(std::begin(kRefusals), std::end(kRefusals), [&](const Refusal& each) {
        return diagnosis.text.find(each.words) != std::string::npos;
    });
    return DatabaseError(
        Category::CannotOpen, diagnosis.state,
        "cannot open " + text.GetShown() + ": " + text.WithoutPassword(diagnosis.text) + "; " + refusal->advice, "");
}

DatabaseError WasLost()
{
    return DatabaseError(Category::LostConnection, "08003",
                         "the connection to the server was lost before; open the practice again", "");
}

} // namespace Cellar::Odbc

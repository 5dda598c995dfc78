#pragma once

// What the database refuses.

#include <stdexcept>
#include <string>

#include "Cellar/Export.h"

namespace Cellar
{

/// The one exception of this component. `what()` says what went wrong, with the statement and without its values.
class CELLAR_API DatabaseError : public std::runtime_error
{
public:
    enum class Category
    {
        DuplicateKey,
        Busy, // another connection holds the lock: try again
        LostConnection,
        Constraint,
        Syntax,
        CannotOpen, // no such file, not a database, no permission
        ReadOnly,   // disk full, read-only file or file system
        Other
    };

    DatabaseError(Category category, std::string code, std::string reason, std::string statement);
    DatabaseError(const DatabaseError&) = default;
    DatabaseError& operator=(const DatabaseError&) = default;
    ~DatabaseError() override;

    Category GetCategory() const noexcept { return m_category; }
    const std::string& GetCode() const noexcept { return m_code; }           // the driver's own, as it spells it
    const std::string& GetReason() const noexcept { return m_reason; }       // one line, without the statement
    const std::string& GetStatement() const noexcept { return m_statement; } // T-SQL, no values

private:
    Category m_category;
    std::string m_code;
    std::string m_reason;
    std::string m_statement;
};

} // namespace Cellar

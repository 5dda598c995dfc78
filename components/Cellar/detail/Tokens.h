#pragma once

// A T-SQL statement cut into tokens.

#include <string_view>
#include <vector>

#include "Cellar/Dialect.h"

namespace Cellar::Detail
{

struct Token
{
    enum class Kind : std::uint8_t
    {
        Blank, // white space, or a comment
        Word,
        BracketName, // [name]
        QuotedName,  // "name"
        String,      // '...'
        NString,     // N'...'
        Number,
        Bytes,  // 0xAB
        System, // @@name
        Placeholder,
        Percent, // %%
        Symbol   // one character
    };
    Kind kind;
    std::string_view text; // as written, marks included
    Placeholder::Type placeholder = Placeholder::Type::Text;
};

/// Throws DatabaseError (Syntax) for what is no token.
std::vector<Token> Tokenize(std::string_view statement);

/// Throws DatabaseError (Syntax); `at` is where in the statement the trouble begins.
[[noreturn]] void FailSyntax(std::string_view statement, std::string_view at, const char* why);

/// Compares with a word in capitals; keywords are ASCII.
bool IsWord(const Token& token, std::string_view capitals) noexcept;

} // namespace Cellar::Detail

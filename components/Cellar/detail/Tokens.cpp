#include "Cellar/detail/Tokens.h"

#include <algorithm>
#include <string>

#include "Afx/text/Ascii.h"
#include "Cellar/DatabaseError.h"
#include "Cellar/detail/ValueTypes.h"

namespace Cellar::Detail
{
namespace
{

using TokenKind = Token::Kind;

using Afx::IsDigit;

bool IsHexDigit(char c) noexcept { return Afx::HexValue(c) >= 0; }
/// Every byte of a character beyond ASCII is taken for a letter.
bool IsLetter(char c) noexcept { return Afx::IsLetter(c) || c == '_' || static_cast<unsigned char>(c) >= 0x80; }
bool IsWordCharacter(char c) noexcept { return IsLetter(c) || IsDigit(c) || c == '$' || c == '#'; }
/// Characters that mean a parameter to some engine (? : $ @) are none of these.
bool IsSymbol(char c) noexcept { return std::string_view("(),.;+-*/<>=!&|^~").find(c) != std::string_view::npos; }

class Tokenizer
{
public:
    explicit Tokenizer(std::string_view statement) : m_statement(statement) {}

    std::vector<Token> Run()
    {
        std::vector<Token> tokens;
        tokens.reserve(m_statement.size() / 3);
        while (m_at < m_statement.size())
            tokens.push_back(Next());
        return tokens;
    }

private:
    char Peek(std::size_t ahead = 0) const noexcept
    {
        return m_at + ahead < m_statement.size() ? m_statement[m_at + ahead] : '\0';
    }
    std::string_view Rest() const noexcept { return m_statement.substr(m_at); }
    [[noreturn]] void Fail(const char* why) const { FailSyntax(m_statement, Rest(), why); }

    Token Take(TokenKind kind, std::size_t length) noexcept
    {
        const Token token{kind, m_statement.substr(m_at, length)};
        m_at += token.text.size();
        return token;
    }
    template<class Predicate>
    Token TakeWhile(TokenKind kind, std::size_t from, Predicate belongs) noexcept
    {
        std::size_t length = from;
        while (m_at + length < m_statement.size() && belongs(m_statement[m_at + length]))
            ++length;
        return Take(kind, length);
    }

    Token Next()
    {
        const char c = Peek();
        if (Afx::IsBlank(c))
            return TakeWhile(TokenKind::Blank, 1, Afx::IsBlank);
        if (c == '-' && Peek(1) == '-')
            return TakeWhile(TokenKind::Blank, 2, [](char next) { return next != '\n'; });
        if (c == '/' && Peek(1) == '*')
            return Take(TokenKind::Blank, CommentLength());
        if (c == '\'')
            return String(TokenKind::String, 0);
        if ((c == 'N' || c == 'n') && Peek(1) == '\'')
            return String(TokenKind::NString, 1);
        if (IsLetter(c))
            return TakeWhile(TokenKind::Word, 1, IsWordCharacter);
        if (c == '[')
            return Take(TokenKind::BracketName, EnclosedLength(0, ']', "a [name] has no end"));
        if (c == '"')
            return Take(TokenKind::QuotedName, EnclosedLength(0, '"', "a \"name\" has no end"));
        if (c == '0' && (Peek(1) == 'x' || Peek(1) == 'X'))
            return TakeWhile(TokenKind::Bytes, 2, IsHexDigit);
        if (IsDigit(c))
            return Number();
        if (c == '@' && Peek(1) == '@')
            return TakeWhile(TokenKind::System, 2, IsWordCharacter);
        if (c == '%')
            return Percent();
        if (IsSymbol(c))
            return Take(TokenKind::Symbol, 1);
        Fail("this character has no meaning outside a string; values are bound, not named");
    }

    /// T-SQL comments nest.
    std::size_t CommentLength() const
    {
        std::size_t length = 2;
        for (int depth = 1; depth > 0;) {
            if (m_at + length + 1 >= m_statement.size())
                Fail("a comment has no end");
            const char c = Peek(length), next = Peek(length + 1);
            const bool opens = c == '/' && next == '*', closes = c == '*' && next == '/';
            depth += opens ? 1 : closes ? -1 : 0;
            length += opens || closes ? 2 : 1;
        }
        return length;
    }

    /// From the opening mark at `open` to the closing one, both counted; a doubled closing mark stands for itself.
    std::size_t EnclosedLength(std::size_t open, char close, const char* unclosed) const
    {
        for (std::size_t length = open + 1; m_at + length < m_statement.size(); ++length) {
            if (Peek(length) != close)
                continue;
            if (Peek(length + 1) != close)
                return length + 1;
            ++length;
        }
        Fail(unclosed);
    }

    /// `open` is where the quote stands.
    Token String(TokenKind kind, std::size_t open)
    {
        const std::size_t length = EnclosedLength(open, '\'', "a string has no end");
        const std::string_view inner = Rest().substr(open + 1, length - open - 2);
        if (inner == "%s")
            return Take(TokenKind::Placeholder, length);
        for (std::size_t i = inner.find('%'); i != std::string_view::npos; i = inner.find('%', i + 2))
            if (inner.substr(i, 2) != "%%")
                Fail("a placeholder in a string must be '%s' and all of it; write %% for a per cent sign");
        return Take(kind, length);
    }

    Token Number() noexcept
    {
        std::size_t length = 0;
        while (IsDigit(Peek(length)) || Peek(length) == '.')
            ++length;
        if (Peek(length) == 'e' || Peek(length) == 'E') {
            const std::size_t digits = length + (Peek(length + 1) == '+' || Peek(length + 1) == '-' ? 2 : 1);
            if (IsDigit(Peek(digits)))
                return TakeWhile(TokenKind::Number, digits, IsDigit);
        }
        return Take(TokenKind::Number, length);
    }

    Token Percent()
    {
        if (Peek(1) == '%')
            return Take(TokenKind::Percent, 2);
        for (const PlaceholderRule& known : PlaceholderRules())
            if (Rest().starts_with(known.text) && !IsWordCharacter(Peek(known.text.size()))) {
                Token token = Take(TokenKind::Placeholder, known.text.size());
                token.placeholder = known.type;
                return token;
            }
        Fail("unknown placeholder; known are %s %d %ld %I64d %b %t %m %f, and %% for a per cent sign");
    }

    std::string_view m_statement;
    std::size_t m_at = 0;
};

} // namespace

std::vector<Token> Tokenize(std::string_view statement) { return Tokenizer(statement).Run(); }

void FailSyntax(std::string_view statement, std::string_view at, const char* why)
{
    const auto position = at.data() ? at.data() - statement.data() + 1 : 1;
    throw DatabaseError(DatabaseError::Category::Syntax, "",
                        std::string(why) + " (at character " + std::to_string(position) + ")", std::string(statement));
}

bool IsWord(const Token& token, std::string_view capitals) noexcept
{
    return token.kind == TokenKind::Word &&
           std::equal(token.text.begin(), token.text.end(), capitals.begin(), capitals.end(),
                      [](char a, char b) { return Afx::UpperAscii(a) == b; });
}

} // namespace Cellar::Detail

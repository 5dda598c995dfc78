#include "HmrcApi/json/Json.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

#include <nlohmann/json.hpp>

namespace HmrcApi
{
namespace
{

template<class Integer>
std::string Digits(Integer value)
{
    char buffer[24];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, value).ptr;
    return std::string(buffer, end);
}

/// Builds the tree from the parser's events.
class TreeBuilder : public nlohmann::json_sax<nlohmann::json>
{
public:
    explicit TreeBuilder(JsonProblem& problem) noexcept : m_problem(problem) {}

    JsonValue& Root() noexcept { return m_root; }

    bool null() override { return Put(JsonValue::Kind::Null, {}); }
    bool boolean(bool value) override
    {
        if (!Put(JsonValue::Kind::Boolean, {}))
            return false;
        m_last->boolean = value;
        return true;
    }
    bool number_integer(std::int64_t value) override { return Put(JsonValue::Kind::Number, Digits(value)); }
    bool number_unsigned(std::uint64_t value) override { return Put(JsonValue::Kind::Number, Digits(value)); }
    bool number_float(double, const std::string& text) override
    {
        std::string number = text;
        // The parser writes the decimal point of the process's locale into its token.
        for (char& c : number)
            if ((c < '0' || c > '9') && c != 'e' && c != 'E' && c != '+' && c != '-')
                c = '.';
        return Put(JsonValue::Kind::Number, std::move(number));
    }
    bool string(std::string& value) override { return Put(JsonValue::Kind::Text, std::move(value)); }
    bool binary(nlohmann::json::binary_t&) override { return Fail("binary data"); }

    bool start_object(std::size_t) override { return Open(JsonValue::Kind::Object); }
    bool key(std::string& name) override
    {
        m_open.back()->names.push_back(std::move(name));
        return true;
    }
    bool end_object() override
    {
        std::vector<std::string_view> names(m_open.back()->names.begin(), m_open.back()->names.end());
        std::sort(names.begin(), names.end());
        if (std::adjacent_find(names.begin(), names.end()) != names.end())
            return Fail("two members of one name");
        m_open.pop_back();
        return true;
    }
    bool start_array(std::size_t) override { return Open(JsonValue::Kind::Array); }
    bool end_array() override
    {
        m_open.pop_back();
        return true;
    }

    bool parse_error(std::size_t position, const std::string&, const nlohmann::json::exception& error) override
    {
        constexpr int kNumberOverflow = 406; // the parser's number of this error
        m_problem.isNumberTooLarge = error.id == kNumberOverflow;
        return Fail("not JSON at byte " + Digits(position)); // the parser's own text would quote the answer
    }

private:
    bool Fail(std::string why)
    {
        m_problem.text = std::move(why);
        return false;
    }

    bool Put(JsonValue::Kind kind, std::string text)
    {
        if (++m_count > kJsonValues)
            return Fail("too many values");
        if (m_open.empty())
            m_last = &m_root;
        else
            m_last = &m_open.back()->items.emplace_back();
        m_last->kind = kind;
        m_last->text = std::move(text);
        return true;
    }

    bool Open(JsonValue::Kind kind)
    {
        if (m_open.size() >= kJsonDepth)
            return Fail("nested too deep");
        if (!Put(kind, {}))
            return false;
        m_open.push_back(m_last); // stays where it is: only the innermost open list grows
        return true;
    }

    JsonProblem& m_problem;
    JsonValue m_root;
    JsonValue* m_last = nullptr;
    std::vector<JsonValue*> m_open;
    std::size_t m_count = 0;
};

} // namespace

const JsonValue* JsonValue::Find(std::string_view name) const noexcept
{
    for (std::size_t i = 0; i < names.size() && i < items.size(); ++i)
        if (names[i] == name)
            return items[i].Is(Kind::Null) ? nullptr : &items[i];
    return nullptr;
}

std::optional<JsonValue> ParseJson(std::string_view json, JsonProblem* problem)
{
    JsonProblem ignored;
    TreeBuilder builder(problem ? *problem : ignored);
    if (!nlohmann::json::sax_parse(json.begin(), json.end(), &builder))
        return std::nullopt;
    return std::move(builder.Root());
}

} // namespace HmrcApi

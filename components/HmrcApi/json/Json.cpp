#include "HmrcApi/json/Json.h"

#include <algorithm>
#include <cstdint>

#include <nlohmann/json.hpp>

#include "Afx/text/Ascii.h"
#include "HmrcApi/json/ExactAmount.h"

namespace HmrcApi
{
namespace
{

constexpr char kTooMany[] = "too many values";

/// The parser would pass numbers through binary floating point and refuse those that do not fit it, even where nobody
/// reads them. So it gets a text with a 0 and blanks in the place of each, and the builder has the numbers themselves.
class Numbers
{
public:
    explicit Numbers(std::string_view json) : m_withoutNumbers(json)
    {
        bool isInText = false;
        for (std::size_t at = 0; at < json.size() && m_numbers.size() <= kJsonValues; ++at) {
            if (json[at] == '"')
                isInText = !isInText;
            else if (isInText)
                at += json[at] == '\\' ? 1u : 0u;
            else if (json[at] == '-' || Afx::IsDigit(json[at]))
                at += TakeRun(at, json.substr(at, json.find_first_not_of("0123456789+-.eE", at) - at)) - 1;
        }
    }

    const std::string& TextWithout() const noexcept { return m_withoutNumbers; }
    std::size_t Count() const noexcept { return m_numbers.size(); }
    /// Empty behind the last: what is no number the parser may take in pieces before it refuses it.
    std::string Next() { return m_next < m_numbers.size() ? std::string(m_numbers[m_next++]) : std::string(); }

private:
    /// What is no number stays for the parser to refuse.
    std::size_t TakeRun(std::size_t at, std::string_view run)
    {
        if (IsJsonNumber(run)) {
            m_numbers.push_back(run);
            m_withoutNumbers.replace(at, run.size(), run.size(), ' ').replace(at, 1, 1, '0');
        }
        return run.size();
    }

    std::string m_withoutNumbers;
    std::vector<std::string_view> m_numbers; // in order
    std::size_t m_next = 0;
};

/// Builds the tree from the parser's events.
class TreeBuilder : public nlohmann::json_sax<nlohmann::json>
{
public:
    TreeBuilder(Numbers& numbers, JsonProblem& problem) noexcept : m_numbers(numbers), m_problem(problem) {}

    JsonValue& Root() noexcept { return m_root; }

    bool null() override { return Put(JsonValue::Kind::Null, {}); }
    bool boolean(bool value) override
    {
        if (!Put(JsonValue::Kind::Boolean, {}))
            return false;
        m_last->boolean = value;
        return true;
    }
    bool number_integer(std::int64_t) override { return Put(JsonValue::Kind::Number, m_numbers.Next()); }
    bool number_unsigned(std::uint64_t) override { return Put(JsonValue::Kind::Number, m_numbers.Next()); }
    bool number_float(double, const std::string&) override { return Put(JsonValue::Kind::Number, m_numbers.Next()); }
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

    bool parse_error(std::size_t position, const std::string&, const nlohmann::json::exception&) override
    {
        return Fail("not JSON at byte " + std::to_string(position)); // the parser's own text would quote the answer
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
            return Fail(kTooMany);
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

    Numbers& m_numbers;
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
    JsonProblem& why = problem ? *problem : ignored;
    if (json.find('\0') != std::string_view::npos) { // the parser would stop there as at the end
        why.text = "not JSON: it holds a zero byte";
        return std::nullopt;
    }
    Numbers numbers(json);
    TreeBuilder builder(numbers, why);
    const std::string& text = numbers.TextWithout();
    if (numbers.Count() > kJsonValues)
        why.text = kTooMany;
    else if (nlohmann::json::sax_parse(text.begin(), text.end(), &builder))
        return std::move(builder.Root());
    return std::nullopt;
}

} // namespace HmrcApi

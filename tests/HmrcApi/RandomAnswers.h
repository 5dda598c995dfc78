#pragma once

// Answers of HMRC's interfaces as a seed would have them.

#include <algorithm>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "HmrcApi/json/Json.h"
#include "support/TestSupport.h"

namespace HmrcApi::Fakes
{

/// The four individual interfaces, in the order in which they are asked.
inline constexpr const char* kPartNames[] = {"history", "income", "benefits", "tax"};

/// All that an answer of that name may hold (any-answers.json; also "paye" and "insurance"). Texts are one of several,
/// null stands for what nobody knows, "?" behind a name for a member that may be absent though others of that name may
/// not.
inline const JsonValue& Any(std::string_view name)
{
    static const auto& all = *new JsonValue(ParseJson(::Test::ReadFile(HMRC_ANY_ANSWERS)).value());
    return *all.Find(name);
}

/// Valid answers: every member absent or null now and then, but not all at once, in any order, amounts in every form of
/// a number (zero and negative ones too), unknown members and kinds, references and works numbers that occur again. The
/// same seed gives the same answers everywhere.
class RandomAnswers
{
public:
    explicit RandomAnswers(std::uint32_t seed) : m_random(seed) {}

    /// `model`: Any of them.
    JsonValue Next(const JsonValue& model)
    {
        JsonValue answer = Vary(model);
        const auto isKnown = [&](const std::string& name) { return name != "new" && answer.Find(name) != nullptr; };
        if (std::none_of(answer.names.begin(), answer.names.end(), isKnown)) { // an answer has one of its own
            const bool isList = model.Find("employments") != nullptr;
            answer = ParseJson(isList ? R"({"employments": []})" : R"({"maxNICsReached": false})").value();
        }
        return answer;
    }
    /// What follows an answer: of each list items go, come, and change a member, in another order; the rest may change.
    JsonValue After(JsonValue before, const JsonValue& model)
    {
        const JsonValue fresh = Next(model);
        before.kind = Kind::Object;
        for (std::size_t i = 0; i < fresh.names.size(); ++i) {
            const auto at = std::find(before.names.begin(), before.names.end(), fresh.names[i]);
            if (at == before.names.end()) {
                before.names.push_back(fresh.names[i]);
                before.items.push_back(fresh.items[i]);
                continue;
            }
            JsonValue& value = before.items[static_cast<std::size_t>(at - before.names.begin())];
            if (fresh.items[i].Is(Kind::Array) && value.Is(Kind::Array))
                Change(value.items, fresh.items[i].items);
            else if (!fresh.items[i].Is(Kind::Null) && Perhaps(3))
                value = fresh.items[i];
        }
        return before;
    }
    /// One time in so many.
    bool Perhaps(std::uint32_t oneIn = 2) { return Below(oneIn) == 0; }
    std::uint32_t Below(std::uint32_t count) { return static_cast<std::uint32_t>(m_random() % count); }

private:
    using Kind = JsonValue::Kind;

    void Change(std::vector<JsonValue>& items, const std::vector<JsonValue>& fresh)
    {
        std::erase_if(items, [&](const JsonValue&) { return Perhaps(4); });
        for (JsonValue& item : items)
            if (!fresh.empty() && Perhaps())
                for (std::size_t i = 0; i < item.names.size(); ++i)
                    if (const JsonValue* other = fresh[0].Find(item.names[i]); other && Perhaps(4))
                        item.items[i] = *other;
        if (items.size() < 4)
            items.insert(items.end(), fresh.begin(), fresh.end());
        for (std::size_t i = items.size(); i > 1; --i)
            std::swap(items[i - 1], items[Below(static_cast<std::uint32_t>(i))]);
    }

    /// One of what stands between the bars.
    std::string OneOf(std::string_view texts)
    {
        for (auto skip = Below(1 + static_cast<std::uint32_t>(std::count(texts.begin(), texts.end(), '|'))); skip > 0;
             --skip)
            texts.remove_prefix(texts.find('|') + 1);
        return std::string(texts.substr(0, texts.find('|')));
    }

    JsonValue Vary(const JsonValue& model)
    {
        JsonValue value;
        value.kind = model.kind;
        if (model.Is(Kind::Null))
            return ParseJson(OneOf(R"(1e400|0.123456789|{"amount":7}|[5,"\"1"]|"-1\\"|null)")).value();
        if (model.Is(Kind::Text))
            value.text = OneOf(model.text);
        if (model.Is(Kind::Boolean))
            value.boolean = Perhaps();
        if (model.Is(Kind::Number))
            value.text = Number(Amount());
        if (model.Is(Kind::Array))
            for (std::uint32_t count = Below(4); count > 0; --count)
                value.items.push_back(Vary(model.items[0]));
        for (std::size_t i = 0; i < model.names.size(); ++i)
            AddMember(value, model.names[i], model.items[i]);
        return value;
    }

    void AddMember(JsonValue& value, std::string name, const JsonValue& model)
    {
        const bool isNeeded = name.ends_with("Reference") || name.ends_with("Type");
        if (!isNeeded && Perhaps(3))
            return;
        if (name.ends_with('?'))
            name.pop_back();
        const auto place = static_cast<std::ptrdiff_t>(Below(static_cast<std::uint32_t>(value.names.size() + 1)));
        value.names.insert(value.names.begin() + place, name);
        value.items.insert(value.items.begin() + place, !isNeeded && Perhaps(10) ? JsonValue() : Vary(model));
    }

    /// Ten-thousandths of a pound.
    std::int64_t Amount()
    {
        const std::int64_t most = Perhaps() ? 1'000'000 : 4'000'000'000;
        auto amount = static_cast<std::int64_t>(m_random() % static_cast<std::uint64_t>(most));
        amount -= Perhaps() ? amount % 100 : 0; // whole pence
        return Perhaps(10) ? 0 : Perhaps(10) ? -amount : amount;
    }

    /// A number of that value: plain, with needless zeros, or with an exponent of either sign.
    std::string Number(std::int64_t tenThousandths)
    {
        std::string digits = std::to_string(tenThousandths < 0 ? -tenThousandths : tenThousandths);
        int exponent = -4;
        for (std::uint32_t zeros = tenThousandths != 0 ? Below(4) : 0; zeros > 0; --zeros, --exponent)
            digits += '0';
        while (digits.size() > 1 && digits.back() == '0' && !Perhaps(4)) {
            digits.pop_back();
            ++exponent;
        }
        const bool isPlain = exponent <= 0 && Perhaps();
        const std::size_t decimals = isPlain ? static_cast<std::size_t>(-exponent) : Below(4);
        exponent += static_cast<int>(decimals);
        if (digits.size() <= decimals)
            digits.insert(0, decimals + 1 - digits.size(), '0');
        if (decimals > 0)
            digits.insert(digits.size() - decimals, ".");
        if (exponent != 0 || Perhaps(8)) {
            digits += OneOf("e|E"); // one draw a statement: the order within one is not the same everywhere
            digits += exponent >= 0 ? OneOf("|+") : "";
            digits += std::to_string(exponent);
        }
        return (tenThousandths < 0 || (tenThousandths == 0 && Perhaps(4)) ? "-" : "") + digits;
    }

    std::mt19937 m_random;
};

} // namespace HmrcApi::Fakes

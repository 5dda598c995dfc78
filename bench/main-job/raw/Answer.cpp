#include "main-job/raw/Answer.h"

#include <cmath>
#include <optional>

#include <nlohmann/json.hpp>

#include "main-job/raw/AnswerOf.h"

namespace Raw
{
namespace
{

using Json = nlohmann::json;

class JsonNode
{
public:
    explicit JsonNode(const Json& json) : m_json(&json) {}
    std::string Text(const char* name) const
    {
        const auto at = m_json->find(name);
        return at == m_json->end() ? std::string() : at->get<std::string>();
    }
    std::int64_t Amount(const char* name) const
    {
        const auto at = m_json->find(name);
        return at == m_json->end() ? kNoAmount : std::llround(at->get<double>() * 10'000);
    }
    bool Flag(const char* name) const
    {
        const auto at = m_json->find(name);
        return at != m_json->end() && at->get<bool>();
    }
    bool Has(const char* name) const { return m_json->contains(name); }
    std::optional<JsonNode> Find(const char* name) const
    {
        const auto at = m_json->find(name);
        return at == m_json->end() ? std::nullopt : std::optional(JsonNode(*at));
    }
    template<class Take>
    void Each(const char* name, Take take) const
    {
        const auto at = m_json->find(name);
        if (at != m_json->end())
            for (const Json& item : *at)
                take(JsonNode(item));
    }

private:
    const Json* m_json;
};

} // namespace

Year ReadAnswer(const std::string& json)
{
    const Json root = Json::parse(json);
    return ReadYear(JsonNode(root));
}

int BenefitCode(int number)
{
    for (const Number& benefit : kBenefits)
        if (benefit.number == number)
            return benefit.code;
    return 180; // other items
}

} // namespace Raw

#include "HmrcApi/interfaces/Examples.h"

#include "HmrcApi/interfaces/Interface.h"

namespace HmrcApi
{
namespace
{

constexpr struct
{
    std::string_view file; // without .json
    std::string_view json;
} kExamples[] = {
#include "HmrcExamples.inc"
};

class ExampleTransport : public ITransport
{
public:
    explicit ExampleTransport(std::string_view body) noexcept : m_body(body) {}

    HttpAnswer Send(const HttpRequest&) override
    {
        HttpAnswer answer;
        answer.outcome = HttpAnswer::Outcome::Answered;
        answer.status = m_body.empty() ? 404 : 200;
        answer.contentType = "application/json";
        answer.body = m_body.empty() ? R"({"code":"NOT_FOUND","message":"Resource was not found"})" : m_body;
        return answer;
    }

private:
    std::string_view m_body;
};

} // namespace

std::string_view ExampleOf(const InterfaceFacts& facts, IEndpointOverride::ResponseType type) noexcept
{
    const auto index = static_cast<std::size_t>(type);
    const char* file = index < facts.examples.size() ? facts.examples[index] : nullptr;
    for (const auto& example : kExamples)
        if (file && example.file == file)
            return example.json;
    return {};
}

std::shared_ptr<ITransport> MakeExampleTransport(const InterfaceFacts& facts, IEndpointOverride::ResponseType type)
{
    return std::make_shared<ExampleTransport>(ExampleOf(facts, type));
}

} // namespace HmrcApi

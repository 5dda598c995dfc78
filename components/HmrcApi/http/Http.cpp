#include "HmrcApi/http/Http.h"

#include "HmrcApi/http/HttpModule.h"

namespace HmrcApi
{
namespace
{

using HttpModule = Afx::ModuleFunctions<HttpAdapters>;

#ifdef MORVUT_MODULE_HTTP
HttpModule Load()
{
    static const char own = 0;
    return Afx::LoadFunctionsBeside<HttpAdapters>(&own, MORVUT_MODULE_HTTP, "MorvUtHttpAdapters");
}
#else
HttpModule Load() { return {MorvUtHttpAdapters(), {}}; }
#endif

const HttpModule& TheModule()
{
    static const HttpModule module = Load();
    return module;
}

/// Sends nothing and says why.
class NoTransport : public ITransport
{
public:
    HttpAnswer Send(const HttpRequest&) override
    {
        HttpAnswer answer;
        answer.outcome = HttpAnswer::Outcome::NoTransport;
        answer.problem = HttpProblem();
        return answer;
    }
};

} // namespace

IRedirectListener::~IRedirectListener() = default;

std::unique_ptr<ITransport> MakeHttpTransport(const HttpSettings& settings)
{
    const HttpAdapters* adapters = TheModule().functions;
    return adapters ? adapters->makeTransport(settings) : std::make_unique<NoTransport>();
}

std::unique_ptr<IRedirectListener> OpenRedirectListener(const std::vector<unsigned short>& ports,
                                                        const std::string& state)
{
    const HttpAdapters* adapters = TheModule().functions;
    return adapters ? adapters->openRedirectListener(ports, state) : nullptr;
}

std::string HttpProblem() { return TheModule().problem; }

} // namespace HmrcApi

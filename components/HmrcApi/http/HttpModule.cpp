#include "HmrcApi/http/HttpModule.h"

const HmrcApi::HttpAdapters* MorvUtHttpAdapters()
{
    static constexpr HmrcApi::HttpAdapters kAdapters{&HmrcApi::MakeCurlTransport, &HmrcApi::OpenLoopbackListener};
    return &kAdapters;
}

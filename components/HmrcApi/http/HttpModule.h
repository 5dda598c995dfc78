#pragma once

// What the HTTP module, which holds the adapters of the web libraries, has to give.

#include <memory>
#include <string>
#include <vector>

#include "Afx/system/LoadedModule.h"
#include "HmrcApi/redirect/RedirectListener.h"
#include "HmrcApi/transport/Transport.h"

namespace HmrcApi
{

/// The makers behind the ports.
struct HttpAdapters
{
    std::unique_ptr<ITransport> (*makeTransport)(const HttpSettings& settings);
    std::unique_ptr<IRedirectListener> (*openRedirectListener)(const std::vector<unsigned short>& ports,
                                                               const std::string& state);
};

std::unique_ptr<ITransport> MakeCurlTransport(const HttpSettings& settings);
std::unique_ptr<IRedirectListener> OpenLoopbackListener(const std::vector<unsigned short>& ports,
                                                        const std::string& state);

} // namespace HmrcApi

/// The module's one symbol.
extern "C" AFX_MODULE_ENTRY const HmrcApi::HttpAdapters* MorvUtHttpAdapters();

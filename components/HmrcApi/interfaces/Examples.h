#pragma once

// HMRC's published examples, as answers that need no network.

#include <memory>
#include <string_view>

#include "HmrcApi/Export.h"
#include "HmrcApi/Host.h"
#include "HmrcApi/transport/Transport.h"

namespace HmrcApi
{

struct InterfaceFacts;

/// The JSON of an interface's example; empty for `Live` and what is no example. The texts are the files of
/// interfaces/examples.
HMRCAPI_API std::string_view ExampleOf(const InterfaceFacts& facts, IEndpointOverride::ResponseType type) noexcept;

/// Answers every request with 200 and that example, or with 404 NOT_FOUND when there is none.
HMRCAPI_API std::shared_ptr<ITransport> MakeExampleTransport(const InterfaceFacts& facts,
                                                             IEndpointOverride::ResponseType type);

} // namespace HmrcApi

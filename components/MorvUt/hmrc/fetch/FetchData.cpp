#include "MorvUt/hmrc/fetch/FetchData.h"

#include "MorvUt/hmrc/fetch/ClientFetch.h"
#include "MorvUt/res/Strings.h"

namespace HmrcApi
{

CString FetchResult::Reason() const
{
    return stopped == Stopped::Trust ? LibraryText(IDS_HMRC_NOT_FOR_TRUSTS) : message;
}

FetchResult FetchFromHmrc(ClientId client, const std::string& gatewayId, IEndpointOverride::ResponseType type,
                          std::shared_ptr<Channel> channel)
{
    ClientFetch fetch(client, gatewayId, type, std::move(channel));
    if (fetch.Begin())
        fetch.Ask();
    return fetch.End();
}

} // namespace HmrcApi

bool GetHMRCApiData(ClientId client, const std::string& gatewayId, bool& newData, bool& clear,
                    HmrcApi::IEndpointOverride::ResponseType type)
{
    newData = false;
    clear = true;
    const HmrcApi::FetchResult result = HmrcApi::FetchFromHmrc(client, gatewayId, type);
    newData = result.newData;
    clear = result.clear;
    return result.ok;
}

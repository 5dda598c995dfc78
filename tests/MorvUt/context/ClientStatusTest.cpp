#include "MorvUt/context/ClientStatus.h"

#include <gtest/gtest.h>

#include "Brix/Records.h"
#include "support/Case.h"
#include "support/Practice.h"

TEST(IsClientATrust, LooksAtTheFlagAndOnRequestAtTheOption)
{
    EXPECT_EQ(IsClientATrust(ClientId(), true), 0) << "no client: no database is asked, and none is open";
    // flag, option, kind; the answer without and with a look at the option
    const ::Test::Row<bool, bool, int, int, int> rows[] = {
        {false, false, 0, 0, 0, "individual"},    {true, false, 0, 1, 1, "trust"},
        {false, true, 1, 0, 0, "option, kind 1"}, {true, true, 1, 1, 1, "trust, kind 1"},
        {false, true, 2, 0, 1, "option, kind 2"}, {false, true, 0, 0, 1, "option, no kind"},
        {false, false, 2, 0, 0, "kind alone"},
    };
    const ::Test::Practice practice;
    for (const auto& [trust, option, kind, plain, withOption, why] : rows) {
        Brix::CClient client;
        client.AddNew();
        client.SetTrust(trust);
        client.SetTrustOption(option);
        client.SetTrustKind(kind);
        client.Update();
        EXPECT_EQ(IsClientATrust(ClientId(client.GetID()), false), plain) << why;
        EXPECT_EQ(IsClientATrust(ClientId(client.GetID()), true), withOption) << why;
    }
    EXPECT_EQ(IsClientATrust(ClientId(4711), true), 0) << "no such client";
}

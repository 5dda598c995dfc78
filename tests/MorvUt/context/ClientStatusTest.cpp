#include "MorvUt/context/ClientStatus.h"

#include <gtest/gtest.h>

#include "Brix/Records.h"
#include "MorvUt/Practice.h"

TEST(IsClientATrust, LooksAtTheFlagAndOnRequestAtTheOption)
{
    EXPECT_EQ(IsClientATrust(ClientId(), true), 0) << "no client: no database is asked, and none is open";
    const struct
    {
        bool trust, option;
        int kind, plain, withKind;
        const char* why;
    } rows[] = {
        {false, false, 0, 0, 0, "individual"},    {true, false, 0, 1, 1, "trust"},
        {false, true, 1, 0, 0, "option, kind 1"}, {true, true, 1, 1, 1, "trust, kind 1"},
        {false, true, 2, 0, 1, "option, kind 2"}, {false, true, 0, 0, 1, "option, no kind"},
        {false, false, 2, 0, 0, "kind alone"},
    };
    const ::Test::Practice practice;
    for (const auto& row : rows) {
        const ClientId id(::Test::Add<Brix::CClient>([&](Brix::CClient& client) {
            client.SetTrust(row.trust);
            client.SetTrustOption(row.option);
            client.SetTrustKind(row.kind);
        }));
        EXPECT_EQ(IsClientATrust(id, false), row.plain) << row.why;
        EXPECT_EQ(IsClientATrust(id, true), row.withKind) << row.why;
    }
    EXPECT_EQ(IsClientATrust(ClientId(4711), true), 0) << "no such client";
}

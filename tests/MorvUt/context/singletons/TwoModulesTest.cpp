#include <dlfcn.h>

#include "MorvUt/context/singletons/ClientSingleton.h"
#include "support/Practice.h"

namespace
{

template<class Result>
Result Call(void* module, const char* function)
{
    return reinterpret_cast<Result (*)()>(dlsym(module, function))();
}

} // namespace

TEST(TwoModules, ShareTheCachesAndNoticeTheirEnd)
{
    void* const one = dlopen(CACHE_MODULE_1, RTLD_NOW | RTLD_LOCAL);
    void* const two = dlopen(CACHE_MODULE_2, RTLD_NOW | RTLD_LOCAL);
    ASSERT_TRUE(one && two && dlsym(one, "Own") != dlsym(two, "Own")) << dlerror();
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(Call<const void*>(one, "Own"), Call<const void*>(two, "Own")) << "of the modules alone";
        Call<void>(round == 0 ? one : two, "EndOwn");
        EXPECT_TRUE(Call<int>(one, "HasOwn") == 0 && Call<int>(two, "HasOwn") == 0);
    }
    const ::Test::Practice practice;
    ::Test::Practice::Sql("INSERT BRIXTaxForm (lID, lClientID, nYear) VALUES (10, 1, 2024)");
    EXPECT_EQ(Call<const void*>(one, "Client"), Call<const void*>(two, "Client")) << "of the library";
    Brix::CTaxForm form;
    form.Open();
    form.SetDormant(true);
    form.Update();
    EXPECT_EQ(CClientSingleton::Data(1, 0, 2024).dormant, 1) << "it listens, whoever made it";
    Call<void>(two, "EndClient");
    EXPECT_EQ(CClientSingleton::Loaded(), 0);
}

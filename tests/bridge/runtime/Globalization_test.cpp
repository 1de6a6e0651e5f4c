// Cultures, from ICU or from Windows. On Linux .NET ends the process when it finds no ICU libraries, unless it was
// configured to do without them.
#include "tests/bridge/runtime/StartTest.h"

using namespace Quorvex::Velmora::TestSupport;
using testing::ElementsAre;
using testing::HasSubstr;

namespace
{

using testing::_;

class Globalization : public StartTest
{
protected:
#ifndef _WIN32
    void hideIcu() { installation.environment["LD_PRELOAD"] = hostFile("libvelmora_noicu.so").u8string(); }
#endif
};

} // namespace

TEST_F(Globalization, HasAllCultures)
{
    EXPECT_THAT(take({api, "connect", "drives"}), ElementsAre(Connected, _, HasSubstr("Edition 1,5")));
}

#ifdef _WIN32

// Windows before 10 has no ICU. Neither has Wine, where all other tests run like this one.
TEST_F(Globalization, HasAllCulturesWhereIcuIsNot)
{
    installation.environment["DOTNET_SYSTEM_GLOBALIZATION_USENLS"] = "1";

    EXPECT_THAT(take({api, "connect", "drives"}), ElementsAre(Connected, _, HasSubstr("Edition 1,5")));
}

TEST_F(Globalization, ServesWhereDotnetIsToldToDoWithoutCultures)
{
    installation.environment["DOTNET_SYSTEM_GLOBALIZATION_INVARIANT"] = "1";
    installation.environment["DOTNET_SYSTEM_GLOBALIZATION_PREDEFINED_CULTURES_ONLY"] = "0";

    EXPECT_THAT(take({api, "connect", "drives"}), ElementsAre(Connected, _, HasSubstr("Edition 1.5")));
}

#else

TEST_F(Globalization, ServesWithoutCulturesWhereIcuIsNot)
{
    hideIcu();

    EXPECT_THAT(take({api, "connect", "drives"}), ElementsAre(Connected, _, HasSubstr("Edition 1.5")));
}

TEST_F(Globalization, ReportsThatIcuIsMissingWhereDotnetIsToldToInsistOnIt)
{
    hideIcu();
    installation.environment["DOTNET_SYSTEM_GLOBALIZATION_INVARIANT"] = "False";

    EXPECT_THAT(take({api, "connect", "connect"}),
        ElementsAre(failsNaming("libicuuc", "DOTNET_SYSTEM_GLOBALIZATION_INVARIANT", "Install libicu"),
            failsNaming("Install libicu")));
}

#endif

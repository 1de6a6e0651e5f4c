// .NET ends the process when it finds no ICU libraries, unless it is told beforehand to do without.
#include <tests/bridge/runtime/StartTest.h>

using namespace Quorvex::Velmora::TestSupport;
using testing::ElementsAre;
using testing::HasSubstr;

namespace
{

using testing::_;

class Globalization : public StartTest
{
protected:
    void hideIcu() { installation.environment["LD_PRELOAD"] = hostFile("libvelmora_noicu.so").string(); }
};

} // namespace

TEST_F(Globalization, HasAllCulturesWhereIcuIs)
{
    EXPECT_THAT(take({api, "connect", "drives"}), ElementsAre(Connected, _, HasSubstr("Edition 1,5")));
}

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

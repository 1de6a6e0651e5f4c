// The version in the headers and that of the loaded library.
#include <string>

#include <gtest/gtest.h>

#include <velmora/Version.h>

namespace Quorvex::Velmora::TessaportAPI
{
namespace
{

TEST(Version, OfTheHeadersIsThatOfTheProject)
{
    EXPECT_EQ(std::to_string(VELMORA_VERSION_MAJOR) + '.' + std::to_string(VELMORA_VERSION_MINOR) + '.' +
                  std::to_string(VELMORA_VERSION_PATCH),
        VELMORA_PROJECT_VERSION);
}

TEST(Version, OfTheLibraryIsThatOfItsHeaders) { EXPECT_STREQ(versionString(), VELMORA_PROJECT_VERSION); }

TEST(Version, IsANumberForThePreprocessor)
{
#if VELMORA_VERSION >= 100 && VELMORA_VERSION < 1000000
    SUCCEED();
#else
    FAIL() << VELMORA_VERSION;
#endif
}

} // namespace
} // namespace Quorvex::Velmora::TessaportAPI

#include "velmora/platform/LowerCase.h"

#include <gtest/gtest.h>

using namespace Quorvex::Velmora::Common;

TEST(LowerCase, MapsLettersOfEveryScriptInTheCLocale)
{
    EXPECT_EQ(toLower(L"D:\\DRIVE \u00C4\u0416\u03A9"), L"d:\\drive \u00E4\u0436\u03C9");
}

// The fixture for operations that use a probe file: it has a temporary folder of its own, which must be empty at the
// end.
#pragma once

#include <filesystem>
#include <string>

#include "tests/native/StaticTest.h"
#include "tests/support/EnvironmentVariable.h"
#include "tests/support/TemporaryFolder.h"

namespace Quorvex::Velmora::TestSupport
{

class ProbeTest : public StaticTest
{
protected:
    ~ProbeTest() override { expectNoProbeFile(); }

    void expectNoProbeFile()
    {
        if (std::filesystem::exists(temporary.path())) {
            EXPECT_TRUE(std::filesystem::is_empty(temporary.path())) << "a probe file was left behind";
        }
    }

    TemporaryFolder temporary;

private:
    EnvironmentVariable variable{TemporaryFolderVariable, temporary.path().u8string()};
};

} // namespace Quorvex::Velmora::TestSupport

/// @file
/// The fixture of tests that start .NET in a process of its own.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/bridge/runtime/Installation.h"

namespace Quorvex::Velmora::TestSupport
{

class StartTest : public testing::Test
{
protected:
    /// Runs a host that takes the steps, and expects it to exit normally even if steps fail.
    std::vector<std::string> take(const std::vector<std::string>& steps)
    {
        const ChildResult result = installation.connect(steps);
        EXPECT_TRUE(result.exitedWith(0)) << result.description();
        SCOPED_TRACE(result.description());
        return linesOf(result);
    }

    Installation installation;
    const std::string api = step("api", vendorFolder("fitting"));
};

/// A line that reports an ApiException with all of these in its message.
template <class... Parts>
auto failsNaming(Parts... parts)
{
    return testing::AllOf(testing::StartsWith("failed ApiException: "), testing::HasSubstr(std::string(parts))...);
}

inline const auto Connected = testing::StartsWith("connected ");

} // namespace Quorvex::Velmora::TestSupport

// Programs of the machine that Wine runs on.
#pragma once

#include <filesystem>
#include <functional>
#include <string>

namespace Quorvex::Velmora::TestSupport
{

/// Runs a program of the machine's /bin in a folder until it has had its effect: a Windows program cannot wait for its
/// end. False when it has none within ten seconds.
bool runOnMachine(const std::wstring& program, const std::wstring& arguments, const std::filesystem::path& folder,
    const std::function<bool()>& hasHappened);

} // namespace Quorvex::Velmora::TestSupport

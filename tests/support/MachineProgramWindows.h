// Runs programs of the machine that Wine runs on.
#pragma once

#include <filesystem>
#include <functional>
#include <string>

namespace Quorvex::Velmora::TestSupport
{

/// Runs a program of the machine's /bin in a folder and waits for its effect, because a Windows program cannot wait for
/// its end. Returns false if there is no effect within ten seconds.
bool runOnMachine(const std::wstring& program, const std::wstring& arguments, const std::filesystem::path& folder,
    const std::function<bool()>& hasHappened);

} // namespace Quorvex::Velmora::TestSupport

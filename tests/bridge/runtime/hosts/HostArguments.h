// The arguments of a host program.
#pragma once

#include <string>
#include <vector>

#ifdef _WIN32
#include <windows.h>
#include <shellapi.h>

#include <velmora/text/Unicode.h>
#endif

namespace Quorvex::Velmora::TestHosts
{

/// The arguments without the program's name, in UTF-8.
#ifdef _WIN32
inline std::vector<std::string> argumentsOf(int, char**)
{
    // The narrow arguments are in the code page, which does not have every character.
    int count = 0;
    LPWSTR* const wide = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> arguments;
    for (int i = 1; i < count; ++i)
        arguments.push_back(Common::Unicode::toUtf8(wide[i]));
    LocalFree(wide);
    return arguments;
}
#else
inline std::vector<std::string> argumentsOf(int count, char** arguments) { return {arguments + 1, arguments + count}; }
#endif

} // namespace Quorvex::Velmora::TestHosts

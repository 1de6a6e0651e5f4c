// Sets an environment variable of this process during the lifetime of an object.
#pragma once

#include <cstdlib>
#include <string>

#ifdef _WIN32
#include <velmora/text/Unicode.h>
#endif

namespace Quorvex::Velmora::TestSupport
{

/// The variable that contains the path of the system's temporary folder.
#ifdef _WIN32
constexpr const char* TemporaryFolderVariable = "TMP";
#else
constexpr const char* TemporaryFolderVariable = "TMPDIR";
#endif

class EnvironmentVariable
{
public:
    EnvironmentVariable(const char* name, const std::string& value) : name(name)
    {
        if (const char* const former = std::getenv(name)) {
            wasSet = true;
            formerValue = former;
        }
        set(value.c_str());
    }
    ~EnvironmentVariable() { set(wasSet ? formerValue.c_str() : nullptr); }
    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;

private:
    void set(const char* value)
    {
#ifdef _WIN32
        // The narrow function uses the code page, which cannot represent every path.
        _wputenv_s(
            Common::Unicode::fromUtf8(name).c_str(), Common::Unicode::fromUtf8(value == nullptr ? "" : value).c_str());
#else
        if (value == nullptr)
            unsetenv(name);
        else
            setenv(name, value, 1);
#endif
    }

    const char* name;
    bool wasSet = false;
    std::string formerValue;
};

} // namespace Quorvex::Velmora::TestSupport

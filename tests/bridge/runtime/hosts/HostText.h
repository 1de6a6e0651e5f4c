// The output of the host programs.
#pragma once

#include <iostream>
#include <string>
#include <typeinfo>

#include <velmora/api/Exceptions.h>
#include <velmora/api/QVString.h>
#include <velmora/text/Unicode.h>

namespace Quorvex::Velmora::TestHosts
{

inline const char* kindOf(const TessaportAPI::ApiException& e)
{
    using namespace TessaportAPI;
    if (dynamic_cast<const TessaportNotRunningException*>(&e) != nullptr)
        return "TessaportNotRunningException";
    if (dynamic_cast<const TessaportNotInstalledException*>(&e) != nullptr)
        return "TessaportNotInstalledException";
    return typeid(e) == typeid(ApiException) ? "ApiException" : "another exception";
}

/// The message in one line. Characters without a UTF-8 form, which paths may contain, are replaced.
inline std::string lineOf(const TessaportAPI::ApiException& e)
{
    std::string line = Common::Unicode::toUtf8(e.getErrorMessage());
    for (char& c : line)
        c = c == '\n' ? ' ' : c;
    return line;
}

/// Runs the step; a failure becomes a line "failed <kind>: <message>".
template <class Step>
void report(Step step)
{
    try {
        step();
    } catch (const TessaportAPI::ApiException& e) {
        std::cout << "failed " << kindOf(e) << ": " << lineOf(e) << std::endl;
    }
}

} // namespace Quorvex::Velmora::TestHosts

// A window on the scripted service.
#pragma once

#include <algorithm>
#include <string>
#include <utility>

#include "tests/support/ScriptedService.h"
#include "tests/window/WindowTest.h"

namespace Quorvex::Velmora::WindowTest
{

namespace Api = TessaportAPI;
using TestSupport::Json;

/// A file in the drive of the scripted service.
[[nodiscard]] inline Json fileNamed(int number, const std::string& name)
{
    Json file = TestSupport::item(number);
    file["name"] = name;
    file["isFolder"] = false;
    file["relativePath"] = name;
    return file;
}

/// The drive has the files "a.txt" and "b.txt".
class ScriptedWindow : public WindowTest
{
protected:
    ScriptedWindow()
    {
        service.answer("GetFolderContents", Json::array({fileNamed(11, "a.txt"), fileNamed(12, "b.txt")}));
    }

    /// Waits until a member of the service is called. Forgets the calls before it.
    [[nodiscard]] bool waitForCall(const std::string& member)
    {
        return waitFor([&] {
            const auto calls = service.takeCalledMembers();
            return std::find(calls.begin(), calls.end(), member) != calls.end();
        });
    }

    TestSupport::ScriptedService service;
};

} // namespace Quorvex::Velmora::WindowTest

// A window on the demo drives of the local service.
#pragma once

#include <filesystem>
#include <string>

#include "tests/window/WindowTest.h"

namespace Quorvex::Velmora::WindowTest
{

namespace fs = std::filesystem;

/// A home with the demo drives, of which a process has at most one.
class DemoHome
{
public:
    DemoHome();
    ~DemoHome();
    DemoHome(const DemoHome&) = delete;
    DemoHome& operator=(const DemoHome&) = delete;

    [[nodiscard]] const fs::path& path() const { return home; }
    /// A file in the workspace, and on the server, of the first drive.
    [[nodiscard]] fs::path here(const std::string& file) const;
    [[nodiscard]] fs::path onServer(const std::string& file) const;

    /// Sets the state of the service, such as "not-running".
    void setState(const std::string& state) const;

private:
    fs::path home;
};

class LocalWindow : public WindowTest
{
protected:
    /// Opens the window and waits for the items of the first drive.
    void openFirstDrive();

    DemoHome demo;
};

[[nodiscard]] std::string readText(const fs::path& file);
void writeText(const fs::path& file, const std::string& text);

} // namespace Quorvex::Velmora::WindowTest

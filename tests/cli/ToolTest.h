#pragma once

#include <cstdint>
#include <ctime>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tests/support/ChildProcess.h"
#include "tests/support/TemporaryFolder.h"

namespace Quorvex::Velmora::ToolTest
{

using TestSupport::ChildProgram;
using TestSupport::ChildResult;

/// A test that runs the built tool, with a temporary folder and a home in it.
class ToolTest : public testing::Test
{
protected:
    ToolTest();

    /// Makes the demo home.
    void makeDemo();

    /// Runs the tool on the home.
    ChildResult run(std::vector<std::string> arguments);

    /// Runs the tool, or another program that is named.
    ChildResult runProgram(ChildProgram program);

    /// Runs the tool with all standard streams on a terminal.
    ChildResult runOnTerminal(ChildProgram program);

    /// Runs the tool and expects success. @return standard output.
    std::string expectOk(std::vector<std::string> arguments);

    /// Runs the tool with --json and expects success and valid JSON.
    nlohmann::json expectJson(std::vector<std::string> arguments);

    [[nodiscard]] std::filesystem::path workspace(const std::string& drive) const;
    [[nodiscard]] std::filesystem::path server(const std::string& drive) const;

    /// A file of the demo in the workspace of the first drive. It is in sync.
    [[nodiscard]] std::string readme() const;

private:
    void complete(ChildProgram& program) const;

    TestSupport::TemporaryFolder temporary;

protected:
    std::filesystem::path folder;
    std::filesystem::path home;
};

void writeFile(const std::filesystem::path& file, const std::string& content);
std::string readFile(const std::filesystem::path& file);

/// The environment in which a process has the locale "C". Empty on Windows, where the environment does not set the
/// locale.
extern const std::map<std::string, std::string> CLocale;

/// The path that a UTF-8 string names.
std::filesystem::path toPath(const std::string& text);

/// A path with the slashes of this platform, in UTF-8.
std::string text(const std::filesystem::path& path);

/// Replaces slashes by back-slashes, as the service writes paths.
std::string withBackslashes(std::string path);

/// A time as the tool writes it for people.
///
/// @param seconds  since 1970-01-01 00:00:00 UTC.
std::string localTime(std::time_t seconds);

/// Replaces slashes by those of this platform.
std::string withNativeSlashes(std::string text);

std::vector<std::string> linesOf(const std::string& text);

} // namespace Quorvex::Velmora::ToolTest

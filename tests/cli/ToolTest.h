// What the tests of the tool share: a folder of their own, and a home in it.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "Process.h"

namespace Quorvex::Velmora::ToolTest
{

class ToolTest : public testing::Test
{
protected:
    ToolTest();
    ~ToolTest() override;

    /// Makes the demo home.
    void makeDemo();

    /// Runs the tool on the home.
    Finished run(std::vector<std::string> arguments);
    Finished run(Start start);

    /// Runs it and expects success; returns standard output.
    std::string expectOk(std::vector<std::string> arguments);

    /// Runs it with --json and expects success and valid JSON.
    nlohmann::json expectJson(std::vector<std::string> arguments);

    [[nodiscard]] std::filesystem::path workspace(const std::string& drive) const;
    [[nodiscard]] std::filesystem::path server(const std::string& drive) const;

    /// A file of the demo in the workspace of the first drive, which is in sync.
    [[nodiscard]] std::string readme() const;

    std::filesystem::path folder;
    std::filesystem::path home;
};

void writeFile(const std::filesystem::path& file, const std::string& content);
std::string readFile(const std::filesystem::path& file);

/// As the service writes paths.
std::string withBackslashes(std::string path);

std::vector<std::string> linesOf(const std::string& text);

} // namespace Quorvex::Velmora::ToolTest

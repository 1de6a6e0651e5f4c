// Reads logs of numbered events.
#pragma once

#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <velmora/logging/QVJsonParser.h>
#include "tests/support/CapturedErrors.h"
#include "tests/support/TemporaryFolder.h"

namespace Quorvex::Velmora::Logging
{

struct LogText {
    std::vector<std::string> wholeLines;
    std::string rest;
};

inline LogText readLog(const std::wstring& path)
{
    const auto bytes = TestSupport::readFile(path);
    std::istringstream stream(std::string(bytes.begin(), bytes.end()));
    LogText log;
    for (std::string line; std::getline(stream, line);) {
        if (stream.eof())
            log.rest = line;
        else
            log.wholeLines.push_back(line);
    }
    return log;
}

inline void expectNumberedLines(const LogText& log)
{
    std::uint32_t expected = 0;
    for (const auto& line : log.wholeLines) {
        const TestSupport::CapturedErrors errors;
        std::wistringstream stream(std::wstring(line.begin(), line.end()));
        const QVJsonParser parser(stream);
        std::uint32_t number = 0;
        ASSERT_TRUE(parser.getUInt32(L"n", number)) << line << errors.text();
        ASSERT_EQ(number, expected++);
    }
}

} // namespace Quorvex::Velmora::Logging

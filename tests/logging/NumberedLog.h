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

/// The lines of a log file, and what comes after its last end of line.
struct LogText {
    std::vector<std::string> completeLines;
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
            log.completeLines.push_back(line);
    }
    return log;
}

/// Expects that the lines are the records of numbered() events, from 0 on.
inline void expectNumberedLines(const LogText& log)
{
    std::uint32_t expected = 0;
    for (const auto& line : log.completeLines) {
        const TestSupport::CapturedErrors errors;
        std::wistringstream stream(std::wstring(line.begin(), line.end()));
        const QVJsonParser parser(stream);
        std::uint32_t number = 0;
        ASSERT_TRUE(parser.getUInt32(L"n", number)) << line << errors.text();
        ASSERT_EQ(number, expected++);
    }
}

} // namespace Quorvex::Velmora::Logging

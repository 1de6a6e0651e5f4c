// The lines that the library writes to the host's log.
#pragma once

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <velmora/platform/QVLog.h>

namespace Quorvex::Velmora::TestSupport
{

/// Collects the lines while it lives. Every line must come with the flag false.
class LogLines
{
public:
    LogLines()
    {
        Common::QVLog::setSink([this](const Common::QVString& line, bool flag) {
            EXPECT_FALSE(flag);
            lines.emplace_back(line.w_str());
        });
    }
    ~LogLines() { Common::QVLog::setSink(nullptr); }
    LogLines(const LogLines&) = delete;
    LogLines& operator=(const LogLines&) = delete;

    /// The lines since the last time.
    [[nodiscard]] std::vector<std::wstring> take()
    {
        std::vector<std::wstring> taken;
        taken.swap(lines);
        return taken;
    }

private:
    std::vector<std::wstring> lines;
};

} // namespace Quorvex::Velmora::TestSupport

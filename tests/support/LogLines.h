// The lines that the library writes to the log of the host.
#pragma once

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <velmora/api/QVLog.h>

namespace Quorvex::Velmora::TestSupport
{

/// Collects lines during its lifetime. The flag of every line must be false.
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

    /// Returns the lines since the last call.
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

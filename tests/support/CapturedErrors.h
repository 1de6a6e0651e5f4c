// Captures what the code under test writes to std::cerr.
#pragma once

#include <iostream>
#include <sstream>
#include <string>

namespace Quorvex::Velmora::TestSupport
{

/// Replaces the buffer of std::cerr during its lifetime.
class CapturedErrors
{
public:
    CapturedErrors() : previous(std::cerr.rdbuf(captured.rdbuf())) {}
    ~CapturedErrors() { std::cerr.rdbuf(previous); }
    CapturedErrors(const CapturedErrors&) = delete;
    CapturedErrors& operator=(const CapturedErrors&) = delete;

    [[nodiscard]] std::string text() const { return captured.str(); }

private:
    std::ostringstream captured;
    std::streambuf* previous;
};

} // namespace Quorvex::Velmora::TestSupport

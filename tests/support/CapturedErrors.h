// What the code under test writes to std::cerr.
#pragma once

#include <iostream>
#include <sstream>
#include <string>

namespace Quorvex::Velmora::TestSupport
{

/// Takes the place of std::cerr's buffer while it lives.
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

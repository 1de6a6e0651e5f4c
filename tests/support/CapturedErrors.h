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
    CapturedErrors() : m_former(std::cerr.rdbuf(m_text.rdbuf())) {}
    ~CapturedErrors() { std::cerr.rdbuf(m_former); }
    CapturedErrors(const CapturedErrors&) = delete;
    CapturedErrors& operator=(const CapturedErrors&) = delete;

    [[nodiscard]] std::string text() const { return m_text.str(); }

private:
    std::ostringstream m_text;
    std::streambuf* m_former;
};

} // namespace Quorvex::Velmora::TestSupport

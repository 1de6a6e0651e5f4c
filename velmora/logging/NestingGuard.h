#pragma once

#include <cstddef>
#include <streambuf>

namespace Quorvex::Velmora::Logging
{

/// Protects a recursive JSON reader against deep nesting.
///
/// It passes on the characters of another buffer, one by one and never further than asked. Instead of the bracket that
/// opens one level too many it throws json_parser_error, "nesting too deep".
class NestingGuard : public std::wstreambuf
{
public:
    /// @param source  null is an empty source.
    NestingGuard(std::wstreambuf* source, std::size_t maximumDepth) noexcept;

protected:
    int_type underflow() override;
    int_type uflow() override;

private:
    void refuseTooDeep(int_type next) const;
    void advance(wchar_t c) noexcept;

    std::wstreambuf* source;
    std::size_t maximumDepth;
    std::size_t depth = 0;
    bool inString = false;
    bool escaped = false;
};

} // namespace Quorvex::Velmora::Logging

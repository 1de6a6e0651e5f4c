// A stop for JSON that nests too deeply for a reader that recurses.
#pragma once

#include <cstddef>
#include <streambuf>

namespace Quorvex::Velmora::Logging
{

/// Passes the characters of another buffer on, one by one and never further than asked, and throws the JSON reader's
/// own error, "nesting too deep", in place of the bracket that would open one level too many.
class NestingGuard : public std::wstreambuf
{
public:
    /// @param source  may be null, which is an empty source.
    NestingGuard(std::wstreambuf* source, std::size_t maximumDepth) noexcept;

protected:
    int_type underflow() override;
    int_type uflow() override;

private:
    void refuseTooDeep(int_type next) const;
    void advance(wchar_t c) noexcept;

    std::wstreambuf* m_source;
    std::size_t m_maximumDepth;
    std::size_t m_depth = 0;
    bool m_inString = false;
    bool m_escaped = false;
};

} // namespace Quorvex::Velmora::Logging

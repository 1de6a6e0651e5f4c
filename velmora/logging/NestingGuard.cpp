#include "velmora/logging/NestingGuard.h"

#include <boost/property_tree/json_parser/error.hpp>

namespace Quorvex::Velmora::Logging
{

NestingGuard::NestingGuard(std::wstreambuf* source, std::size_t maximumDepth) noexcept
    : m_source(source), m_maximumDepth(maximumDepth)
{
}

NestingGuard::int_type NestingGuard::underflow()
{
    if (m_source == nullptr)
        return traits_type::eof();
    const int_type next = m_source->sgetc();
    refuseTooDeep(next);
    return next;
}

NestingGuard::int_type NestingGuard::uflow()
{
    const int_type next = underflow();
    if (traits_type::eq_int_type(next, traits_type::eof()))
        return next;
    advance(traits_type::to_char_type(next));
    return m_source->sbumpc();
}

void NestingGuard::refuseTooDeep(int_type next) const
{
    if (m_depth < m_maximumDepth || m_inString)
        return;
    if (next == traits_type::to_int_type(L'[') || next == traits_type::to_int_type(L'{'))
        throw boost::property_tree::json_parser::json_parser_error("nesting too deep", "", 0);
}

void NestingGuard::advance(wchar_t c) noexcept
{
    if (m_inString) {
        if (c == L'"' && !m_escaped)
            m_inString = false;
        m_escaped = c == L'\\' && !m_escaped;
    } else if (c == L'"') {
        m_inString = true;
    } else if (c == L'[' || c == L'{') {
        ++m_depth;
    } else if ((c == L']' || c == L'}') && m_depth > 0) {
        --m_depth;
    }
}

} // namespace Quorvex::Velmora::Logging

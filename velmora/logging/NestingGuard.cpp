#include "velmora/logging/NestingGuard.h"

#include <boost/property_tree/json_parser/error.hpp>

namespace Quorvex::Velmora::Logging
{

NestingGuard::NestingGuard(std::wstreambuf* source, std::size_t maximumDepth) noexcept
    : source(source), maximumDepth(maximumDepth)
{
}

NestingGuard::int_type NestingGuard::underflow()
{
    if (source == nullptr)
        return traits_type::eof();
    const int_type next = source->sgetc();
    refuseTooDeep(next);
    return next;
}

NestingGuard::int_type NestingGuard::uflow()
{
    const int_type next = underflow();
    if (traits_type::eq_int_type(next, traits_type::eof()))
        return next;
    advance(traits_type::to_char_type(next));
    return source->sbumpc();
}

void NestingGuard::refuseTooDeep(int_type next) const
{
    if (depth < maximumDepth || inString)
        return;
    if (next == traits_type::to_int_type(L'[') || next == traits_type::to_int_type(L'{'))
        throw boost::property_tree::json_parser::json_parser_error("nesting too deep", "", 0);
}

void NestingGuard::advance(wchar_t c) noexcept
{
    if (inString) {
        if (c == L'"' && !escaped)
            inString = false;
        escaped = c == L'\\' && !escaped;
    } else if (c == L'"') {
        inString = true;
    } else if (c == L'[' || c == L'{') {
        ++depth;
    } else if ((c == L']' || c == L'}') && depth > 0) {
        --depth;
    }
}

} // namespace Quorvex::Velmora::Logging

// Typed values as texts, whatever locale the host has set.
#pragma once

#include <locale>
#include <string>

#include <boost/property_tree/stream_translator.hpp>

namespace Quorvex::Velmora::Logging::ValueText
{

template <class Value>
using Translator =
    boost::property_tree::stream_translator<wchar_t, std::char_traits<wchar_t>, std::allocator<wchar_t>, Value>;

template <class Value>
std::wstring from(Value value)
{
    return *Translator<Value>(std::locale::classic()).put_value(value);
}

/// @return false, with `out` as it was, when the whole text does not convert.
template <class Value>
bool to(const std::wstring& text, Value& out)
{
    const auto value = Translator<Value>(std::locale::classic()).get_value(text);
    if (!value)
        return false;
    out = *value;
    return true;
}

inline bool to(const std::wstring& text, std::wstring& out)
{
    out = text;
    return true;
}

} // namespace Quorvex::Velmora::Logging::ValueText

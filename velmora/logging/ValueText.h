/// @file
/// Converts typed values to text and back, whatever locale the host has set.
#pragma once

#include <ios>
#include <locale>
#include <sstream>
#include <string>

#include <boost/property_tree/stream_translator.hpp>

namespace Quorvex::Velmora::Logging::ValueText
{

/// How the property tree library writes and reads a value.
template <class Value>
using Form = boost::property_tree::customize_stream<wchar_t, std::char_traits<wchar_t>, Value>;

/// Lets std::bad_alloc propagate from the stream, which otherwise treats it as text that does not convert.
inline void prepare(std::wios& stream)
{
    stream.imbue(std::locale::classic());
    stream.exceptions(std::ios::badbit);
}

template <class Value>
std::wstring from(Value value)
{
    std::wostringstream stream;
    prepare(stream);
    Form<Value>::insert(stream, value);
    return stream.str();
}

/// @return false, with `out` unchanged, unless the complete text converts.
template <class Value>
bool to(const std::wstring& text, Value& out)
{
    std::wistringstream stream(text);
    prepare(stream);
    Value value;
    Form<Value>::extract(stream, value);
    if (stream.fail() || stream.get() != std::char_traits<wchar_t>::eof())
        return false;
    out = value;
    return true;
}

inline bool to(const std::wstring& text, std::wstring& out)
{
    out = text;
    return true;
}

} // namespace Quorvex::Velmora::Logging::ValueText

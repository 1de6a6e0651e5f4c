// Typed values in a tree of texts: key paths and conversion, shared by all that keep such a tree.
#pragma once

#include <boost/property_tree/ptree.hpp>

#include <cstddef>
#include <cstdint>
#include <locale>
#include <optional>
#include <string>

namespace Quorvex::Velmora::Logging::ValueTree
{

using Tree = boost::property_tree::wptree;

/// How deep keys and documents may nest. The tree's users and its destructor recurse.
constexpr std::size_t MaximumDepth = 1000;

/// The node at the key path, made where it is missing.
/// @throws std::invalid_argument for a path of more than MaximumDepth levels.
Tree& nodeAt(Tree& tree, const std::wstring& key);

/// The node at the key path, or null.
const Tree* findNode(const Tree& tree, const std::wstring& key);

template <class Value>
using Translator =
    boost::property_tree::stream_translator<wchar_t, std::char_traits<wchar_t>, std::allocator<wchar_t>, Value>;

template <class Value>
std::wstring toText(Value value)
{
    return *Translator<Value>(std::locale::classic()).put_value(value);
}

/// @return false, with `out` as it was, when the whole text does not convert.
template <class Value>
bool fromText(const std::wstring& text, Value& out)
{
    const auto value = Translator<Value>(std::locale::classic()).get_value(text);
    if (!value)
        return false;
    out = *value;
    return true;
}

inline bool fromText(const std::wstring& text, std::wstring& out)
{
    out = text;
    return true;
}

template <class Value>
bool get(const Tree& tree, const std::wstring& key, Value& out)
{
    const Tree* const node = findNode(tree, key);
    return node != nullptr && fromText(node->data(), out);
}

} // namespace Quorvex::Velmora::Logging::ValueTree

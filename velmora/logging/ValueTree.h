// Key paths in the trees of the JSON library.
#pragma once

#include <string>

#include <boost/property_tree/ptree.hpp>

namespace Quorvex::Velmora::Logging::ValueTree
{

using Tree = boost::property_tree::wptree;

/// The node at the key, made where it is missing.
/// @throws std::invalid_argument for a key of more than MaximumDepth levels.
Tree& nodeAt(Tree& tree, const std::wstring& key);

/// The node at the key, or null.
const Tree* findNode(const Tree& tree, const std::wstring& key);

} // namespace Quorvex::Velmora::Logging::ValueTree

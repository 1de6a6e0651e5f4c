/// @file
/// Values by key in the trees of the JSON library.
#pragma once

#include <string>

#include <boost/property_tree/ptree.hpp>

#include <velmora/logging/KeyPath.h>

namespace Quorvex::Velmora::Logging::ValueTree
{

using Tree = boost::property_tree::wptree;

/// Sets the data of the node at the path, creating missing nodes. If an allocation fails, nothing has changed.
void put(Tree& tree, KeyPath path, const std::wstring& value);

/// @return the node at the path, or null.
const Tree* find(const Tree& tree, KeyPath path);

} // namespace Quorvex::Velmora::Logging::ValueTree

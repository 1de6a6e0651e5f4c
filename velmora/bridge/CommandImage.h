/// @file
/// The images of commands.
#pragma once

#include <cstdint>
#include <vector>

#include <velmora/api/Command.h>

namespace Quorvex::Velmora::Tessaport
{

/// Returns the bytes of the image of a command's managed object; empty if it has no image, or the command no object.
///
/// @throws ApiException or one of its subclasses if the image cannot be read.
[[nodiscard]] std::vector<std::uint8_t> getCommandImage(const TessaportAPI::Command& command);

} // namespace Quorvex::Velmora::Tessaport

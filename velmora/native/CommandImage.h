/// @file
/// The icons of commands.
#pragma once

#include <cstdint>
#include <vector>

#include <velmora/api/Command.h>
#include <velmora/platform/Export.h>

namespace Quorvex::Velmora::TessaportAPI
{

/// Returns the bytes of a command's icon, as the sync application gives them: usually a PNG file.
///
/// This is a request like those of QvNativeTessaportAPI: it blocks, and is not thread-safe with respect to them. It
/// asks the command itself, so it also works after the connection that returned the command is gone. Command::image has
/// the number of the bytes only.
///
/// @param command  one that getCommands() returned, or a copy of it; its fields are not read.
/// @return the bytes; empty if the command has no icon or is default-constructed. The bytes are untrusted: they may be
///         no picture.
/// @throws ApiException or one of its subclasses if the sync application fails to give the icon.
[[nodiscard]] VELMORA_API std::vector<std::uint8_t> commandImage(const Command& command);

} // namespace Quorvex::Velmora::TessaportAPI

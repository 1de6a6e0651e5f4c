#pragma once

#include <velmora/api/ItemId.h>
#include <velmora/api/QVBuffer.h>
#include <velmora/platform/WindowHandle.h>

namespace Quorvex::Velmora::TessaportAPI
{

/// The items for which commands are listed, or on which one is executed.
class CommandContext
{
public:
    ItemId itemId;                    ///< The item in focus.
    Common::QVBuffer<ItemId> itemIds; ///< The other selected items.
    HWND windowHandle = nullptr;      ///< Parent of the windows that a command shows; may be null.
};

} // namespace Quorvex::Velmora::TessaportAPI

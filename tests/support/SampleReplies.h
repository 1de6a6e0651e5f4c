// Replies that the bridge understands, one of each shape.
#pragma once

#include "tests/support/ReplyBuilder.h"

namespace Quorvex::Velmora::TestSupport::SampleReplies
{

[[nodiscard]] PackedReply nothing();
[[nodiscard]] PackedReply flag();
[[nodiscard]] PackedReply version();
/// Items 1, 2, …
[[nodiscard]] PackedReply items(int count);
/// Item 1 created, none deleted, items 2 and 3 updated.
[[nodiscard]] PackedReply outcome();
/// Two drives of type "Quorvex.DataSourceType.Drive" at D:\Drive, with items 1 and 2 as their roots.
[[nodiscard]] PackedReply drives();
/// One command without an image, and one with.
[[nodiscard]] PackedReply commands();
/// Results of lookups of items, by whatever key: item 1, item 2, and one that was not found.
[[nodiscard]] PackedReply foundItems();
/// The result of an id, and that of the null id.
[[nodiscard]] PackedReply permanentIds();
[[nodiscard]] PackedReply propertyDefinitions();
/// One value of the property "SourceObjectId".
[[nodiscard]] PackedReply propertyValues();
[[nodiscard]] PackedReply fullPath();
[[nodiscard]] PackedReply commandImage();

} // namespace Quorvex::Velmora::TestSupport::SampleReplies

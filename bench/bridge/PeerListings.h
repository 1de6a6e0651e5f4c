// The same listing by other ways over the boundary.
#pragma once

#include <velmora/api/Item.h>
#include <velmora/api/QVBuffer.h>

namespace Quorvex::Velmora::Bench
{

/// A call for each property, written with care.
[[nodiscard]] Common::QVBuffer<TessaportAPI::Item> perPropertyListing(unsigned count);

/// A call for each property, as a first draft has it.
[[nodiscard]] Common::QVBuffer<TessaportAPI::Item> naiveListing(unsigned count);

/// One JSON document.
[[nodiscard]] Common::QVBuffer<TessaportAPI::Item> jsonListing(unsigned count);

} // namespace Quorvex::Velmora::Bench

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tools/tessaport/app/Context.h"

namespace Quorvex::Velmora::Tool
{

/// One of the two versions of a file that a sync kept.
struct Version {
    TessaportAPI::Item item;
    std::optional<std::int64_t> size; ///< In bytes.
    std::string from;                 ///< The side from which it is, "here" or "server"; empty if that is not known.
};

/// A file of which both versions were kept.
struct Conflict {
    Version ours; ///< The version that kept the name.
    Version other;
};

/// Lists the conflicts at an item and in it.
///
/// @throws ApiException if the sync application cannot be asked.
std::vector<Conflict> conflictsIn(Context& context, const TessaportAPI::Item& top);

/// What the folder of an item says about its conflicts.
class Siblings
{
public:
    /// @throws ApiException if the sync application cannot be asked.
    Siblings(Context& context, const TessaportAPI::Item& item);

    /// The copies of which the item is the other version.
    [[nodiscard]] const std::vector<TessaportAPI::Item>& copies() const { return found; }

    /// Whether the item is such a copy itself.
    [[nodiscard]] bool isCopy() const { return !originalPath.empty(); }

    /// The name of the file of which the item is a copy.
    [[nodiscard]] std::string original() const;

private:
    std::vector<TessaportAPI::Item> found;
    std::string originalPath;
};

} // namespace Quorvex::Velmora::Tool

#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "tools/tessaport/app/Context.h"

namespace Quorvex::Velmora::Tool
{

/// Some properties of items, as text; empty if the sync application does not define them.
class PropertyTexts
{
public:
    enum class Refusal { Ignored, Thrown };

    /// @param refusal  whether a request for properties that the sync application refuses is an exception.
    PropertyTexts(Context& context, const std::vector<TessaportAPI::Item>& items,
        const std::vector<std::string>& propertyIds, Refusal refusal = Refusal::Ignored);

    /// The value of one property; empty if the item has none.
    [[nodiscard]] std::string of(const TessaportAPI::Item& item, const std::string& propertyId) const;
    [[nodiscard]] std::string of(
        const Common::QVUUID& drive, const Common::QVString& relativePath, const std::string& propertyId) const;

private:
    // By drive, relative path and property.
    std::map<std::string, std::string> texts;
};

/// A reason as the middle of a message.
std::string withoutFullStop(std::string text);

/// Whether a drive takes changes now.
struct Refusal {
    std::string reason;       ///< Empty if it does.
    bool isOffline = false;   ///< Nothing comes from the server either.
    bool hasPatterns = false; ///< Whether patterns leave out files.
    std::string fault;        ///< Why requests for it fail until that is mended; empty if they do not.

    [[nodiscard]] bool refuses() const { return !reason.empty(); }
};

/// Asks whether a drive takes changes now.
///
/// @return nothing if the sync application does not say.
std::optional<Refusal> refusalOf(Context& context, const Common::QVUUID& driveId);

/// Why the sync application did not do something with items: the reason that it gives itself.
class Reasons
{
public:
    Reasons(Context& commandContext, const std::vector<TessaportAPI::Item>& items);

    /// The reason without the item.
    ///
    /// @param guess  what to say if the sync application gives no reason.
    [[nodiscard]] std::string whyNotDone(const TessaportAPI::Item& item, const std::string& guess) const;

    /// False if the sync application says of this item that nothing failed.
    [[nodiscard]] bool hasFailed(const TessaportAPI::Item& item) const;

private:
    Context& context;
    PropertyTexts texts;
};

} // namespace Quorvex::Velmora::Tool

#pragma once

#include <velmora/api/QVString.h>
#include <velmora/api/QVUUID.h>

namespace Quorvex::Velmora::TessaportAPI
{

/// The value of one property of one item, as text.
class StringPropertyValue
{
public:
    Common::QVUUID driveId; ///< The drive that holds the item.
    /// Copied with the record.
    ///
    /// @note Kept for compatibility: no request fills it.
    Common::QVString auxiliaryText;
    Common::QVString value;                ///< The value as text, whatever its data type.
    Common::QVString propertyDefinitionId; ///< PropertyDefinition::id of the property.
    Common::QVString relativePath;         ///< The item's path relative to the drive's root.
};

} // namespace Quorvex::Velmora::TessaportAPI

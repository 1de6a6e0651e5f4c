#pragma once

#include <cstdint>

#include <velmora/api/QVString.h>

namespace Quorvex::Velmora::TessaportAPI
{

/// The data type of a property. The numbers are those of the sync application; this library does not interpret them.
enum class PropertyDataType : std::int32_t {};

/// A property that a drive defines.
class PropertyDefinition
{
public:
    Common::QVString displayName; ///< Name to show to users, in the language of the sync application.
    /// Copied with the record.
    ///
    /// @note Kept for compatibility: no request fills it.
    Common::QVString auxiliaryText;
    Common::QVString id;                ///< Identifier of the property.
    PropertyDataType displayDataType{}; ///< The data type as which the value is shown.
    PropertyDataType valueDataType{};   ///< The data type of the stored value.
};

} // namespace Quorvex::Velmora::TessaportAPI

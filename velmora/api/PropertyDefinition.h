/// One property that a drive defines.
#pragma once

#include <cstdint>

#include <velmora/api/QVString.h>

namespace Quorvex::Velmora::TessaportAPI
{

/// The data type of a property, numbered as the sync application numbers it and not interpreted here.
enum class PropertyDataType : std::int32_t {};

class PropertyDefinition
{
public:
    Common::QVString displayName;
    Common::QVString auxiliaryText;     ///< Carried with the record; empty in every record that a request returns.
    Common::QVString id;                ///< Property definition id.
    PropertyDataType displayDataType{}; ///< How the value is to be shown.
    PropertyDataType valueDataType{};   ///< Type of the stored value.
};

} // namespace Quorvex::Velmora::TessaportAPI

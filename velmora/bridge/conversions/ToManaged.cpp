#include "velmora/bridge/conversions/ToManaged.h"

#include <algorithm>
#include <cstddef>
#include <stdexcept>
#include <utility>

#include <velmora/api/TextAccess.h>
#include <velmora/api/UuidAccess.h>
#include <velmora/text/Narrowing.h>
#include <velmora/text/Unicode.h>

namespace Quorvex::Velmora::Tessaport
{
namespace
{

// Every character is written, so that the compiler may take several at once.
void useBackSlashes(char16_t* begin, char16_t* end)
{
    std::transform(begin, end, begin, [](char16_t unit) { return unit == u'/' ? u'\\' : unit; });
}

} // namespace

CrossingText::CrossingText(std::wstring_view text) : CrossingText(Common::Unicode::toUtf16(text)) {}

CrossingText::CrossingText(std::u16string text) noexcept : units(std::move(text)), crossing{units.data(), units.size()}
{
}

CrossingTexts::CrossingTexts(const Common::QVBuffer<Common::QVString>& texts, Kind kind)
{
    std::size_t most = 0;
    for (const Common::QVString& text : texts)
        most += Common::mostUnits(Common::TextAccess::view(text).size());
    // Not a vector: it would clear what is written anyway.
    units.reset(new char16_t[most]);
    crossing.reserve(texts.GetSize());
    char16_t* position = units.get();
    for (const Common::QVString& text : texts) {
        const std::size_t length = Common::narrow(Common::TextAccess::view(text), position);
        crossing.push_back({position, length});
        position += length;
    }
    if (kind == Kind::Paths)
        useBackSlashes(units.get(), position);
}

CrossingText toManaged(const Common::QVString& text) { return CrossingText(Common::TextAccess::view(text)); }

CrossingText toManagedPath(const Common::QVString& path)
{
    std::u16string units = Common::Unicode::toUtf16(Common::TextAccess::view(path));
    useBackSlashes(units.data(), units.data() + units.size());
    return CrossingText(std::move(units));
}

const std::uint8_t* toManaged(const Common::QVUUID& id)
{
    if (!Common::UuidAccess::isValid(id)) {
        throw std::invalid_argument("The drive id was made from text that is no identifier; it must have the form "
                                    "xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx.");
    }
    return Common::UuidAccess::bytes(id);
}

} // namespace Quorvex::Velmora::Tessaport

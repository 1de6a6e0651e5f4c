#include <velmora/bridge/conversions/ToManaged.h>

#include <algorithm>
#include <cstddef>
#include <stdexcept>
#include <utility>

#include <velmora/api/TextAccess.h>
#include <velmora/api/UuidAccess.h>
#include <velmora/platform/Unicode.h>

namespace Quorvex::Velmora::Tessaport
{
namespace
{

void appendUnits(std::u16string& target, std::wstring_view text)
{
    for (std::size_t i = 0; i < text.size();)
        Common::Unicode::appendUtf16(target, Common::Unicode::nextCodePoint(text, i));
}

void useBackSlashes(std::u16string& path) { std::replace(path.begin(), path.end(), u'/', u'\\'); }

} // namespace

CrossingText::CrossingText(std::wstring_view text) : CrossingText(Common::Unicode::toUtf16(text)) {}

CrossingText::CrossingText(std::u16string text) noexcept : units(std::move(text)), crossing{units.data(), units.size()}
{
}

CrossingTexts::CrossingTexts(const Common::QVBuffer<Common::QVString>& texts, Kind kind)
{
    std::vector<std::size_t> ends;
    ends.reserve(texts.GetSize());
    for (const Common::QVString& text : texts) {
        appendUnits(units, Common::TextAccess::view(text));
        ends.push_back(units.size());
    }
    if (kind == Kind::Paths)
        useBackSlashes(units);
    crossing.reserve(ends.size());
    std::size_t begin = 0;
    for (const std::size_t end : ends) {
        crossing.push_back({units.data() + begin, end - begin});
        begin = end;
    }
}

CrossingText toManaged(const Common::QVString& text) { return CrossingText(Common::TextAccess::view(text)); }

CrossingText toManagedPath(const Common::QVString& path)
{
    std::u16string units = Common::Unicode::toUtf16(Common::TextAccess::view(path));
    useBackSlashes(units);
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

// Arguments of requests, in the form in which they cross the C boundary.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <velmora/api/QVBuffer.h>
#include <velmora/api/QVString.h>
#include <velmora/api/QVUUID.h>
#include <velmora/bridge/runtime/TessaportEntryPoints.h>

namespace Quorvex::Velmora::Tessaport
{

/// One text; must outlive the call that it is given to.
class CrossingText
{
public:
    explicit CrossingText(std::wstring_view text);
    CrossingText(const CrossingText&) = delete;
    CrossingText& operator=(const CrossingText&) = delete;

    [[nodiscard]] const VelmoraText* get() const noexcept { return &crossing; }

private:
    friend CrossingText toManagedPath(const Common::QVString& path);
    explicit CrossingText(std::u16string text) noexcept;

    std::u16string units;
    VelmoraText crossing{};
};

/// A list of texts in one piece of memory; must outlive the call that it is given to.
class CrossingTexts
{
public:
    enum class Kind { Plain, Paths };

    CrossingTexts(const Common::QVBuffer<Common::QVString>& texts, Kind kind);
    CrossingTexts(const CrossingTexts&) = delete;
    CrossingTexts& operator=(const CrossingTexts&) = delete;

    [[nodiscard]] const VelmoraText* data() const noexcept { return crossing.data(); }
    [[nodiscard]] std::uint64_t size() const noexcept { return crossing.size(); }

private:
    std::unique_ptr<char16_t[]> units;
    std::vector<VelmoraText> crossing;
};

/// The text as it stands.
[[nodiscard]] CrossingText toManaged(const Common::QVString& text);

/// A path, with every "/" turned into the "\\" that the sync application speaks.
[[nodiscard]] CrossingText toManagedPath(const Common::QVString& path);

/// The identifier's 16 bytes, in the order of its text form; valid as long as `id`.
/// @throws std::invalid_argument when it was made from text that is no identifier.
[[nodiscard]] const std::uint8_t* toManaged(const Common::QVUUID& id);

} // namespace Quorvex::Velmora::Tessaport

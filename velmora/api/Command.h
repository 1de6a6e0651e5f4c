/// One command that the sync application offers for a context: a menu entry.
#pragma once

#include <cstdint>

#include <velmora/api/QVString.h>
#include <velmora/platform/Export.h>

namespace Quorvex::Velmora::Tessaport
{
class QvManagedTessaportService;
}

namespace Quorvex::Velmora::TessaportAPI
{

class CommandImp;

/// A menu entry, to be shown and handed back to executeCommand. One made by hand names no command; executing it fails
/// with ApiException. Assigning such a one keeps the command that the target names.
class VELMORA_API Command
{
public:
    /// Bytes of an icon. `data` is null when `count` is 0; allocated with array new and owned by the command.
    struct Image {
        std::uint8_t* data = nullptr;
        std::uint64_t count = 0;
    };

    Command() noexcept;
    Command(const Command& other);
    Command(Command&& other) noexcept;
    virtual ~Command();

    Command& operator=(const Command& other);
    Command& operator=(Command&& other) noexcept;

    Common::QVString name; ///< Display text.
    Common::QVString id;   ///< Command identifier.
    bool isEnabled = false;
    bool isChecked = false;
    bool isBeginningOfGroup = false; ///< A separator precedes it.
    bool isDefaultCommand = false;
    /// The icon's size. An image that came from the sync application has the right number of bytes, all zero: its
    /// content stays with the application.
    Image image;

private:
    friend class Tessaport::QvManagedTessaportService;

    CommandImp* implementation = nullptr;
};

} // namespace Quorvex::Velmora::TessaportAPI

#pragma once

#include <cstdint>

#include <velmora/api/QVString.h>
#include <velmora/platform/Export.h>

namespace Quorvex::Velmora::Tessaport
{
struct HandleAccess;
}

namespace Quorvex::Velmora::TessaportAPI
{

class CommandImp;

/// A command that the sync application offers for a context: a menu entry to be shown.
///
/// Pass it back to QvNativeTessaportAPI::executeCommand() to execute it. A default-constructed one names no command:
/// executing it fails with ApiException.
class VELMORA_API Command
{
public:
    /// The bytes of an icon.
    struct Image {
        std::uint8_t* data = nullptr; ///< Allocated with array new, owned by the command; null when `count` is 0.
        std::uint64_t count = 0;      ///< Number of bytes.
    };

    /// Makes a command that names none.
    Command() noexcept;

    /// Copies all fields, the bytes of the icon included, and names the same command.
    ///
    /// @throws std::bad_alloc if an allocation fails.
    Command(const Command& other);

    /// Takes over all fields. Afterwards `other` names no command and has no icon.
    Command(Command&& other) noexcept;
    virtual ~Command();

    /// Takes over the fields of `other`, and the command that it names.
    ///
    /// @note Kept for compatibility: if `other` names no command, this object goes on naming its own.
    /// @throws std::bad_alloc if an allocation fails. This object is then unchanged.
    Command& operator=(const Command& other);

    /// Does the same without copying the icon, which `other` gives up.
    Command& operator=(Command&& other) noexcept;

    Common::QVString name;           ///< Display text.
    Common::QVString id;             ///< Command identifier.
    bool isEnabled = false;          ///< Whether it can be executed; a menu shows it in gray otherwise.
    bool isChecked = false;          ///< Whether a check mark precedes it in a menu.
    bool isBeginningOfGroup = false; ///< Whether a separator precedes it.
    bool isDefaultCommand = false;   ///< Whether it is the default among the commands of the item.
    /// The icon.
    ///
    /// @note Kept for compatibility: if it came from the sync application, the number of bytes is right and all of them
    ///       are zero.
    Image image;

private:
    friend struct Tessaport::HandleAccess;

    CommandImp* implementation = nullptr;
};

} // namespace Quorvex::Velmora::TessaportAPI

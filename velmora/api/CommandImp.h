// The implementation object that a Command owns. Internal.
#pragma once

#include <memory>
#include <utility>

namespace Quorvex::Velmora::Tessaport
{
struct CommandWrapper;
}

namespace Quorvex::Velmora::TessaportAPI
{

class CommandImp
{
public:
    void setInternalCommand(std::shared_ptr<Tessaport::CommandWrapper> command) noexcept
    {
        internalCommand = std::move(command);
    }
    [[nodiscard]] std::shared_ptr<Tessaport::CommandWrapper> getInternalCommand() const noexcept
    {
        return internalCommand;
    }

    /// Returns whether it names a command. An assignment from one that names none changes nothing.
    [[nodiscard]] static bool holdsCommand(const CommandImp* imp) noexcept
    {
        return imp != nullptr && imp->internalCommand != nullptr;
    }

private:
    std::shared_ptr<Tessaport::CommandWrapper> internalCommand;
};

} // namespace Quorvex::Velmora::TessaportAPI

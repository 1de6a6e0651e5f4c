#include "velmora/api/Command.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <new>
#include <utility>

#include <velmora/api/CommandImp.h>

namespace Quorvex::Velmora::TessaportAPI
{
namespace
{

std::unique_ptr<CommandImp> copied(const CommandImp* source)
{
    return CommandImp::holdsCommand(source) ? std::make_unique<CommandImp>(*source) : nullptr;
}

std::unique_ptr<std::uint8_t[]> allocated(std::uint64_t count)
{
    if (count == 0)
        return nullptr;
    if (count > static_cast<std::uint64_t>(PTRDIFF_MAX))
        throw std::bad_alloc();
    return std::unique_ptr<std::uint8_t[]>(new std::uint8_t[static_cast<std::size_t>(count)]);
}

void copyBytes(const Command::Image& source, std::uint8_t* target)
{
    std::copy_n(source.data, static_cast<std::size_t>(source.count), target);
}

} // namespace

Command::Command() noexcept = default;

Command::Command(const Command& other)
    : name(other.name),
      id(other.id),
      isEnabled(other.isEnabled),
      isChecked(other.isChecked),
      isBeginningOfGroup(other.isBeginningOfGroup),
      isDefaultCommand(other.isDefaultCommand)
{
    auto bytes = allocated(other.image.count);
    auto command = copied(other.implementation);
    copyBytes(other.image, bytes.get());
    image = {bytes.release(), other.image.count};
    implementation = command.release();
}

Command::Command(Command&& other) noexcept
    : name(std::move(other.name)),
      id(std::move(other.id)),
      isEnabled(other.isEnabled),
      isChecked(other.isChecked),
      isBeginningOfGroup(other.isBeginningOfGroup),
      isDefaultCommand(other.isDefaultCommand),
      image(std::exchange(other.image, {})),
      implementation(std::exchange(other.implementation, nullptr))
{
}

Command::~Command()
{
    delete[] image.data;
    delete implementation;
}

Command& Command::operator=(const Command& other)
{
    if (this == &other)
        return *this;
    // All that can fail comes first, so that a failure changes nothing.
    const bool reuseBytes = image.count == other.image.count;
    auto bytes = reuseBytes ? nullptr : allocated(other.image.count);
    auto command = copied(other.implementation);

    name = other.name;
    id = other.id;
    isEnabled = other.isEnabled;
    isChecked = other.isChecked;
    isBeginningOfGroup = other.isBeginningOfGroup;
    isDefaultCommand = other.isDefaultCommand;
    if (!reuseBytes) {
        delete[] image.data;
        image = {bytes.release(), other.image.count};
    }
    copyBytes(other.image, image.data);
    if (command != nullptr)
        delete std::exchange(implementation, command.release());
    return *this;
}

Command& Command::operator=(Command&& other) noexcept
{
    if (this == &other)
        return *this;
    name = std::move(other.name);
    id = std::move(other.id);
    isEnabled = other.isEnabled;
    isChecked = other.isChecked;
    isBeginningOfGroup = other.isBeginningOfGroup;
    isDefaultCommand = other.isDefaultCommand;
    delete[] std::exchange(image, std::exchange(other.image, {})).data;
    if (CommandImp::holdsCommand(other.implementation))
        delete std::exchange(implementation, std::exchange(other.implementation, nullptr));
    return *this;
}

} // namespace Quorvex::Velmora::TessaportAPI

#pragma once

#include <cstdint>
#include <memory>

#include <velmora/logging/QVKeyValueEvent.h>

namespace Quorvex::Velmora::Logging
{

/// An event with its number and some text.
inline std::unique_ptr<QVLoggableEvent> numbered(std::uint32_t number)
{
    auto event = std::make_unique<QVKeyValueEvent>(L"e");
    event->putUInt32(L"n", number);
    event->putString(L"text", L"some words, so that a line does not fit a file's blocks");
    return event;
}

} // namespace Quorvex::Velmora::Logging

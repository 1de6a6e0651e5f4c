// Functions of the managed peers, in the runtime that the bridge has started.
#pragma once

namespace Quorvex::Velmora::Bench
{

/// The entry point of that name, for example "Naive.Item".
/// @throws std::runtime_error if it cannot be found.
[[nodiscard]] void* peerFunction(const char* type, const char* method);

template <class Function>
[[nodiscard]] Function peer(const char* type, const char* method)
{
    return reinterpret_cast<Function>(peerFunction(type, method));
}

} // namespace Quorvex::Velmora::Bench

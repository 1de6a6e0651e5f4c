#pragma once

#include <cstdint>
#include <string>

namespace Quorvex::Velmora::IO
{

/// Returns typed values by key. Keys have the levels that QVKeyValueSink describes.
///
/// Each getter returns true and sets `out` if there is a value under the key and its complete text converts to the
/// type. Otherwise it returns false and `out` is unchanged. Bools are read from "true", "false", "1" and "0", and the
/// process's locale has no influence.
class QVKeyValueSource
{
public:
    virtual ~QVKeyValueSource() = default;

    /// @return false in every implementation of this library.
    [[nodiscard]] virtual bool queryFlag() const = 0;

    /// @name Values
    /// @{

    /// Gets the value under a key.
    ///
    /// @param key  levels are separated by a ".".
    /// @param out  unchanged unless the value exists and converts to its type.
    /// @return whether it does.
    virtual bool getUInt32(const std::wstring& key, std::uint32_t& out) const = 0;
    virtual bool getDouble(const std::wstring& key, double& out) const = 0;
    virtual bool getString(const std::wstring& key, std::wstring& out) const = 0;
    virtual bool getBool(const std::wstring& key, bool& out) const = 0;
    virtual bool getUInt64(const std::wstring& key, std::uint64_t& out) const = 0;

    /// @}
};

} // namespace Quorvex::Velmora::IO

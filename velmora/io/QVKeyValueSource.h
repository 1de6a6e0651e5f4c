/// Reading typed values by key.
#pragma once

#include <cstdint>
#include <string>

namespace Quorvex::Velmora::IO
{

/// Answers typed values for the keys of QVKeyValueSink, "." separating levels of nesting.
///
/// Each getter returns true and sets `out` when there is a value under the key and its whole text converts to the type;
/// otherwise it returns false and leaves `out` as it was. Bools are read from "true", "false", "1" and "0". The
/// process's locale plays no part.
class QVKeyValueSource
{
public:
    virtual ~QVKeyValueSource() = default;

    /// False in every implementation of this library.
    [[nodiscard]] virtual bool queryFlag() const = 0;

    virtual bool getUInt32(const std::wstring& key, std::uint32_t& out) const = 0;
    virtual bool getDouble(const std::wstring& key, double& out) const = 0;
    virtual bool getString(const std::wstring& key, std::wstring& out) const = 0;
    virtual bool getBool(const std::wstring& key, bool& out) const = 0;
    virtual bool getUInt64(const std::wstring& key, std::uint64_t& out) const = 0;
};

} // namespace Quorvex::Velmora::IO

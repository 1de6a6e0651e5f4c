#pragma once

#include <cstdint>
#include <string>

namespace Quorvex::Velmora::IO
{

/// Takes typed values by key. Keys are wide strings.
///
/// A "." in a key separates levels of nesting: "a.b" is the value "b" inside "a". Missing levels are created, and a
/// second put under the same key replaces the first. A "." at the end of a key starts no further level. A key has at
/// most 1,000 levels: later separators are part of the name of the last one.
///
/// Every value is stored as text, whatever locale the process uses: integers in decimal, doubles with 17 significant
/// digits, bools as "true" or "false", strings unchanged. If an allocation fails, std::bad_alloc propagates and the
/// implementations of this library are unchanged.
class QVKeyValueSink
{
public:
    virtual ~QVKeyValueSink() = default;

    /// Announces a sequence of puts. The implementations of this library do nothing.
    virtual void prepare() = 0;

    /// @name Values
    /// @{

    /// Puts a value under a key. The class says how each type is stored.
    virtual void putUInt32(const std::wstring& key, std::uint32_t value) = 0;
    virtual void putDouble(const std::wstring& key, double value) = 0;
    virtual void putString(const std::wstring& key, const std::wstring& value) = 0;
    virtual void putBool(const std::wstring& key, bool value) = 0;
    virtual void putUInt64(const std::wstring& key, std::uint64_t value) = 0;

    /// @}

    /// Ends what prepare() has announced. The implementations of this library do nothing.
    virtual void finish() = 0;
};

} // namespace Quorvex::Velmora::IO

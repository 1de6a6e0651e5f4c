#pragma once

#include <cstdint>
#include <memory>
#include <ostream>
#include <string>

#include <velmora/io/QVKeyValueFormatter.h>

namespace Quorvex::Velmora::Logging
{

/// Writes each record as one JSON object, followed by the end of a line and a flush of the stream.
///
/// The members are the keys in the order in which they were first put; a key "a.b" is member "b" of object "a".
/// @note Kept for compatibility: every value is a JSON string, numbers and bools included.
///
/// Quotation marks, slashes, backslashes, characters below U+0020 and characters above U+00FF are written as escapes.
/// All other characters, U+007F to U+00FF included, are written as they are. The stream's locale must be able to encode
/// them: imbue one if the stream is a file.
class QVJsonLogTarget final : public IO::QVKeyValueFormatter
{
public:
    /// @param stream  belongs to the caller and must outlive the target.
    /// @param pretty  if false, a record is one line; if true, it has several lines, indented by four spaces for each
    ///     level.
    QVJsonLogTarget(std::wostream& stream, bool pretty);
    ~QVJsonLogTarget() override;
    QVJsonLogTarget(const QVJsonLogTarget&) = delete;
    QVJsonLogTarget& operator=(const QVJsonLogTarget&) = delete;

    void prepare() override;

    void putUInt32(const std::wstring& key, std::uint32_t value) override;
    void putDouble(const std::wstring& key, double value) override;
    void putString(const std::wstring& key, const std::wstring& value) override;
    void putBool(const std::wstring& key, bool value) override;
    void putUInt64(const std::wstring& key, std::uint64_t value) override;
    void finish() override;

    /// Starts an empty record. The name is not written.
    void beginRecord(const std::wstring& name) override;

    /// Writes the record. A second call before beginRecord() writes it again.
    ///
    /// @throws std::runtime_error if a key has both a value and keys below it. Nothing is written then, and what() ends
    ///     with "ptree contains data that cannot be represented in JSON format".
    /// @throws std::runtime_error if the stream is not good after the write; what() ends with "write error".
    void endRecord(const std::wstring& name) override;

private:
    class Impl;
    std::unique_ptr<Impl> impl;
};

} // namespace Quorvex::Velmora::Logging

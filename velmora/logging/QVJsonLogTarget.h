/// Events as JSON.
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
/// The members are the keys in the order in which they were first put; a key "a.b" is member "b" of object "a". Every
/// value is a JSON string, numbers and bools included. Characters above U+00FF are written as \u escapes and those up
/// to U+00FF as they are, so the stream's locale must be able to encode these: imbue one when the stream is a file.
class QVJsonLogTarget final : public IO::QVKeyValueFormatter
{
public:
    /// @param stream  stays the caller's, and must outlive the target.
    /// @param pretty  false: a record is one line; true: an object over several lines, indented by four spaces a level.
    QVJsonLogTarget(std::wostream& stream, bool pretty);
    ~QVJsonLogTarget() override;
    QVJsonLogTarget(const QVJsonLogTarget&) = delete;
    QVJsonLogTarget& operator=(const QVJsonLogTarget&) = delete;

    void prepare() override;

    /// The put operations throw std::invalid_argument for a key of more than 1,000 levels, which no reader would take.
    void putUInt32(const std::wstring& key, std::uint32_t value) override;
    void putDouble(const std::wstring& key, double value) override;
    void putString(const std::wstring& key, const std::wstring& value) override;
    void putBool(const std::wstring& key, bool value) override;
    void putUInt64(const std::wstring& key, std::uint64_t value) override;
    void finish() override;

    /// Starts an empty record; the name does not appear in the JSON.
    void beginRecord(const std::wstring& name) override;

    /// Writes the record, and once more when called again before beginRecord().
    ///
    /// @throws std::runtime_error "ptree contains data that cannot be represented in JSON format" when a key has both a
    /// value and keys below it (nothing is written then), and "write error" when the stream is not good after the
    /// write. The texts may stand behind a file name.
    void endRecord(const std::wstring& name) override;

private:
    class Impl;
    std::unique_ptr<Impl> m_impl;
};

} // namespace Quorvex::Velmora::Logging

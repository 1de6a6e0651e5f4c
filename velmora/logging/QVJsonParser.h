#pragma once

#include <cstdint>
#include <istream>
#include <memory>
#include <string>

#include <velmora/io/QVKeyValueSource.h>

namespace Quorvex::Velmora::Logging
{

/// Reads one JSON document, such as one line of a log, and returns its values.
///
/// Numbers, bools and null are stored as the text in the document. An object never changes after its construction, so
/// several threads can read it at once.
class QVJsonParser : public IO::QVKeyValueSource
{
public:
    /// Reads `stream` to its end. It must hold exactly one document, nested no deeper than 1,000 levels.
    ///
    /// @note Kept for compatibility: a stream that holds anything else is reported on standard error, in one line:
    ///     "QVJsonParser: json_parser_error while reading given input stream: " and the reason. " (input is empty)"
    ///     comes before the colon if the stream's buffer has nothing left. The object is then empty, and its getters
    ///     return false.
    explicit QVJsonParser(std::wistream& stream);
    ~QVJsonParser() override;
    QVJsonParser(const QVJsonParser&) = delete;
    QVJsonParser& operator=(const QVJsonParser&) = delete;

    [[nodiscard]] bool queryFlag() const override;
    bool getUInt32(const std::wstring& key, std::uint32_t& out) const override;
    bool getDouble(const std::wstring& key, double& out) const override;
    bool getString(const std::wstring& key, std::wstring& out) const override;
    bool getBool(const std::wstring& key, bool& out) const override;
    bool getUInt64(const std::wstring& key, std::uint64_t& out) const override;

    /// @name The value of the document itself
    /// For a document that is a single value, such as 7 or "text".
    /// @{

    /// @return false, with `out` unchanged, unless the value converts to the type.
    virtual bool valueAsUInt32(std::uint32_t& out) const;
    /// @copydoc valueAsUInt32
    virtual bool valueAsDouble(double& out) const;
    /// @return true. The text of an object or an array is empty.
    virtual bool valueAsString(std::wstring& out) const;
    /// @copydoc valueAsUInt32
    virtual bool valueAsBool(bool& out) const;
    /// @copydoc valueAsUInt32
    virtual bool valueAsUInt64(std::uint64_t& out) const;

    /// @}

private:
    struct Impl;
    std::unique_ptr<Impl> impl;
};

} // namespace Quorvex::Velmora::Logging

/// One JSON record, read back.
#pragma once

#include <cstdint>
#include <istream>
#include <memory>
#include <string>

#include <velmora/io/QVKeyValueSource.h>

namespace Quorvex::Velmora::Logging
{

/// Reads one JSON document, such as one line of a log, and answers for its values.
///
/// Numbers, bools and null are kept as the texts they were written with. Once made, an object never changes and can be
/// read from several threads at once.
class QVJsonParser : public IO::QVKeyValueSource
{
public:
    /// Reads `stream` to its end, which must hold exactly one document, nested no deeper than 1,000 levels.
    ///
    /// A stream that holds anything else is reported in one line on standard error, "QVJsonParser: json_parser_error
    /// while reading given input stream: " and the reason; " (input is empty)" stands before the colon when the
    /// stream's buffer has nothing left. The object is then empty and answers false.
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

    /// The value operations answer for the document itself when it is a bare value such as 7 or "text".
    virtual bool valueAsUInt32(std::uint32_t& out) const;
    virtual bool valueAsDouble(double& out) const;

    /// Always true; the text of an object or an array is empty.
    virtual bool valueAsString(std::wstring& out) const;
    virtual bool valueAsBool(bool& out) const;
    virtual bool valueAsUInt64(std::uint64_t& out) const;

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

} // namespace Quorvex::Velmora::Logging

#include "velmora/logging/QVJsonLogTarget.h"

#include <algorithm>
#include <cstddef>

#include <boost/property_tree/json_parser.hpp>

#include <velmora/logging/RecordTree.h>
#include <velmora/logging/ValueText.h>
#include <velmora/text/Unicode.h>

namespace Quorvex::Velmora::Logging
{
namespace
{

[[maybe_unused]] bool isBeyondBasicPlane(char32_t c) noexcept { return c > 0xFFFF; }

// The JSON writer escapes each wchar_t with four digits and clips larger values, so it gets pairs of surrogates.
std::wstring inPairs(const std::wstring& text)
{
    std::wstring result;
    result.reserve(text.size() + 1);
    for (const wchar_t c : text)
        Common::Unicode::appendUtf16(result, static_cast<char32_t>(c));
    return result;
}

bool needsPairs(const std::wstring& text)
{
    if constexpr (sizeof(wchar_t) == 2)
        return false;
    else
        return std::any_of(text.begin(), text.end(), isBeyondBasicPlane);
}

} // namespace

class QVJsonLogTarget::Impl
{
public:
    Impl(std::wostream& stream, bool pretty) : stream(stream), pretty(pretty) {}
    virtual ~Impl() = default;
    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;

    void put(const std::wstring& key, const std::wstring& text)
    {
        if (needsPairs(key) || needsPairs(text))
            record.put(inPairs(key), inPairs(text));
        else
            record.put(key, text);
    }

    void clear() { record.clear(); }

    void write() { boost::property_tree::write_json(stream, record.finished(), pretty); }

private:
    std::wostream& stream;
    const bool pretty;
    RecordTree record;
};

QVJsonLogTarget::QVJsonLogTarget(std::wostream& stream, bool pretty) : impl(std::make_unique<Impl>(stream, pretty)) {}

QVJsonLogTarget::~QVJsonLogTarget() = default;

void QVJsonLogTarget::prepare() {}

void QVJsonLogTarget::putUInt32(const std::wstring& key, std::uint32_t value)
{
    impl->put(key, ValueText::from(value));
}

void QVJsonLogTarget::putDouble(const std::wstring& key, double value) { impl->put(key, ValueText::from(value)); }

void QVJsonLogTarget::putString(const std::wstring& key, const std::wstring& value) { impl->put(key, value); }

void QVJsonLogTarget::putBool(const std::wstring& key, bool value) { impl->put(key, ValueText::from(value)); }

void QVJsonLogTarget::putUInt64(const std::wstring& key, std::uint64_t value)
{
    impl->put(key, ValueText::from(value));
}

void QVJsonLogTarget::finish() {}

void QVJsonLogTarget::beginRecord(const std::wstring&) { impl->clear(); }

void QVJsonLogTarget::endRecord(const std::wstring&) { impl->write(); }

} // namespace Quorvex::Velmora::Logging

#include "velmora/logging/QVJsonParser.h"

#include <iostream>

#include <boost/property_tree/json_parser.hpp>

#include <velmora/logging/KeyPath.h>
#include <velmora/logging/NestingGuard.h>
#include <velmora/logging/ValueText.h>
#include <velmora/logging/ValueTree.h>

namespace Quorvex::Velmora::Logging
{
namespace
{

bool isExhausted(const std::wistream& stream)
{
    std::wstreambuf* const buffer = stream.rdbuf();
    return buffer == nullptr || buffer->in_avail() <= 0;
}

// A single insertion, so that lines of several threads do not mix.
void report(const boost::property_tree::json_parser_error& error, const std::wistream& stream)
{
    std::cerr << "QVJsonParser: json_parser_error while reading given input stream" +
                     std::string(isExhausted(stream) ? " (input is empty): " : ": ") + error.message() + "\n";
}

/// Sets `document`, or reports why the stream does not hold exactly one.
void readDocument(std::wistream& stream, ValueTree::Tree& document)
{
    try {
        NestingGuard guard(stream.rdbuf(), MaximumDepth);
        std::wistream guarded(&guard);
        boost::property_tree::read_json(guarded, document);
    } catch (const boost::property_tree::json_parser_error& error) {
        report(error, stream);
    }
}

template <class Value>
bool get(const ValueTree::Tree& document, const std::wstring& key, Value& out)
{
    const auto* const node = ValueTree::find(document, KeyPath(key));
    return node != nullptr && ValueText::to(node->data(), out);
}

} // namespace

struct QVJsonParser::Impl {
    ValueTree::Tree document;
};

// Reads the tree in place: a property tree has no move constructor, and copying it costs as much as reading it.
QVJsonParser::QVJsonParser(std::wistream& stream) : impl(std::make_unique<Impl>())
{
    readDocument(stream, impl->document);
}

QVJsonParser::~QVJsonParser() = default;

bool QVJsonParser::queryFlag() const { return false; }

bool QVJsonParser::getUInt32(const std::wstring& key, std::uint32_t& out) const
{
    return get(impl->document, key, out);
}

bool QVJsonParser::getDouble(const std::wstring& key, double& out) const { return get(impl->document, key, out); }

bool QVJsonParser::getString(const std::wstring& key, std::wstring& out) const { return get(impl->document, key, out); }

bool QVJsonParser::getBool(const std::wstring& key, bool& out) const { return get(impl->document, key, out); }

bool QVJsonParser::getUInt64(const std::wstring& key, std::uint64_t& out) const
{
    return get(impl->document, key, out);
}

bool QVJsonParser::valueAsUInt32(std::uint32_t& out) const { return ValueText::to(impl->document.data(), out); }

bool QVJsonParser::valueAsDouble(double& out) const { return ValueText::to(impl->document.data(), out); }

bool QVJsonParser::valueAsString(std::wstring& out) const { return ValueText::to(impl->document.data(), out); }

bool QVJsonParser::valueAsBool(bool& out) const { return ValueText::to(impl->document.data(), out); }

bool QVJsonParser::valueAsUInt64(std::uint64_t& out) const { return ValueText::to(impl->document.data(), out); }

} // namespace Quorvex::Velmora::Logging

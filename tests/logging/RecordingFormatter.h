#pragma once

#include <string>
#include <vector>

#include <velmora/io/QVKeyValueFormatter.h>

namespace Quorvex::Velmora::Logging
{

/// A formatter that records its calls.
struct RecordingFormatter : IO::QVKeyValueFormatter {
    std::vector<std::wstring> calls;

    void prepare() override { calls.emplace_back(L"prepare"); }
    void putUInt32(const std::wstring& key, std::uint32_t value) override { putString(key, std::to_wstring(value)); }
    void putDouble(const std::wstring& key, double value) override { putString(key, std::to_wstring(value)); }
    void putString(const std::wstring& key, const std::wstring& value) override { calls.push_back(key + L'=' + value); }
    void putBool(const std::wstring& key, bool value) override { putString(key, value ? L"true" : L"false"); }
    void putUInt64(const std::wstring& key, std::uint64_t value) override { putString(key, std::to_wstring(value)); }
    void finish() override { calls.emplace_back(L"finish"); }
    void beginRecord(const std::wstring& name) override { calls.push_back(L"begin " + name); }
    void endRecord(const std::wstring& name) override { calls.push_back(L"end(" + name + L")"); }
};

} // namespace Quorvex::Velmora::Logging

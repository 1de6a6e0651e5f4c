#pragma once

#include <string>

#include <velmora/io/QVKeyValueSink.h>

namespace Quorvex::Velmora::IO
{

/// A sink that groups its values into records: those put between beginRecord() and endRecord() belong together.
class QVKeyValueFormatter : public QVKeyValueSink
{
public:
    /// Starts an empty record.
    virtual void beginRecord(const std::wstring& name) = 0;

    /// Writes the record.
    virtual void endRecord(const std::wstring& name) = 0;
};

} // namespace Quorvex::Velmora::IO

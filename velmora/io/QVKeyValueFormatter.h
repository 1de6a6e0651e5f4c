/// Writing typed values by key, grouped into records.
#pragma once

#include <string>

#include <velmora/io/QVKeyValueSink.h>

namespace Quorvex::Velmora::IO
{

/// A sink whose values form records: what is put between beginRecord() and endRecord() belongs together.
class QVKeyValueFormatter : public QVKeyValueSink
{
public:
    /// Starts a record and forgets the values of the one before.
    virtual void beginRecord(const std::wstring& name) = 0;

    /// Writes the record out.
    virtual void endRecord(const std::wstring& name) = 0;
};

} // namespace Quorvex::Velmora::IO

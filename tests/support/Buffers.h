// Buffers made from a list of elements.
#pragma once

#include <initializer_list>

#include <velmora/api/QVBuffer.h>
#include <velmora/api/QVString.h>

namespace Quorvex::Velmora::TestSupport
{

template <class T>
[[nodiscard]] Common::QVBuffer<T> bufferOf(std::initializer_list<T> elements)
{
    Common::QVBuffer<T> buffer;
    for (const T& element : elements)
        buffer.Append(element);
    return buffer;
}

[[nodiscard]] inline Common::QVBuffer<Common::QVString> texts(std::initializer_list<Common::QVString> elements)
{
    return bufferOf<Common::QVString>(elements);
}

} // namespace Quorvex::Velmora::TestSupport

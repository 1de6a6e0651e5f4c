/// The growable array in which lists of records travel.
#pragma once

#include <cstdint>
#include <limits>
#include <memory>
#include <stdexcept>
#include <type_traits>
#include <utility>

namespace Quorvex::Velmora::Common
{

/// A growable array that owns its elements.
///
/// `T` must be default-constructible and assignable. Every element of the array up to the capacity is a live object;
/// those at or beyond the size are as default-constructed. Copying copies element by element, moving does not touch the
/// elements. Allocation failure is reported as std::bad_alloc and leaves the buffer as it was.
template <class T>
class QVBuffer
{
public:
    QVBuffer() noexcept = default;

    QVBuffer(const QVBuffer& other)
    {
        if (other.size == 0)
            return;
        auto copied = std::make_unique<T[]>(other.size);
        for (std::uint32_t i = 0; i < other.size; ++i)
            copied[i] = other.data[i];
        data = copied.release();
        size = capacity = other.size;
    }

    QVBuffer(QVBuffer&& other) noexcept { swap(other); }

    ~QVBuffer()
    {
        delete[] data;
        data = nullptr;
        size = capacity = 0;
    }

    QVBuffer& operator=(const QVBuffer& other)
    {
        if (this != &other)
            QVBuffer(other).swap(*this);
        return *this;
    }

    QVBuffer& operator=(QVBuffer&& other) noexcept
    {
        if (this != &other)
            QVBuffer(std::move(other)).swap(*this);
        return *this;
    }

    /// Adds a copy of `element` at the end. The capacity grows 0, 1, 2, 4, 8, …; growing invalidates addresses.
    /// `element` may be one of this buffer's own.
    void Append(const T& element)
    {
        if (size < capacity) {
            data[size] = element;
        } else {
            T copy(element);
            Reserve(grownCapacity());
            data[size] = std::move(copy);
        }
        ++size;
    }

    /// Adds a default-constructed element at the end and returns it, to be filled in place.
    T& Append()
    {
        if (size == capacity)
            Reserve(grownCapacity());
        return data[size++];
    }

    /// Makes room for `count` elements in all; does nothing when there is room already. The size stays.
    void Reserve(std::uint32_t count)
    {
        if (count <= capacity)
            return;
        std::unique_ptr<T[]> grown(new T[count]);
        for (std::uint32_t i = 0; i < size; ++i)
            relocate(grown[i], data[i]);
        delete[] data;
        data = grown.release();
        capacity = count;
    }

    [[nodiscard]] std::uint32_t GetSize() const noexcept { return size; }

    /// The address of element `index`, or null when `index` is not below the size.
    [[nodiscard]] T* operator[](std::uint32_t index) noexcept { return index < size ? data + index : nullptr; }
    [[nodiscard]] const T* operator[](std::uint32_t index) const noexcept
    {
        return index < size ? data + index : nullptr;
    }

    [[nodiscard]] T* begin() noexcept { return data; }
    [[nodiscard]] T* end() noexcept { return data + size; }
    [[nodiscard]] const T* begin() const noexcept { return data; }
    [[nodiscard]] const T* end() const noexcept { return data + size; }

private:
    void swap(QVBuffer& other) noexcept
    {
        std::swap(data, other.data);
        std::swap(size, other.size);
        std::swap(capacity, other.capacity);
    }

    [[nodiscard]] std::uint32_t grownCapacity() const
    {
        if (capacity > std::numeric_limits<std::uint32_t>::max() / 2)
            throw std::length_error("QVBuffer: more than 2^32 - 1 elements");
        return capacity == 0 ? 1 : capacity * 2;
    }

    // A move that cannot throw leaves nothing half done when a later element fails.
    static void relocate(T& target, T& source)
    {
        if constexpr (std::is_nothrow_move_assignable_v<T>)
            target = std::move(source);
        else
            target = source;
    }

    T* data = nullptr;
    std::uint32_t size = 0;
    std::uint32_t capacity = 0;
};

} // namespace Quorvex::Velmora::Common

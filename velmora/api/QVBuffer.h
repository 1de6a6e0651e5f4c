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
/// Every element of the array up to the capacity is a live object; those at or beyond the size are default-constructed.
/// Copying a buffer copies its elements one by one and leaves the spare capacity behind. Moving does not touch them.
///
/// @tparam T  must be default-constructible, copy-constructible and copy-assignable, with a destructor that does not
///            throw. Growing moves the elements if their move assignment is noexcept, and copies them otherwise.
/// @throws std::bad_alloc when an allocation fails, std::length_error when the capacity would exceed 2^32 - 1 elements,
///         and whatever an operation of `T` throws. A buffer that fails to grow, to append or to be assigned to keeps
///         its elements and its size.
template <class T>
class QVBuffer
{
public:
    QVBuffer() noexcept = default;

    /// Copies the elements. The capacity of the copy is its size.
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

    /// Takes over the elements; `other` is empty afterwards.
    QVBuffer(QVBuffer&& other) noexcept { swap(other); }

    /// A destroyed buffer has no elements and no array.
    ~QVBuffer()
    {
        delete[] data;
        clear(data);
        clear(size);
        clear(capacity);
    }

    /// Replaces the elements by copies of those of `other`.
    QVBuffer& operator=(const QVBuffer& other)
    {
        if (this != &other)
            QVBuffer(other).swap(*this);
        return *this;
    }

    /// Replaces the elements by those of `other`, which is empty afterwards.
    QVBuffer& operator=(QVBuffer&& other) noexcept
    {
        if (this != &other)
            QVBuffer(std::move(other)).swap(*this);
        return *this;
    }

    /// Adds a copy of an element at the end. The capacity grows 0, 1, 2, 4, 8, …; growing invalidates addresses.
    ///
    /// @param element  may be an element of this buffer.
    void Append(const T& element)
    {
        if constexpr (std::is_nothrow_copy_assignable_v<T>) {
            if (size < capacity) {
                data[size++] = element;
                return;
            }
        }
        T copy(element);
        if (size == capacity)
            Reserve(grownCapacity());
        placeAtEnd(copy);
        ++size;
    }

    /// Adds a default-constructed element at the end and returns it, so that it can be filled in place.
    T& Append()
    {
        if (size == capacity)
            Reserve(grownCapacity());
        return data[size++];
    }

    /// Makes room for a total of `count` elements, unless there is room already. The size does not change.
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

    /// Returns the number of elements.
    [[nodiscard]] std::uint32_t GetSize() const noexcept { return size; }

    /// Returns the address of the element at `index`.
    ///
    /// @note Kept for compatibility: null, and no exception, if `index` is not less than the size.
    [[nodiscard]] T* operator[](std::uint32_t index) noexcept { return index < size ? data + index : nullptr; }
    /// @copydoc operator[](std::uint32_t)
    [[nodiscard]] const T* operator[](std::uint32_t index) const noexcept
    {
        return index < size ? data + index : nullptr;
    }

    /// @name Iteration
    /// @{

    /// For loops over all elements. Valid until the buffer grows, is assigned to or destroyed.
    [[nodiscard]] T* begin() noexcept { return data; }
    [[nodiscard]] T* end() noexcept { return data + size; }
    [[nodiscard]] const T* begin() const noexcept { return data; }
    [[nodiscard]] const T* end() const noexcept { return data + size; }

    /// @}

private:
    void swap(QVBuffer& other) noexcept
    {
        std::swap(data, other.data);
        std::swap(size, other.size);
        std::swap(capacity, other.capacity);
    }

    [[nodiscard]] std::uint32_t grownCapacity() const
    {
        if (capacity > (std::numeric_limits<std::uint32_t>::max)() / 2)
            throw std::length_error("QVBuffer: more than 2^32 - 1 elements");
        return capacity == 0 ? 1 : capacity * 2;
    }

    void placeAtEnd(T& element)
    {
        if constexpr (std::is_nothrow_move_assignable_v<T>) {
            data[size] = std::move(element);
        } else {
            try {
                data[size] = std::move(element);
            } catch (...) {
                // What the failed assignment left there is not default-constructed: it is never handed out.
                capacity = size;
                throw;
            }
        }
    }

    // Volatile, because compilers drop ordinary stores to an object whose life ends.
    template <class Field>
    static void clear(volatile Field& field) noexcept
    {
        field = Field();
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

#include "velmora/api/QVString.h"

#include <atomic>
#include <cstdint>
#include <cstring>
#include <cwchar>
#include <limits>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <utility>

#include <velmora/api/TextAccess.h>
#include <velmora/text/Unicode.h>
#include <velmora/text/Widening.h>

namespace Quorvex::Velmora::Common
{

// A string inside a block. Its characters and their terminator follow it.
struct QVString::Representation {
    std::atomic<char*> narrow{nullptr};
    std::uint32_t length = 0;
    std::uint32_t offsetInBlock = 0;

    wchar_t* characters() noexcept { return reinterpret_cast<wchar_t*>(this + 1); }
};

namespace
{

// Strings are immutable, and those of one block share one reference count: the strings of a record come and go
// together, and one allocation costs a third of three. Room for something else may precede the strings of a block.
struct alignas(std::max_align_t) Block {
    std::atomic<std::uint32_t> references;
    std::uint32_t textCount;
    std::uint32_t firstText;
    // How many of the strings have a narrow form. Mostly none has, and then dropping the block skips them.
    std::atomic<std::uint32_t> narrowForms;
};

constexpr std::size_t TextAlignment = 8;

constexpr std::size_t aligned(std::size_t size) noexcept { return (size + TextAlignment - 1) & ~(TextAlignment - 1); }

template <class Representation>
constexpr std::size_t sizeOfText(std::size_t length) noexcept
{
    return aligned(sizeof(Representation) + (length + 1) * sizeof(wchar_t));
}

template <class Representation>
Block* blockOf(Representation* text) noexcept
{
    return reinterpret_cast<Block*>(reinterpret_cast<unsigned char*>(text) - text->offsetInBlock);
}

// Lengths and offsets have 32 bits.
void checkLength(std::size_t length)
{
    if (length > std::numeric_limits<std::uint32_t>::max() / sizeof(wchar_t))
        throw std::bad_alloc();
}

Block* allocateBlock(std::size_t roomSize, std::size_t textSize)
{
    const std::size_t firstText = sizeof(Block) + aligned(roomSize);
    if (textSize > std::numeric_limits<std::uint32_t>::max() - firstText)
        throw std::bad_alloc();
    return new (::operator new(firstText + textSize)) Block{{0}, 0, static_cast<std::uint32_t>(firstText), {0}};
}

template <class Representation>
Representation* placeText(Block* block, std::size_t offset) noexcept
{
    auto* const text = new (reinterpret_cast<unsigned char*>(block) + offset) Representation;
    text->offsetInBlock = static_cast<std::uint32_t>(offset);
    ++block->textCount;
    return text;
}

template <class Representation>
void releaseBlock(Block* block) noexcept
{
    if (block->references.fetch_sub(1, std::memory_order_acq_rel) != 1)
        return;
    auto* position = reinterpret_cast<unsigned char*>(block) + block->firstText;
    std::uint32_t narrowForms = block->narrowForms.load(std::memory_order_relaxed);
    while (narrowForms > 0) {
        auto* const each = reinterpret_cast<Representation*>(position);
        if (const char* const narrow = each->narrow.load(std::memory_order_acquire)) {
            delete[] narrow;
            --narrowForms;
        }
        position += sizeOfText<Representation>(each->length);
    }
    ::operator delete(block);
}

template <class Representation>
Representation* makeText(std::wstring_view characters)
{
    if (characters.empty())
        return nullptr;
    checkLength(characters.size());
    Block* const block = allocateBlock(0, sizeOfText<Representation>(characters.size()));
    auto* const text = placeText<Representation>(block, block->firstText);
    block->references.store(1, std::memory_order_relaxed);
    text->length = static_cast<std::uint32_t>(characters.size());
    std::memcpy(text->characters(), characters.data(), characters.size() * sizeof(wchar_t));
    text->characters()[characters.size()] = L'\0';
    return text;
}

template <class Representation>
Representation* retain(Representation* text) noexcept
{
    if (text != nullptr)
        blockOf(text)->references.fetch_add(1, std::memory_order_relaxed);
    return text;
}

} // namespace

QVString::QVString(const char* string)
    : representation(string == nullptr ? nullptr : makeText<Representation>(Unicode::fromUtf8(string)))
{
}

QVString::QVString(const wchar_t* string)
    : representation(string == nullptr ? nullptr : makeText<Representation>(std::wstring_view(string)))
{
}

QVString::QVString(const QVString& other) noexcept : representation(retain(other.representation)) {}

void QVString::release(Representation* text) noexcept { releaseBlock<Representation>(blockOf(text)); }

QVString& QVString::operator=(const QVString& other) noexcept
{
    QVString(other).swap(*this);
    return *this;
}

QVString& QVString::operator=(QVString&& other) noexcept
{
    QVString(std::move(other)).swap(*this);
    return *this;
}

QVString& QVString::operator=(const wchar_t* string)
{
    QVString(string).swap(*this);
    return *this;
}

void QVString::swap(QVString& other) noexcept { std::swap(representation, other.representation); }

bool QVString::operator==(const QVString& other) const noexcept
{
    return representation == other.representation || TextAccess::view(*this) == TextAccess::view(other);
}

bool QVString::operator<(const QVString& other) const noexcept
{
    return TextAccess::view(*this) < TextAccess::view(other);
}

const char* QVString::c_str() const
{
    if (representation == nullptr)
        return "";
    if (const char* ready = representation->narrow.load(std::memory_order_acquire))
        return ready;
    const std::string utf8 = Unicode::toUtf8(TextAccess::view(*this));
    std::unique_ptr<char[]> made(new char[utf8.size() + 1]);
    std::memcpy(made.get(), utf8.c_str(), utf8.size() + 1);
    // Another thread may have been first. Its result stays, because pointers to it may have been given out.
    char* first = nullptr;
    if (!representation->narrow.compare_exchange_strong(first, made.get(), std::memory_order_acq_rel))
        return first;
    blockOf(representation)->narrowForms.fetch_add(1, std::memory_order_relaxed);
    return made.release();
}

const wchar_t* QVString::w_str() const noexcept
{
    return representation == nullptr ? L"" : representation->characters();
}

std::wstring_view TextAccess::view(const QVString& text) noexcept
{
    if (text.representation == nullptr)
        return {};
    return {text.representation->characters(), text.representation->length};
}

QVString TextAccess::make(std::wstring_view text)
{
    QVString result;
    result.representation = makeText<QVString::Representation>(text.substr(0, text.find(L'\0')));
    return result;
}

void* TextAccess::assign(
    const TextAssignment* assignments, std::size_t count, std::size_t roomSize, std::uint32_t roomOwners)
{
    using Representation = QVString::Representation;
    const auto isEmpty = [](std::u16string_view source) { return source.empty() || source.front() == u'\0'; };
    std::size_t textSize = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const std::u16string_view source = assignments[i].source;
        checkLength(source.size());
        textSize += isEmpty(source) ? 0 : sizeOfText<Representation>(source.size());
    }
    Block* const block = textSize + roomSize != 0 ? allocateBlock(roomSize, textSize) : nullptr;
    std::size_t offset = block != nullptr ? block->firstText : 0;
    for (std::size_t i = 0; i < count; ++i) {
        QVString made;
        if (!isEmpty(assignments[i].source)) {
            auto* const text = placeText<Representation>(block, offset);
            text->length = static_cast<std::uint32_t>(widenToFirstZero(assignments[i].source, text->characters()));
            text->characters()[text->length] = L'\0';
            offset += sizeOfText<Representation>(text->length);
            made.representation = text;
        }
        made.swap(*assignments[i].target);
    }
    if (block == nullptr)
        return nullptr;
    // Last, because no one else knows the block yet: one store instead of an atomic increment for each owner.
    block->references.store(block->textCount + roomOwners, std::memory_order_relaxed);
    return roomSize == 0 ? nullptr : block + 1;
}

void TextAccess::releaseRoom(void* room) noexcept
{
    releaseBlock<QVString::Representation>(static_cast<Block*>(room) - 1);
}

} // namespace Quorvex::Velmora::Common

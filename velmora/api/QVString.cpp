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
#include <velmora/api/TextPool.h>
#include <velmora/text/Unicode.h>
#include <velmora/text/Widening.h>

namespace Quorvex::Velmora::Common
{

// A string inside a block. Strings of one block may share characters: a path ends with the name.
struct QVString::Representation {
    std::atomic<char*> narrow{nullptr};
    wchar_t* characters = nullptr;
    std::uint32_t length = 0;
    std::uint32_t offsetInBlock = 0;
};

namespace
{

// Strings are immutable, and those of one block share one reference count: the strings of a record come and go
// together, and one allocation costs a third of three. Room for something else may precede the strings of a block.
struct alignas(std::max_align_t) Block {
    std::atomic<std::uint32_t> references;
    std::uint32_t slabOffset;
    std::uint32_t firstText;
    // How many of the strings have a narrow form. Mostly none has, and then dropping the block skips them.
    std::atomic<std::uint32_t> narrowForms;
};

constexpr std::size_t TextAlignment = 8;

constexpr std::size_t aligned(std::size_t size) noexcept { return (size + TextAlignment - 1) & ~(TextAlignment - 1); }

constexpr std::size_t sizeOfCharacters(std::size_t length) noexcept { return (length + 1) * sizeof(wchar_t); }

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

constexpr std::size_t firstTextAfter(std::size_t roomSize) noexcept { return sizeof(Block) + aligned(roomSize); }

std::size_t blockSize(std::size_t roomSize, std::size_t textSize)
{
    const std::size_t firstText = firstTextAfter(roomSize);
    if (textSize > std::numeric_limits<std::uint32_t>::max() - firstText)
        throw std::bad_alloc();
    return firstText + textSize;
}

Block* placeBlock(const TextPool::Block& place, std::size_t roomSize) noexcept
{
    return new (place.memory) Block{{0}, place.slabOffset, static_cast<std::uint32_t>(firstTextAfter(roomSize)), {0}};
}

template <class Representation>
Representation* placeText(Block* block, std::size_t index) noexcept
{
    const std::size_t offset = block->firstText + index * sizeof(Representation);
    auto* const text = new (reinterpret_cast<unsigned char*>(block) + offset) Representation;
    text->offsetInBlock = static_cast<std::uint32_t>(offset);
    return text;
}

template <class Representation>
Representation* firstTextOf(Block* block) noexcept
{
    return reinterpret_cast<Representation*>(reinterpret_cast<unsigned char*>(block) + block->firstText);
}

template <class Representation>
void dropNarrowForms(Block* block) noexcept
{
    auto* text = firstTextOf<Representation>(block);
    for (std::uint32_t left = block->narrowForms.load(std::memory_order_relaxed); left > 0; ++text) {
        if (const char* const narrow = text->narrow.load(std::memory_order_acquire)) {
            delete[] narrow;
            --left;
        }
    }
}

template <class Representation>
void releaseBlock(Block* block) noexcept
{
    // The only owner needs no atomic subtraction: there is no one else who could copy.
    if (block->references.load(std::memory_order_acquire) != 1 &&
        block->references.fetch_sub(1, std::memory_order_acq_rel) != 1)
        return;
    dropNarrowForms<Representation>(block);
    TextPool::release(block, block->slabOffset);
}

template <class Representation>
Representation* makeText(std::wstring_view characters)
{
    if (characters.empty())
        return nullptr;
    checkLength(characters.size());
    const std::size_t size = blockSize(0, sizeof(Representation) + sizeOfCharacters(characters.size()));
    Block* const block = placeBlock({::operator new(size), 0}, 0);
    auto* const text = placeText<Representation>(block, 0);
    block->references.store(1, std::memory_order_relaxed);
    text->characters = reinterpret_cast<wchar_t*>(text + 1);
    text->length = static_cast<std::uint32_t>(characters.size());
    std::memcpy(text->characters, characters.data(), characters.size() * sizeof(wchar_t));
    text->characters[characters.size()] = L'\0';
    return text;
}

template <class Representation>
Representation* retain(Representation* text) noexcept
{
    if (text != nullptr)
        blockOf(text)->references.fetch_add(1, std::memory_order_relaxed);
    return text;
}

// The strings to assign, and which of them share the characters of the next one, because that ends with them.
class Assignments
{
public:
    Assignments(const TextAssignment* first, std::size_t count, bool mayShare) : first(first), count(count)
    {
        for (std::size_t i = 0; i < count; ++i) {
            if (isEmpty(i))
                continue;
            checkLength(source(i).size());
            ++texts;
            if (mayShare && i < MostShared && isEndOfNext(i))
                shared |= std::uint64_t{1} << i;
            else
                bytes += sizeOfCharacters(source(i).size());
        }
    }

    [[nodiscard]] std::u16string_view source(std::size_t i) const noexcept { return first[i].source; }
    [[nodiscard]] bool isEmpty(std::size_t i) const noexcept { return source(i).empty() || source(i).front() == u'\0'; }
    [[nodiscard]] bool isShared(std::size_t i) const noexcept { return i < MostShared && ((shared >> i) & 1) != 0; }

    const TextAssignment* const first;
    const std::size_t count;
    std::size_t texts = 0;
    // What the characters take that are not shared.
    std::size_t bytes = 0;

private:
    static constexpr std::size_t MostShared = 64;

    [[nodiscard]] bool isEndOfNext(std::size_t i) const noexcept
    {
        if (i + 1 == count || isEmpty(i + 1) || source(i + 1).size() < source(i).size())
            return false;
        const std::u16string_view end = source(i + 1).substr(source(i + 1).size() - source(i).size());
        return std::memcmp(end.data(), source(i).data(), end.size() * sizeof(char16_t)) == 0;
    }

    std::uint64_t shared = 0;
};

// Makes the strings, the last one first. Returns false if one cannot share characters: where a unit of the longer one
// is not a character of its own, or where that ends at a zero character.
template <class Representation>
bool fillBlock(Block* block, const Assignments& strings) noexcept
{
    for (std::size_t i = 0; i < strings.texts; ++i)
        placeText<Representation>(block, i);
    Representation* text = firstTextOf<Representation>(block) + strings.texts;
    auto* unused = reinterpret_cast<wchar_t*>(text);
    bool isUnitForUnit = false;
    for (std::size_t i = strings.count; i-- > 0;) {
        if (strings.isEmpty(i))
            continue;
        --text;
        const std::u16string_view source = strings.source(i);
        if (strings.isShared(i)) {
            if (!isUnitForUnit)
                return false;
            text->length = static_cast<std::uint32_t>(source.size());
            text->characters = text[1].characters + (text[1].length - text->length);
        } else {
            text->length = static_cast<std::uint32_t>(widenToFirstZero(source, unused));
            text->characters = unused;
            unused[text->length] = L'\0';
            unused += text->length + 1;
            isUnitForUnit = text->length == source.size();
        }
    }
    return true;
}

// Returns null if the strings cannot share characters as they should.
template <class Representation>
Block* makeBlock(const Assignments& strings, std::size_t roomSize, TextPool& pool)
{
    const std::size_t size = blockSize(roomSize, strings.texts * sizeof(Representation) + strings.bytes);
    const TextPool::Block place = pool.allocate(size);
    Block* const block = placeBlock(place, roomSize);
    if (fillBlock<Representation>(block, strings))
        return block;
    pool.giveBack(place, size);
    return nullptr;
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

const wchar_t* QVString::w_str() const noexcept { return representation == nullptr ? L"" : representation->characters; }

std::wstring_view TextAccess::view(const QVString& text) noexcept
{
    if (text.representation == nullptr)
        return {};
    return {text.representation->characters, text.representation->length};
}

QVString TextAccess::make(std::wstring_view text)
{
    QVString result;
    result.representation = makeText<QVString::Representation>(text.substr(0, text.find(L'\0')));
    return result;
}

void TextAccess::assign(const TextAssignment* assignments, std::size_t count)
{
    TextPool own;
    assign(own, assignments, count, 0, 0);
}

void* TextAccess::assign(TextPool& pool, const TextAssignment* assignments, std::size_t count, std::size_t roomSize,
    std::uint32_t roomOwners)
{
    using Representation = QVString::Representation;
    const Assignments strings(assignments, count, true);
    Block* block = nullptr;
    if (strings.texts + roomSize != 0) {
        block = makeBlock<Representation>(strings, roomSize, pool);
        if (block == nullptr)
            block = makeBlock<Representation>(Assignments(assignments, count, false), roomSize, pool);
        // One store instead of an atomic increment for each owner: no one else knows the block yet.
        block->references.store(static_cast<std::uint32_t>(strings.texts) + roomOwners, std::memory_order_relaxed);
    }
    Representation* text = block != nullptr ? firstTextOf<Representation>(block) : nullptr;
    for (std::size_t i = 0; i < count; ++i) {
        QVString made;
        if (!strings.isEmpty(i))
            made.representation = text++;
        made.swap(*assignments[i].target);
    }
    return roomSize == 0 ? nullptr : block + 1;
}

void TextAccess::releaseRoom(void* room) noexcept
{
    releaseBlock<QVString::Representation>(static_cast<Block*>(room) - 1);
}

} // namespace Quorvex::Velmora::Common

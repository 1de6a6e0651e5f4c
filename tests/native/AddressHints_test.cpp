#include "velmora/native/AddressHints.h"

#include <cstddef>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

using Quorvex::Velmora::TessaportAPI::AddressHints;

namespace
{

using Positions = std::vector<std::size_t>;

Positions foundIn(const std::wstring& text, std::size_t step)
{
    Positions found;
    AddressHints hints(text);
    for (std::size_t hint = hints.next(0); hint != AddressHints::NotFound; hint = hints.next(hint + step))
        found.push_back(hint);
    return found;
}

Positions expectedIn(const std::wstring& text, std::size_t step)
{
    Positions expected;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text.compare(i, 3, L"www") == 0 || text.compare(i, 3, L"://") == 0) {
            expected.push_back(i);
            i += step - 1;
        }
    }
    return expected;
}

} // namespace

TEST(AddressHints, AreFoundAtEachPositionOfTextsOfEachLength)
{
    for (std::size_t length = 0; length < 200; ++length) {
        for (std::size_t position = 0; position + 3 <= length; ++position) {
            std::wstring text(length, L'x');
            text.replace(position, 3, position % 2 == 0 ? L"www" : L"://");
            ASSERT_EQ(foundIn(text, 1), Positions{position}) << length;
        }
    }
}

// Some characters end with the byte of one that belongs to a hint.
TEST(AddressHints, EqualAPlainSearchOnRandomTexts)
{
    const std::wstring alphabet = {L'w', L'w', L'w', L':', L'/', L'/', L'x', wchar_t(0x0177), wchar_t(0x7F77),
        wchar_t(0xFF77), wchar_t(0x803A), wchar_t(0x012F), wchar_t(0xF7), wchar_t(0)};
    std::mt19937 random(7);
    for (int i = 0; i < 5'000; ++i) {
        std::wstring text(random() % 300, L'w');
        for (wchar_t& c : text)
            c = alphabet[random() % alphabet.size()];
        const std::size_t step = 1 + random() % 100;
        ASSERT_EQ(foundIn(text, step), expectedIn(text, step)) << "round " << i;
    }
}

TEST(AddressHints, OverlapInALongRun)
{
    EXPECT_EQ(foundIn(std::wstring(500, L'w'), 1).size(), 498U);
    EXPECT_EQ(foundIn(std::wstring(500, L'w'), 1), expectedIn(std::wstring(500, L'w'), 1));
}

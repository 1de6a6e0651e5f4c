// A global locale that changes how numbers are written: decimal commas, grouped digits, other words for true and false.
#pragma once

#include <locale>
#include <string>

namespace Quorvex::Velmora::TestSupport
{

/// Is the global locale during its lifetime.
class CommaLocale
{
public:
    CommaLocale()
        : previous(std::locale::global(
              std::locale(std::locale(std::locale::classic(), new Punctuation<char>), new Punctuation<wchar_t>)))
    {
    }
    ~CommaLocale() { std::locale::global(previous); }
    CommaLocale(const CommaLocale&) = delete;
    CommaLocale& operator=(const CommaLocale&) = delete;

private:
    template <class Char>
    struct Punctuation : std::numpunct<Char> {
        Char do_decimal_point() const override { return Char(','); }
        Char do_thousands_sep() const override { return Char('.'); }
        std::string do_grouping() const override { return "\1"; }
        std::basic_string<Char> do_truename() const override { return {Char('j'), Char('a')}; }
        std::basic_string<Char> do_falsename() const override { return {Char('n'), Char('o')}; }
    };

    std::locale previous;
};

} // namespace Quorvex::Velmora::TestSupport

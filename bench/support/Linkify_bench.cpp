#include <string>

#include <benchmark/benchmark.h>

#include <velmora/native/MessageFormatting.h>
#include "bench/support/Ratios.h"

namespace
{

using namespace Quorvex::Velmora;

constexpr std::size_t Length = 10'000'000;

std::wstring repeated(const std::wstring& part)
{
    std::wstring text;
    text.reserve(Length + part.size());
    while (text.size() < Length)
        text += part;
    return text;
}

/// A message from toHtml with an address in every second line.
const std::wstring& message()
{
    static const std::wstring text = repeated(
        TessaportAPI::toHtml(L"The file could not be added, because another one of that name is there.\n"
                             L"See https://help.example.test/files/names?topic=add, or ask www.example.test.\n"));
    return text;
}

/// The worst input for linkify: every part begins like something that it looks for.
const std::wstring& hardMessage()
{
    static const std::wstring text = repeated(L"<br  \"'www&nbsp;http://.,:<b&nbs ");
    return text;
}

void linkifyText(benchmark::State& state, const std::wstring& text)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(TessaportAPI::linkify(text));
}

void ReplaceAbsentCharacter(benchmark::State& state)
{
    std::wstring text = message();
    for (auto _ : state)
        benchmark::DoNotOptimize(TessaportAPI::replaceAll(text, L"\x4E2D", L"x"));
}

void LinkifyMessage(benchmark::State& state) { linkifyText(state, message()); }
void LinkifyHardMessage(benchmark::State& state) { linkifyText(state, hardMessage()); }

BENCHMARK(ReplaceAbsentCharacter)->Unit(benchmark::kMillisecond);
BENCHMARK(LinkifyMessage)->Unit(benchmark::kMillisecond);
BENCHMARK(LinkifyHardMessage)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    using Bench::Goal;
    return Bench::runWithRatios(argc, argv,
        {{"linkify of 10 MB against replaceAll of an absent character", "LinkifyMessage", "ReplaceAbsentCharacter",
             Goal::AtMost, 8},
            {"linkify of 10 MB of beginnings against replaceAll of an absent character", "LinkifyHardMessage",
                "ReplaceAbsentCharacter", Goal::AtMost, 12}});
}

#include "tools/tessaport/commandline/Suggestion.h"

#include <algorithm>
#include <cstddef>

namespace Quorvex::Velmora::Tool
{
namespace
{

// Counts characters that were inserted, left out or replaced, and neighbours that were exchanged.
std::size_t distance(const std::string& a, const std::string& b)
{
    std::vector<std::vector<std::size_t>> cost(a.size() + 1, std::vector<std::size_t>(b.size() + 1));
    for (std::size_t i = 0; i <= a.size(); ++i) {
        for (std::size_t j = 0; j <= b.size(); ++j) {
            if (i == 0 || j == 0) {
                cost[i][j] = i + j;
                continue;
            }
            const std::size_t replaced = cost[i - 1][j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
            cost[i][j] = std::min({cost[i - 1][j] + 1, cost[i][j - 1] + 1, replaced});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                cost[i][j] = std::min(cost[i][j], cost[i - 2][j - 2] + 1);
        }
    }
    return cost[a.size()][b.size()];
}

} // namespace

std::optional<std::string> closest(const std::string& word, const std::vector<std::string>& candidates)
{
    constexpr std::size_t longestWord = 64;
    if (word.empty() || word.size() > longestWord)
        return std::nullopt;
    std::optional<std::string> best;
    std::size_t least = std::max<std::size_t>(1, word.size() / 3) + 1;
    for (const std::string& candidate : candidates) {
        const std::size_t changes = distance(word, candidate);
        if (changes < least) {
            least = changes;
            best = candidate;
        }
    }
    return best;
}

} // namespace Quorvex::Velmora::Tool

#include "NearestWord.h"

#include <algorithm>
#include <numeric>

namespace mxauthor {

namespace {

// How many letters have to be put in, left out or replaced to make `b` of `a`.
std::size_t distance(const std::string& a, const std::string& b)
{
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t replaced = diagonal + (a[i - 1] == b[j - 1] ? 0 : 1);
            diagonal = row[j];
            row[j] = std::min({row[j] + 1, row[j - 1] + 1, replaced});
        }
    }
    return row.back();
}

} // namespace

std::string nearestWord(const std::string& word, const std::vector<std::string>& known)
{
    constexpr std::size_t longestWord = 100; // longer ones are no slips of the pen
    std::string nearest;
    std::size_t least = word.size() > longestWord ? 0 : std::max<std::size_t>(2, word.size() / 2);
    for (const std::string& candidate : known) {
        const std::size_t changes = least == 0 ? 1 : distance(word, candidate);
        if (changes <= least && (nearest.empty() || changes < least)) {
            nearest = candidate;
            least = changes;
        }
    }
    return nearest;
}

std::string acceptedWords(const std::string& word, const std::vector<std::string>& known)
{
    if (known.empty()) {
        return ", there is none";
    }
    const std::string nearest = nearestWord(word, known);
    std::string text = nearest.empty() ? "" : ", did you mean \"" + nearest + "\"?";
    text += " (accepted: ";
    for (std::size_t i = 0; i < known.size(); ++i) {
        text += (i == 0 ? "" : ", ") + known[i];
    }
    return text + ")";
}

} // namespace mxauthor

#include "text/NearestWords.h"

#include <Poco/String.h>

#include <algorithm>
#include <numeric>

namespace text {

namespace {

constexpr std::size_t longestWord = 200; // the comparison is quadratic
constexpr std::size_t mostWords = 3;

// Replaces characters missing on most keyboards by their usual substitutes.
std::string typed(std::string text)
{
    Poco::replaceInPlace(text, "+/-", "+-");
    Poco::replaceInPlace(text, "±", "+-");
    Poco::replaceInPlace(text, "\u00B5", "u"); // micro sign
    Poco::replaceInPlace(text, "\u03BC", "u"); // Greek letter
    return text;
}

std::string lowered(std::string text)
{
    text.resize(std::min(text.size(), longestWord));
    return Poco::toLower(typed(std::move(text)));
}

// The number of characters to insert, remove or replace to make `b` of `a`.
std::size_t editDistance(const std::string& a, const std::string& b)
{
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t j = 0; j < b.size(); ++j) {
            const std::size_t replaced = diagonal + (a[i] == b[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 1});
        }
    }
    return row.back();
}

// The distance of two words; it is small if `candidate` begins with `word`.
std::size_t distance(const std::string& word, const std::string& candidate)
{
    if (word == candidate) {
        return 0;
    }
    if (!word.empty() && candidate.compare(0, word.size(), word) == 0) {
        return 1;
    }
    return editDistance(word, candidate);
}

std::string joined(const std::vector<std::string>& words, const std::string& between)
{
    return Poco::cat(between, words.begin(), words.end());
}

} // namespace

std::vector<std::string> nearestWords(const std::string& word,
                                      const std::vector<std::string>& candidates)
{
    const std::string wanted = lowered(word);
    const std::size_t farthest = std::max<std::size_t>(2, wanted.size() / 3);
    std::vector<std::pair<std::size_t, std::string>> near;
    for (const std::string& candidate : candidates) {
        const std::size_t apart = distance(wanted, lowered(candidate));
        const auto isCandidate = [&](const auto& one) { return one.second == candidate; };
        if (apart <= farthest && std::none_of(near.begin(), near.end(), isCandidate)) {
            near.emplace_back(apart, candidate);
        }
    }
    std::stable_sort(near.begin(), near.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    near.resize(std::min(near.size(), mostWords));
    if (!near.empty() && near.front().first == 0) { // the same word, typed in another way
        near.erase(
            std::find_if(near.begin(), near.end(), [](const auto& one) { return one.first != 0; }),
            near.end());
    }
    std::vector<std::string> words;
    std::transform(near.begin(), near.end(), std::back_inserter(words),
                   [](const auto& one) { return one.second; });
    return words;
}

std::string didYouMean(const std::string& word, const std::vector<std::string>& candidates)
{
    const std::vector<std::string> words = nearestWords(word, candidates);
    return words.empty() ? "" : ", did you mean \"" + joined(words, "\" or \"") + "\"?";
}

std::string acceptedWords(const std::string& word, const std::vector<std::string>& accepted)
{
    if (accepted.empty()) {
        return ", there is none";
    }
    std::vector<std::string> nearest = nearestWords(word, accepted);
    nearest.resize(std::min<std::size_t>(nearest.size(), 1));
    return didYouMean(word, nearest) + " (accepted: " + joined(accepted, ", ") + ")";
}

} // namespace text

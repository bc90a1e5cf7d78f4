#include "Repetitions.h"

namespace mxauthor {

bool Repetitions::add(const Repetition& repetition)
{
    count = repetition.count;
    return numbers.insert(repetition.number).second;
}

std::string Repetitions::text() const
{
    if (count < 2 || numbers.empty()) {
        return "";
    }
    const std::string all = std::to_string(count);
    const std::string first = std::to_string(*numbers.begin());
    if (numbers.size() == count) {
        return count == 2 ? " (in both repetitions)" : " (in all " + all + " repetitions)";
    }
    if (numbers.size() == 1) {
        return " (in repetition " + first + " of " + all + ")";
    }
    return " (in " + std::to_string(numbers.size()) + " of " + all +
           " repetitions, first in repetition " + first + ")";
}

} // namespace mxauthor

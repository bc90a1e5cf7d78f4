#include "simulator/ServedAnswer.h"

#include <algorithm>

namespace mxonline {

std::vector<std::uint8_t> sentBytes(const std::vector<std::uint8_t>& frame,
                                    const ServedAnswer& answer)
{
    if (!answer.garbage.empty()) {
        return answer.garbage;
    }
    const std::size_t whole = frame.size() - std::min(answer.missing, frame.size());
    const std::size_t count = answer.sendsHalf ? frame.size() / 2 : whole;
    return {frame.begin(), frame.begin() + static_cast<std::ptrdiff_t>(count)};
}

} // namespace mxonline

#include "simulator/ServedAnswer.h"

#include <algorithm>

namespace mxonline {

std::vector<std::uint8_t> sentBytes(const std::vector<std::uint8_t>& frame,
                                    const ServedAnswer& answer)
{
    if (!answer.garbage.empty() && answer.copies > 0) {
        return answer.garbage;
    }
    const std::size_t whole = frame.size() - std::min(answer.missing, frame.size());
    const std::size_t count = answer.sendsHalf ? frame.size() / 2 : whole;
    std::vector<std::uint8_t> bytes;
    for (unsigned i = 0; i < answer.copies; ++i) {
        bytes.insert(bytes.end(), frame.begin(),
                     frame.begin() + static_cast<std::ptrdiff_t>(count));
    }
    return bytes;
}

} // namespace mxonline

#include "export/ByteText.h"

namespace mxstation {

std::string addressesText(const ImageBytes& bytes)
{
    if (bytes.size == 0) {
        return "";
    }
    const std::string first = std::to_string(bytes.offset);
    return bytes.size == 1 ? first : first + "-" + std::to_string(bytes.end() - 1);
}

ImageBytes touchedBytes(const Gap& gap)
{
    const std::uint64_t first = gap.firstBit / 8;
    return {first, (gap.firstBit + gap.bits + 7) / 8 - first};
}

} // namespace mxstation

#include "OptionLists.h"

namespace mxfileext {

std::vector<mxformat::OptionRecord> OptionLists::options(std::uint8_t id) const
{
    std::vector<mxformat::OptionRecord> found;
    if (id == 0) {
        return found;
    }
    for (std::size_t pos = 0; bytes.size() - pos >= mxformat::optionListHeaderSize;) {
        const auto header = mxformat::readRecord<mxformat::OptionListHeader>(bytes.data() + pos);
        const std::size_t end = pos + mxformat::optionListSize(header.count);
        if (end > bytes.size()) {
            break;
        }
        if (header.id == id) {
            for (pos += mxformat::optionListHeaderSize; pos < end; pos += mxformat::optionSize) {
                found.push_back(mxformat::readRecord<mxformat::OptionRecord>(bytes.data() + pos));
            }
        }
        pos = end;
    }
    return found;
}

} // namespace mxfileext

#include "devices/parser/mx/ByteReaders.h"
#include "devices/parser/mx/Parser_kv38.h"

#include "LogLine.h"

#include <mxformat/Groups.h>
#include <mxformat/ParameterBlock.h>

#include <stdexcept>

namespace devices::parser::mx {

void Parser_kv38::setupDefaultParams()
{
    traceEntry(logger, "setupDefaultParams");
    std::vector<char>& block = *dev->privateProps.defaultParameterBlock;
    block.clear();

    std::uint32_t size = 0;
    const std::uint8_t* payload = getGroup(mxformat::group::parameterBlock, &size);
    if (payload == nullptr) {
        return;
    }
    if (size < mxformat::parameterBlockFixedHeader) {
        throw std::runtime_error("Invalid size property in group 0x0010 (1)");
    }
    if (readU8(payload) != mxformat::parameterBlockVersion) {
        throw std::runtime_error("Unsupported dataset version in group 0x0010");
    }
    const std::uint32_t header = mxformat::parameterBlockHeaderSize(readU8(payload + 1));
    if (size < header) {
        throw std::runtime_error("Invalid size property in group 0x0010 (2)");
    }
    const std::uint32_t length = size - header;
    if (length > PARAMETER_BUFFER_SIZE) {
        throw std::runtime_error(
            "Default parameter block in mx data exceeds PARAMETER_BUFFER_SIZE");
    }
    // The count is held in a byte: a block of 256 bytes is stored as an empty one.
    const auto count = static_cast<std::uint8_t>(length);
    block.insert(block.end(), payload + header, payload + header + count);
}

} // namespace devices::parser::mx

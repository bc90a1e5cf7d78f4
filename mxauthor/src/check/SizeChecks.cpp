#include "check/Checks.h"
#include <text/Counted.h>

#include <mxformat/DataSizes.h>
#include <mxformat/ParameterBlock.h>

#include <algorithm>

namespace mxauthor {

namespace {

const CheckRule sizeRows[] = {
    {"block-version", error, "The version of group 0010 has to be 0.",
     "group 0010: version 1, expected 0"},
    {"block-limit", error,
     "A parameter block has 255 bytes at most. One of 256 bytes is stored empty, a larger one is "
     "rejected.",
     "group 0010: 256 bytes of parameters, 255 at most: readers count them in a byte"},
    {"block-size", error,
     "The parameter size that group 0011 states has to be that of the parameter block.",
     "group 0011, Parameter: 5 bytes, the parameter block has 6"},
    {"data-size-code", error,
     "After a key of group 0011 only D, W and B are sizes; \"s\", blank, comma and \"=\" separate.",
     "group 0011, InData: 'Q' is not a size, expected D, W or B"},
    {"input-size", error,
     "The input channels reach beyond the input data that group 0011 states: other modules' data "
     "is there.",
     "group 0011, InData: 2 bytes, the channels take 3"},
    {"output-size", error,
     "The output channels reach beyond the output data that group 0011 states: they write to other "
     "modules.",
     "group 0011, OutData: 0 bytes, the channels take 1"},
    {"data-without-channel", note, "Group 0011 states more data than the channels take.",
     "group 0011, OutData: 2 bytes, the channels take 1"},
};
const auto& [blockVersion, blockLimit, blockSize, dataSizeCode, inputSize, outputSize,
             dataWithoutChannel] = sizeRows;

void checkLine(const Field<std::string>& line, Findings& findings)
{
    for (const std::string key : mxformat::dataSizeKeys) {
        if (line.value.compare(0, key.size(), key) != 0) {
            continue;
        }
        const std::string codes = line.value.substr(key.size());
        const auto bad = std::find_if(codes.begin(), codes.end(),
                                      [](char code) { return !mxformat::sizeOfDataCode(code); });
        if (bad != codes.end()) {
            findings.add(dataSizeCode, line.place, key,
                         std::string("'") + *bad + "' is not a size, expected D, W or B");
        }
        return;
    }
}

std::uint32_t bytesOfChannels(const ModuleView& module, bool input)
{
    std::uint64_t end = 0;
    for (const ModuleView::Channel& channel : module.channels()) {
        if (channel.place.input == input && channel.place.bits != 0) {
            end = std::max(end, channel.place.firstBit + channel.place.bits);
        }
    }
    return static_cast<std::uint32_t>((end + 7) / 8);
}

void checkDirection(const ModuleView& module, bool input, Findings& findings)
{
    const char* const key = input ? mxformat::inDataKey : mxformat::outDataKey;
    const std::uint32_t stated = module.dataSize(key);
    const std::uint32_t size = mxformat::correctedDataSize(module.moduleId().value_or(0), stated);
    const std::uint32_t used = bytesOfChannels(module, input);
    const Place& place = module.group(mxformat::group::dataSizes)->place;
    if (used > size) {
        findings.add(input ? inputSize : outputSize, place, key,
                     text::counted(size, "byte") + ", the channels take " + std::to_string(used));
    } else if (used < std::min(size, stated)) {
        findings.add(dataWithoutChannel, place, key,
                     text::counted(stated, "byte") + ", the channels take " + std::to_string(used));
    }
}

void checkParameterBlock(const ModuleView& module, Findings& findings)
{
    const auto* const block = module.content<ParameterBlock>(mxformat::group::parameterBlock);
    if (block == nullptr) {
        return;
    }
    if (block->version.value != mxformat::parameterBlockVersion) {
        findings.add(blockVersion, block->version.place, "",
                     "version " + std::to_string(block->version.value) + ", expected 0");
    }
    if (block->block.value.size() > mxformat::largestParameterBlock) {
        findings.add(blockLimit, block->block.place, "",
                     text::counted(block->block.value.size(), "byte") +
                         " of parameters, 255 at most: readers count them in a byte");
    }
}

void checkDataSizes(const ModuleView& module, Findings& findings)
{
    const auto* const sizes = module.content<DataSizes>(mxformat::group::dataSizes);
    if (sizes == nullptr) {
        return;
    }
    for (const Field<std::string>& line : sizes->lines) {
        checkLine(line, findings);
    }
    const Group* const blockGroup = module.group(mxformat::group::parameterBlock);
    const bool blockIsKnown =
        blockGroup == nullptr || std::holds_alternative<ParameterBlock>(blockGroup->content);
    if (blockIsKnown && module.dataSize(mxformat::parameterKey) != module.block().size()) {
        findings.add(blockSize, module.group(mxformat::group::dataSizes)->place,
                     mxformat::parameterKey,
                     text::counted(module.dataSize(mxformat::parameterKey), "byte") +
                         ", the parameter block has " + std::to_string(module.block().size()));
    }
    checkDirection(module, true, findings);
    checkDirection(module, false, findings);
}

void checkSizes(const ModuleView& module, Findings& findings)
{
    checkParameterBlock(module, findings);
    checkDataSizes(module, findings);
}

} // namespace

const Check sizeCheck(sizeRows, checkSizes);

} // namespace mxauthor

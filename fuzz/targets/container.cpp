// The container reader: framing, groups, entries, datasets, identity, the listing of groups.
#include "FuzzInput.h"
#include "FuzzTarget.h"

#include <devices/parser/mx/HexText.h>
#include <devices/parser/mx/Parser.h>

#include <exception>
#include <string>

namespace {

using devices::parser::mx::Parser;

template <typename Action>
void allowFailure(const Action& action)
{
    try {
        action();
    } catch (const std::exception&) {
        // a valid result
    }
}

// Reads every byte of the payload, so that a wrong size is detected.
void readGroup(Parser& parser, std::uint16_t id, const std::string& key, std::uint8_t dataset)
{
    std::uint32_t size = 0;
    if (const std::uint8_t* payload = parser.getGroup(id, &size)) {
        devices::parser::mx::bufferAsHex(payload, size);
    }
    allowFailure([&] { parser.getGroupEntry(id, key); });
    allowFailure([&] { parser.getGroupEntry(id, "BrandLabelName"); });
    allowFailure([&] {
        std::uint32_t length = 0;
        if (const std::uint8_t* data = parser.getTavoDatasetFromGroup(id, dataset, &length)) {
            // The format requires only that the first bytes are inside the group.
            const volatile std::uint8_t first = *data;
            static_cast<void>(first);
        }
    });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const bool silent = (fuzz::silence(), true);
    static_cast<void>(silent);
    fuzz::FuzzInput input(data, size);
    const std::uint8_t dataset = input.words.empty() ? 0xFB : input.words.takeByte();
    const std::string key = input.words.takeLine();
    Parser parser;
    allowFailure(
        [&] { parser.parse(input.file.data(), static_cast<std::uint32_t>(input.file.size())); });
    parser.parseContent();
    for (const auto& group : parser.groups()) {
        readGroup(parser, group.id, key, dataset);
    }
    allowFailure([&] {
        std::uint32_t moduleId = 0;
        std::uint8_t moduleType = 0;
        parser.getModuleIdAndType(&moduleId, &moduleType);
    });
    devices::parser::mx::toFixedWidth(key, dataset);
    devices::parser::mx::bufferAsHex(input.file);
    return 0;
}

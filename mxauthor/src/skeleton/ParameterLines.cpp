#include "ParameterLines.h"

namespace mxauthor {

namespace {

constexpr unsigned largestBlock = 255;   // bytes
constexpr unsigned mostParameters = 255; // their numbers have 8 bits

// The block bytes and references that the parameters of a skeleton use so far.
struct Usage
{
    unsigned channel = 0; // number of the next one
    unsigned bytes = 1;   // the parameter of the module
    unsigned parameters = 1;
    bool ranges = false;
    bool conversion = false;

    bool takes(unsigned moreBytes, unsigned moreParameters)
    {
        const bool fits =
            bytes + moreBytes <= largestBlock && parameters + moreParameters <= mostParameters;
        bytes += fits ? moreBytes : 0;
        parameters += fits ? moreParameters : 0;
        return fits;
    }
};

std::string digitalLine(const ChannelGroup& group, const std::string& channel)
{
    return "  - {" + repeatKey(group) +
           "name: " + (group.isInput ? "Invert" : "Value on bus fault") + ", channel: " + channel +
           ", type: Byte, bits: 1, default: 0, range: [0, 1]}\n";
}

std::string analogLines(const ChannelGroup& group, const std::string& channel)
{
    const std::string start = group.count == 1 ? "  - " : "      - ";
    return (group.count == 1 ? std::string()
                             : "  - repeat: " + std::to_string(group.count) + "\n    each:\n") +
           start + "{name: Signal range, channel: " + channel +
           ", type: UInt8, default: ±10 V, options: ranges}\n" + start +
           "{name: Limit, channel: " + channel +
           ", type: SInt16, default: 10000, range: [-10000, 10000], conversion: volts}\n";
}

std::string otherLine(const ChannelGroup& group, const std::string& channel)
{
    return "  - {" + repeatKey(group) + "name: Filter, channel: " + channel +
           ", type: UInt8, default: 0, range: [0, 10]}\n";
}

bool isAnalog(const ChannelGroup& group)
{
    return group.kind == "SInt16";
}

// Bit fields have bytes of their own: the next kind of parameter starts a new byte.
unsigned bytesOf(const ChannelGroup& group)
{
    if (group.isDigital()) {
        return group.count / 8 + 1;
    }
    return group.count * (isAnalog(group) ? 3 : 1);
}

std::string linesOf(const ChannelGroup& group, Usage& usage)
{
    const std::string channel = numberFrom(group, usage.channel);
    usage.channel += group.count;
    if (!usage.takes(bytesOf(group), group.count * (isAnalog(group) ? 2 : 1))) {
        return "  # None for " + std::to_string(group.count) + " " + group.prefix +
               ": a module has 255 parameters in 255 bytes at most.\n";
    }
    if (group.isDigital()) {
        return digitalLine(group, channel);
    }
    if (!isAnalog(group)) {
        return otherLine(group, channel);
    }
    usage.ranges = true;
    usage.conversion = true;
    return analogLines(group, channel);
}

} // namespace

std::string parameterSections(const std::vector<ChannelGroup>& groups)
{
    Usage usage;
    std::string text =
        "# What a user sets, in the order of the bytes of the parameter block. Without channel a\n"
        "# parameter belongs to the module. default and range are raw values such as 9500, or "
        "physical\n# ones with the unit of the conversion such as 9.5 V; default may be the text "
        "of "
        "an option.\n"
        "parameters:\n"
        "  - {name: Diagnosis, type: UInt8, default: \"on\", options: switch}\n";
    for (const ChannelGroup& group : groups) {
        text += linesOf(group, usage);
    }
    text += "\n# Texts by their values.\noptionLists:\n"
            "  switch: {options: {0: \"off\", 1: \"on\"}}\n";
    text += usage.ranges ? "  ranges: {options: {0: ±10 V, 1: 0-10 V}}\n" : "";
    text += usage.conversion ? "\n# physical value = raw value * factor + offset\nconversions:\n"
                               "  volts: {factor: 0.001, unit: V}\n"
                             : "";
    return text;
}

} // namespace mxauthor

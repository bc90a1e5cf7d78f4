#include "mxauthor/Skeleton.h"

#include "ChannelGroups.h"
#include "ParameterLines.h"
#include "RequiredEntries.h"
#include "mxauthor/CheckText.h"
#include "mxauthor/Utf8.h"
#include "text/Integer.h"
#include "text/YamlText.h"

#include <text/ControlCharacters.h>
#include <text/Windows1252.h>

#include <algorithm>
#include <map>

namespace mxauthor {

namespace {

std::uint64_t readNumber(const std::string& member, const std::string& text, std::uint64_t limit,
                         const std::string& accepted)
{
    const auto number = parseInteger(text);
    if (!number || number->negative || number->magnitude > limit) {
        const bool isHexadecimal = !number && parseInteger("0x" + text);
        throw SkeletonError(member, "\"" + text + "\" is not a number from " + accepted +
                                        (isHexadecimal ? ", did you mean 0x" + text + "?" : ""));
    }
    return number->magnitude;
}

std::string readId(const SkeletonRequest& request)
{
    return hexText(readNumber("id", request.id, 0xFFFFFFFF, "0 to 0xffffffff"), 8);
}

// The kind that names a module of several: analog before digital, inputs before outputs.
unsigned usualType(const std::vector<ChannelGroup>& groups)
{
    unsigned type = 0;
    for (const ChannelGroup& group : groups) {
        const unsigned digital = group.isInput ? 1 : 2;
        const unsigned own = group.isDigital() ? digital : digital + 2;
        const bool isFirst = type == 0 || (own >= 3 && (type < 3 || own < type));
        type = isFirst || (own < 3 && type < 3 && own < type) ? own : type;
    }
    return type;
}

std::uint64_t readType(const SkeletonRequest& request, const std::vector<ChannelGroup>& groups)
{
    if (!request.type) {
        return usualType(groups);
    }
    const std::uint64_t number = readNumber("type", *request.type, 0xFF, "0 to 255");
    std::string known;
    for (const ModuleType& type : moduleTypes()) {
        if (type.number == number) {
            return number;
        }
        known += (known.empty() ? "" : ", ") + std::to_string(type.number) + " " + type.meaning;
    }
    throw SkeletonError("type", std::to_string(number) +
                                    " is not a module type in use (accepted: " + known +
                                    "); the text can state another one");
}

bool isPrintableAscii(char c)
{
    return c > ' ' && c <= '~';
}

void checkSchema(const std::string& schema)
{
    if (schema.empty() || !std::all_of(schema.begin(), schema.end(), isPrintableAscii)) {
        throw SkeletonError("schema", "a path or an address expected, without blanks and in ASCII: "
                                      "others as %20");
    }
}

std::string readName(const SkeletonRequest& request)
{
    if (request.name.empty() ||
        std::any_of(request.name.begin(), request.name.end(), text::isControl)) {
        throw SkeletonError("name", "one line of text expected, without control characters");
    }
    if (const auto wrong = findNonUtf8(request.name)) {
        throw SkeletonError("name", wrong->text);
    }
    const auto [bytes, rejected] = text::utf8ToWindows1252(request.name);
    if (rejected) {
        throw SkeletonError("name",
                            "\"" + *rejected +
                                "\" is not a character of Windows-1252, the code page of mx "
                                "files");
    }
    return yamlText(bytes);
}

std::string head(const SkeletonRequest& request)
{
    return "# yaml-language-server: $schema=" + request.schema +
           "\n"
           "#\n"
           "# The description of a module, to be completed. It builds unchanged:\n"
           "#   mxtool build MODULE.yaml -o MODULE.bin\n"
           "#   mxtool show MODULE.bin\n"
           "# An editor that supports the line at the top completes and checks the keys.\n\n";
}

std::string moduleSection(const std::string& id, std::uint64_t type)
{
    std::string text = "# id: the number by which hosts find the description, another one for each "
                       "module.\n# type: ";
    std::string line;
    for (const ModuleType& each : moduleTypes()) {
        line += (line.empty() ? "" : ", ") + std::to_string(each.number) + " " + each.meaning;
        if (line.size() > 70) {
            text += line + ",\n#   ";
            line.clear();
        }
    }
    return text + line + ".\nmodule: {type: " + std::to_string(type) + ", id: " + id + "}\n\n";
}

std::string entryLines(const std::string& name)
{
    const std::map<std::string, std::string> values = {{"BrandLabelName", name},
                                                       {"BrandVersion", "\"1.0\""},
                                                       {"BrandId", "\"1\""},
                                                       {"BrandSerialNumber", "\"0\""},
                                                       {"ProductVersion", "\"00.01.00\""},
                                                       {"BrandOrderCode", "NEW-1"},
                                                       {"BrandHwRevision", "\"01\""},
                                                       {"Component", "new-module 00.01.00"}};
    std::string text = "# Data that hosts show; all seven entries are required.\ncatalogue:\n";
    for (const char* key : catalogueKeys) {
        text += std::string("  ") + key + ": " + values.at(key) + "\n";
    }
    text += "# Name and version of this description.\ncomponent:\n";
    for (const char* key : componentKeys) {
        text += std::string("  ") + key + ": " + values.at(key) + "\n";
    }
    return text + "\n# If there are any:\n"
                  "# extension: {gtin: \"20000000000000\", calibrationDate: \"20260131\"}\n"
                  "# image: PICTURE.svg\n\n";
}

std::string channelLine(const ChannelGroup& group)
{
    return "  - {" + repeatKey(group) + "name: " + group.prefix + " " +
           numberFrom(group, group.first) + (group.isInput ? ", in: " : ", out: ") + group.kind +
           "}\n";
}

std::string channelsSection(const std::vector<ChannelGroup>& groups)
{
    if (groups.empty()) {
        return "# Without process data. With some, a line for each channel:\n"
               "# channels:\n#   - {name: DI 1, in: Bit}\n\n";
    }
    std::string text =
        "# The process data in the order of its addresses, channels count from 0: in or out with\n"
        "# Bit, UInt8, SInt16, ... repeat is the number of copies of a line, <n> counts from 1.\n"
        "channels:\n";
    for (const ChannelGroup& group : groups) {
        text += channelLine(group);
    }
    return text + "\n";
}

std::string textOf(const SkeletonRequest& request, const std::vector<ChannelGroup>& groups)
{
    return head(request) + moduleSection(readId(request), readType(request, groups)) +
           entryLines(readName(request)) + channelsSection(groups) + parameterSections(groups);
}

bool hasFinding(const std::string& text)
{
    return !checkText(text, buildFromText(text, "")).empty();
}

// With wide channels first, each is at a multiple of its size.
void sortByWidth(std::vector<ChannelGroup>& groups)
{
    std::stable_sort(groups.begin(), groups.end(),
                     [](const auto& a, const auto& b) { return a.bits() > b.bits(); });
}

} // namespace

const std::vector<ModuleType>& moduleTypes()
{
    static const std::vector<ModuleType> types = {{0, "supply"},
                                                  {1, "digital inputs"},
                                                  {2, "digital outputs"},
                                                  {3, "analog inputs"},
                                                  {4, "analog outputs"},
                                                  {5, "counters and encoders"},
                                                  {6, "serial interfaces"},
                                                  {7, "power measurement"},
                                                  {8, "couplers and special modules"},
                                                  {9, "safety"}};
    return types;
}

std::string skeletonText(const SkeletonRequest& request)
{
    checkSchema(request.schema);
    std::vector<ChannelGroup> groups = readChannelGroups(request.channels);
    std::string text = textOf(request, groups);
    if (hasFinding(text)) {
        sortByWidth(groups);
        text = textOf(request, groups);
    }
    return text;
}

} // namespace mxauthor

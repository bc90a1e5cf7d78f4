#include "text/StationReader.h"

#include "text/EntryReader.h"
#include "text/LayoutReader.h"
#include "text/ModbusReader.h"
#include "text/YamlTree.h"

#include <fmt/format.h>
#include <mxauthor/Utf8.h>
#include <mxmodule/FileKind.h>
#include <mxmodule/ReadFile.h>

#include <algorithm>
#include <filesystem>

namespace mxstation {

namespace {

using mxmodule::FileKind;

// Aliases of YAML repeat a text at no cost in the file. A million values take less.
constexpr std::size_t mostStatedBytes = 200'000'000;

// Another kind of file, which would only give errors that follow from it.
void requireStation(const std::string& source, const std::string& name)
{
    const FileKind kind = mxmodule::kindOf(source);
    if (kind != FileKind::Station && kind != FileKind::Other) {
        throw mxmodule::Failure(mxmodule::Origin::Input, name,
                                fmt::format("This is {}, expected a station", nameOf(kind)),
                                callThatTakes(kind, name));
    }
}

std::string nameOfFile(const std::string& file)
{
    return file.empty() || file.front() == '<' ? "Station"
                                               : std::filesystem::path(file).stem().string();
}

// What the values and notes of an entry take.
std::size_t statedBytes(const Entry& entry)
{
    std::size_t bytes = 0;
    for (const StatedValue& value : entry.parameters) {
        bytes += sizeof value + value.name.size() + value.value.size();
    }
    for (const ChannelNote& note : entry.channels) {
        bytes += sizeof note + note.channel.size() + note.alias.size() + note.comment.size();
    }
    return bytes;
}

void readModules(const YamlNode& list, ModuleSource& modules, Station& station,
                 StationErrors& errors)
{
    std::size_t count = 0;
    std::size_t bytes = 0;
    for (const YamlNodeP& item : list.items) {
        if (errors.isFull()) {
            return;
        }
        const bool isModule =
            item->kind != YamlNode::Kind::Map ||
            std::any_of(item->members.begin(), item->members.end(),
                        [](const auto& member) { return member.first->text == "module"; });
        count += isModule ? 1 : 0;
        if (isModule && count > station.layout.mostModules) {
            errors.add(item->place, fmt::format("this is module {}, the layout allows {}", count,
                                                station.layout.mostModules));
            return;
        }
        station.entries.push_back(readEntry(*item, modules, errors));
        bytes += statedBytes(station.entries.back());
        if (bytes > mostStatedBytes) {
            errors.add(item->place, fmt::format("until here, parameters and channels take {} bytes "
                                                "with what aliases repeat, expected at most {}",
                                                bytes, mostStatedBytes));
            return;
        }
    }
}

// Of a layout with errors: further ones would only follow from them.
void removeLimits(Layout& layout)
{
    layout.mostModules = mostModulesOfAnyLayout;
    layout.input.mostBytes.reset();
    layout.output.mostBytes.reset();
}

void readLayoutOf(Station& station, const YamlNode& node, StationErrors& errors)
{
    const std::size_t known = station.findings.size();
    station.layout = readLayout(node, errors);
    station.layoutPlace = node.place;
    if (station.findings.size() != known) {
        removeLimits(station.layout);
    }
}

// Registers with errors are not compared with the plan: what does not fit would only follow.
void readModbusOf(Station& station, const YamlNode& node, StationErrors& errors)
{
    const std::size_t known = station.findings.size();
    station.modbus = readModbus(node, errors);
    station.modbusPlace = node.place;
    if (station.findings.size() != known) {
        station.modbus.reset();
    }
}

void readRoot(const YamlNode& root, ModuleSource& modules, Station& station, StationErrors& errors)
{
    if (root.kind != YamlNode::Kind::Map) {
        errors.add(root.place,
                   fmt::format("found {}, expected a map with \"modules\"", root.shown()));
        return;
    }
    const YamlSection section(root, "key of a station", {"station", "layout", "modbus", "modules"},
                              errors);
    if (const YamlNode* const name = section.find("station")) {
        station.name = readText(*name, "the name of the station", errors).value_or(station.name);
    }
    if (const YamlNode* const layout = section.find("layout")) {
        readLayoutOf(station, *layout, errors);
    }
    if (const YamlNode* const modbus = section.find("modbus")) {
        readModbusOf(station, *modbus, errors);
    }
    const YamlNode* const list = section.find("modules");
    if (list == nullptr) {
        if (!section.hasIncompleteKeys()) {
            errors.add(root.place, "\"modules\" is missing, the list of the modules in the row");
        }
    } else if (list->kind != YamlNode::Kind::List) {
        errors.add(list->place, fmt::format("found {}, expected a list of modules", list->shown()));
    } else {
        readModules(*list, modules, station, errors);
    }
}

std::string textOfFile(const std::string& path)
{
    const std::vector<char> bytes = mxmodule::readFile(path);
    return {bytes.begin(), bytes.end()};
}

} // namespace

Station stationIn(const std::string& source, const std::string& name, ModuleSource& modules)
{
    requireStation(source, name);
    Station station;
    station.name = nameOfFile(name);
    station.file = name;
    station.source = source;
    StationErrors errors(station);
    if (const auto wrong = mxauthor::findNonUtf8(source)) {
        errors.add({wrong->line, wrong->column, wrong->lineStart}, wrong->text);
        return station;
    }
    const YamlTree tree = readYamlTree(source);
    if (tree.error) {
        errors.add(tree.error->place, tree.error->text);
        return station;
    }
    readRoot(*tree.root, modules, station, errors);
    return station;
}

Station readStation(const std::string& path, const StationOptions& options)
{
    return stationOf(textOfFile(path), path, options);
}

Station readStation(const std::string& path, mxmodule::Catalogue& catalogue,
                    mxmodule::Observer* observer)
{
    StationOptions options;
    options.observer = observer;
    ModuleSource modules(path, options, &catalogue);
    return stationIn(textOfFile(path), path, modules);
}

Station stationOf(const std::string& source, const std::string& name, const StationOptions& options)
{
    ModuleSource modules(name, options, nullptr);
    return stationIn(source, name, modules);
}

} // namespace mxstation

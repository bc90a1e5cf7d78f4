#include "mxstation/StationDiff.h"

#include "export/Provenance.h"

#include <fmt/format.h>
#include <text/JsonText.h>
#include <text/ShownText.h>
#include <text/TextTable.h>
#include <text/Utf8.h>

#include <algorithm>
#include <set>

namespace mxstation {

namespace {

constexpr const char* verdictSame = "a program bound to A still reads the same values from B";
constexpr const char* verdictOther = "a program bound to A no longer reads the same values from B";

// Changes of the whole module: what they do to its channels needs no reason of its own.
bool isOfModule(ChangeKind kind)
{
    return kind == ChangeKind::ModuleType || kind == ChangeKind::ModuleMoved ||
           kind == ChangeKind::ModuleRemoved;
}

std::string reasonOf(const StationChange& change)
{
    const auto moved = [&change](const std::string& what) {
        return fmt::format("{} is at {}, it was at {}", what, change.after, change.before);
    };
    switch (change.kind) {
    case ChangeKind::ByteOrder:
        return fmt::format("the byte order is {}, it was {}", change.after, change.before);
    case ChangeKind::Status:
        return fmt::format("the status bytes of the {} image are {}{}, they were at {}",
                           change.subject == "in" ? "input" : "output",
                           change.after.empty() ? "gone" : "at ", change.after, change.before);
    case ChangeKind::ModuleRemoved:
        return fmt::format("the module \"{}\" is gone", change.module);
    case ChangeKind::ModuleType:
        return fmt::format("the module \"{}\" is of type {}, it was of type {}", change.module,
                           change.after, change.before);
    case ChangeKind::ModuleMoved:
        return moved(fmt::format("the module \"{}\"", change.module));
    case ChangeKind::ChannelRemoved:
        return fmt::format("the channel \"{}\" of \"{}\" is gone", change.subject, change.module);
    default:
        return moved(fmt::format("the channel \"{}\" of \"{}\"", change.subject, change.module));
    }
}

text::Json stationSumJson(const ComparedStation& station)
{
    return {{"station", text::toUtf8(station.name)}, {"station_sha256", station.sum}};
}

text::Json changeJson(const StationChange& change)
{
    return {{"kind", changeKindName(change.kind)},     {"module", text::toUtf8(change.module)},
            {"subject", text::toUtf8(change.subject)}, {"a", text::toUtf8(change.before)},
            {"b", text::toUtf8(change.after)},         {"changes_values", change.changesValues}};
}

std::string changeTable(const std::vector<StationChange>& changes)
{
    if (changes.empty()) {
        return "No address and no parameter differs\n";
    }
    text::TextTable table({"Change", "Module", "What", "A", "B"});
    for (const StationChange& change : changes) {
        table.add({changeKindName(change.kind), change.module, change.subject, change.before,
                   change.after});
    }
    return table.text();
}

} // namespace

const char* changeKindName(ChangeKind kind)
{
    switch (kind) {
    case ChangeKind::ByteOrder:
        return "byte order";
    case ChangeKind::Image:
        return "image";
    case ChangeKind::Status:
        return "status";
    case ChangeKind::Reserved:
        return "reserved";
    case ChangeKind::ModuleAdded:
        return "module added";
    case ChangeKind::ModuleRemoved:
        return "module removed";
    case ChangeKind::ModuleType:
        return "module type";
    case ChangeKind::ModuleFile:
        return "module file";
    case ChangeKind::ModuleOrder:
        return "module order";
    case ChangeKind::ModuleMoved:
        return "module moved";
    case ChangeKind::ChannelAdded:
        return "channel added";
    case ChangeKind::ChannelRemoved:
        return "channel removed";
    case ChangeKind::ChannelMoved:
        return "channel moved";
    case ChangeKind::Alias:
        return "alias";
    case ChangeKind::Parameter:
        return "parameter";
    default:
        return "parameter image";
    }
}

bool StationDifference::sameValues() const
{
    return std::none_of(changes.begin(), changes.end(),
                        [](const StationChange& change) { return change.changesValues; });
}

std::vector<std::string> StationDifference::reasons() const
{
    std::set<std::string> moved; // modules with a reason for all of their channels
    std::vector<std::string> texts;
    for (const StationChange& change : changes) {
        const bool isExplained = !isOfModule(change.kind) && moved.count(change.module) != 0;
        if (change.changesValues && !isExplained) {
            texts.push_back(reasonOf(change));
        }
        if (change.changesValues && isOfModule(change.kind)) {
            moved.insert(change.module);
        }
    }
    return texts;
}

std::string StationDifference::text() const
{
    std::string shown =
        fmt::format("A: {}\nB: {}\n\n", text::forTerminal(a.name), text::forTerminal(b.name));
    shown += changeTable(changes);
    shown += fmt::format("\nVerdict: {}\n", sameValues() ? verdictSame : verdictOther);
    for (const std::string& reason : reasons()) {
        shown += "  " + text::forTerminal(reason) + "\n";
    }
    for (const std::string& note : notes) {
        shown += "Note: " + note + "\n";
    }
    return shown;
}

std::string StationDifference::json() const
{
    return text::jsonText({{"schema", text::jsonSchema("mxtool.station-diff", 1)},
                           {"mxtool", Provenance::version()},
                           {"a", stationSumJson(a)},
                           {"b", stationSumJson(b)},
                           {"same", isSame()},
                           {"same_values", sameValues()},
                           {"verdict", sameValues() ? verdictSame : verdictOther},
                           {"reasons", text::textsJson(reasons())},
                           {"changes", text::listJson(changes, changeJson)},
                           {"notes", text::textsJson(notes)}});
}

} // namespace mxstation

// A station file beside the example modules: read, changed, planned, checked and, if there is a
// plan, given in every form. A changed text, the plan, a pinned station, one with the parameters of
// a coupler and the C header are held by what they promise.
#include "FuzzInput.h"
#include "FuzzTarget.h"

#include <mxmodule/Population.h>
#include <mxstation/ChannelExport.h>
#include <mxstation/Declarations.h>
#include <mxstation/ParameterEdit.h>
#include <mxstation/ParameterExport.h>
#include <mxstation/Pin.h>
#include <mxstation/StationCheck.h>
#include <mxstation/StationDiff.h>
#include <mxstation/StationEdit.h>
#include <mxstation/StationPicture.h>
#include <mxstation/StationReport.h>

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace {

using fuzz::require;

namespace fs = std::filesystem;

using mxmodule::Fieldbus;
using mxstation::Plan;
using mxstation::Station;

void write(const fs::path& path, const std::vector<char>& bytes)
{
    std::ofstream(path, std::ios::binary | std::ios::trunc)
        .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

// A directory of this process, in memory if the system has such a file system: the mx files of the
// examples with the names of their texts, and a catalogue of them.
class Directory
{
public:
    Directory() : path(root() / ("fuzz-station-" + std::to_string(getpid())))
    {
        fs::create_directories(path / "modules");
        fs::create_directories(path / "stations");
        for (const auto& text : fs::directory_iterator(EXAMPLE_MODULES)) {
            if (text.path().extension() == ".yaml") {
                add(text.path());
            }
        }
        catalogue.emplace(mxmodule::Catalogue::openOrCreate("sqlite::memory:"));
        mxmodule::populate(mxmodule::listMxDirectory(path / "modules"), *catalogue);
    }
    ~Directory()
    {
        std::error_code ignored;
        fs::remove_all(path, ignored);
    }
    Directory(const Directory&) = delete;
    Directory& operator=(const Directory&) = delete;

    Station read(const std::vector<char>& source)
    {
        const fs::path file = path / "stations" / "station.yaml";
        write(file, source);
        return mxstation::readStation(file, *catalogue);
    }

private:
    static fs::path root()
    {
        const fs::path memory = "/dev/shm";
        return fs::is_directory(memory) ? memory : fs::temp_directory_path();
    }

    // Building a text takes longer than all that follows.
    void add(const fs::path& text) const
    {
        const auto bytes = mxmodule::ModuleFile::read(text).bytes();
        write(path / "modules" / text.filename(), bytes);
        write(path / "modules" / text.stem().concat(".bin"), bytes);
    }

    fs::path path;
    std::optional<mxmodule::Catalogue> catalogue;
};

using Export = std::function<std::string(const Plan&)>;

std::string joined(const std::vector<mxstation::ParameterFile>& files)
{
    std::string all;
    for (const auto& [name, bytes] : files) {
        require(name.find('/') == name.npos && name.size() < 256);
        all += name + std::string(bytes.begin(), bytes.end());
    }
    return all;
}

const std::vector<Export>& exports()
{
    using namespace mxstation;
    static const std::vector<Export> all{
        stationText,
        stationJson,
        stationSvg,
        channelsText,
        channelsJson,
        [](const Plan& plan) { return channelsCsv(plan); },
        [](const Plan& plan) { return declarations(plan).text; },
        [](const Plan& plan) {
            return declarations(plan, {AddressStyle::Index, VariableScope::Program}).text;
        },
        [](const Plan& plan) {
            return plcopenXml(plan, {AddressStyle::Separate, VariableScope::Global}).text;
        },
        [](const Plan& plan) { return cHeader(plan).text; },
        [](const Plan& plan) { return parametersText(plan, Fieldbus::Raw); },
        [](const Plan& plan) { return parametersJson(plan, Fieldbus::Raw); },
        [](const Plan& plan) { return joined(parameterFiles(plan, Fieldbus::Raw)); },
    };
    return all;
}

bool isRefused(const std::function<void()>& operation)
{
    try {
        operation();
    } catch (const mxmodule::Failure& failure) {
        require(!failure.findings().empty());
        return true;
    }
    return false;
}

// Every byte of an image is of one module or of a gap for another reason than "no channel".
void requireEveryByteOnce(const Plan& plan, bool isInput)
{
    const auto& image = isInput ? plan.input : plan.output;
    std::vector<std::pair<std::uint64_t, std::uint64_t>> parts; // first byte, number of bytes
    for (const auto& module : plan.modules) {
        const auto& data = isInput ? module.input : module.output;
        if (data.size != 0) {
            parts.emplace_back(data.offset, data.size);
        }
    }
    for (const auto& gap : plan.gaps) {
        if (gap.isInput == isInput && gap.reason != mxstation::GapReason::NoChannel) {
            require(gap.firstBit % 8 == 0 && gap.bits % 8 == 0 && gap.bits != 0);
            parts.emplace_back(gap.firstBit / 8, gap.bits / 8);
        }
    }
    std::sort(parts.begin(), parts.end());
    std::uint64_t next = image.offset;
    for (const auto& [first, size] : parts) {
        require(first == next);
        next += size;
    }
    require(next == image.end());
}

// Pinning moves nothing, and a pinned station stays as it is.
void requirePinned(Directory& directory, const Station& station, const Plan& plan)
{
    std::string text;
    if (isRefused([&] { text = mxstation::pinned(station, plan); })) {
        return;
    }
    const Station again = directory.read({text.begin(), text.end()});
    const Plan same = mxstation::plan(again);
    require(same.ok() && mxstation::pinned(again, same) == text);
    const auto difference = mxstation::compare(plan, same);
    require(difference.isSame() && difference.sameValues());
    require(!difference.text().empty() && !difference.json().empty());
}

// The file of a station becomes what a coupler has: nothing changes for its own parameters, and
// the defaults are stated or refused.
void requireParameters(Directory& directory, const Station& station, const Plan& plan)
{
    std::vector<std::vector<std::uint16_t>> own;
    std::vector<std::vector<std::uint16_t>> defaults;
    for (const auto& module : plan.modules) {
        own.push_back(module.registers);
        if (isRefused([&] {
                defaults.push_back(module.module.registers(module.module.defaultImage()));
            })) {
            return;
        }
    }
    require(mxstation::withParameters(station, plan, own) == station.source);
    std::string text;
    if (isRefused([&] { text = mxstation::withParameters(station, plan, defaults); })) {
        return;
    }
    const Plan made = mxstation::plan(directory.read({text.begin(), text.end()}));
    require(made.ok());
    for (std::size_t i = 0; i < defaults.size(); ++i) {
        require(made.modules[i].registers == defaults[i]);
    }
}

// One of the changes, at one of the entries, chosen by the bytes of the text.
mxstation::StationEdit editOf(const Station& station)
{
    using namespace mxstation;
    std::size_t sum = 0;
    for (const char byte : station.source) {
        sum = sum * 31 + static_cast<unsigned char>(byte);
    }
    const std::size_t places = station.entries.size() + 1;
    const std::size_t entry = sum / 16 % places;
    const bool isStated = entry + 1 < places && !station.entries[entry].parameters.empty();
    const std::vector<StationEdit> all{
        AddModule{entry, "../modules/MX0304.bin", "Levels: 1"},
        AddReserve{entry, 1, 2, "yes"},
        MoveEntry{entry, sum / 1024 % places},
        RemoveEntry{entry},
        NameEntry{entry, "# no comment"},
        SetReserve{entry, 3, 0},
        SetValue{entry, "Mains suppression", "60"},
        SetValue{entry, isStated ? station.entries[entry].parameters[0].name : "#1", {}},
        NoteChannel{entry, "0", "LT_101", "tank\n1"},
        PinEntry{entry, {}, 100},
    };
    return all[sum % all.size()];
}

// A changed text is that of a station with as many entries as it should have, and an entry that is
// added and removed again leaves the row as it was.
void requireEdited(Directory& directory, const Station& station)
{
    const mxstation::StationEdit edit = editOf(station);
    std::string text;
    if (isRefused([&] { text = mxstation::edited(station, edit); })) {
        return;
    }
    const Station again = directory.read({text.begin(), text.end()});
    const auto* const added = std::get_if<mxstation::AddModule>(&edit);
    const bool isMore = added != nullptr || std::holds_alternative<mxstation::AddReserve>(edit);
    const bool isLess = std::holds_alternative<mxstation::RemoveEntry>(edit);
    if (!station.findings.empty()) {
        return; // it may have more entries than are read
    }
    require(again.entries.size() + (isLess ? 1 : 0) == station.entries.size() + (isMore ? 1 : 0));
    if (added != nullptr && !isRefused([&] {
            text = mxstation::edited(again, mxstation::RemoveEntry{added->before});
        })) {
        const Station same = directory.read({text.begin(), text.end()});
        require(std::equal(same.entries.begin(), same.entries.end(), station.entries.begin(),
                           station.entries.end(), [](const auto& a, const auto& b) {
                               return a.reference == b.reference && a.name == b.name;
                           }));
    }
}

void run(Directory& directory, const Station& station)
{
    requireEdited(directory, station);
    const Plan plan = mxstation::plan(station);
    require(!mxstation::checkOf(plan).json().empty());
    for (const Export& one : exports()) {
        require(isRefused([&] { require(!one(plan).empty()); }) != plan.ok());
    }
    if (!plan.ok()) {
        require(plan.modules.empty() && isRefused([&] { mxstation::pinned(station, plan); }));
        return;
    }
    isRefused([&] { mxstation::parametersJson(plan, Fieldbus::Modbus); });
    requireEveryByteOnce(plan, true);
    requireEveryByteOnce(plan, false);
    requirePinned(directory, station, plan);
    requireParameters(directory, station, plan);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const bool silent = (fuzz::silence(), true);
    static_cast<void>(silent);
    static Directory directory;
    std::optional<Station> station;
    if (!isRefused([&] { station = directory.read({data, data + size}); })) {
        run(directory, *station);
    }
    return 0;
}

// A request to the workbench as text: "METHOD TARGET", lines "NAME: VALUE", an empty line, the
// body. What the gatekeeper lets pass has the token; every call is answered in form, also without
// it, and no answer has a word of a file outside the folder.
#include "FuzzInput.h"
#include "FuzzTarget.h"

#include "api/Api.h"
#include "http/Gatekeeper.h"
#include "http/RequestTarget.h"
#include "http/Token.h"

#include <mxmodule/Population.h>

#include <nlohmann/json.hpp>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

namespace {

using fuzz::require;
using workbench::Request;
using workbench::RequestHead;
using workbench::Response;

namespace fs = std::filesystem;

constexpr unsigned short port = 8538;
const std::string token = "token";

fs::path parentOfFolders()
{
    const fs::path memory = "/dev/shm";
    return fs::is_directory(memory) ? memory : fs::temp_directory_path();
}

void write(const fs::path& path, const std::string& content)
{
    std::ofstream(path, std::ios::binary | std::ios::trunc) << content;
}

// A directory of this process: a folder with a station and some examples, a catalogue, and beside
// it files that no answer may show.
class Place
{
public:
    Place()
        : path(parentOfFolders() / ("fuzz-workbench-" + std::to_string(getpid()))),
          hidden(workbench::newToken())
    {
        fs::create_directories(path / "folder");
        for (const char* const name : {"MX0108", "MX0208", "MX0304"}) {
            const fs::path text = fs::path(EXAMPLE_MODULES) / (name + std::string(".yaml"));
            fs::copy_file(text, path / "folder" / text.filename(),
                          fs::copy_options::overwrite_existing);
            const auto bytes = mxmodule::ModuleFile::read(text).bytes();
            write(path / "folder" / (name + std::string(".bin")), {bytes.begin(), bytes.end()});
        }
        write(path / "outside.yaml", hidden + ": " + hidden + "\n");
        fs::create_symlink("../outside.yaml", path / "folder" / "link.yaml");
        auto catalogue = mxmodule::Catalogue::openOrCreate(catalogueUrl());
        mxmodule::populate(mxmodule::listMxDirectory(path / "folder"), catalogue);
        restoreStation();
        workplace.emplace(station().string(), "", catalogueUrl());
    }

    ~Place()
    {
        std::error_code ignored;
        fs::remove_all(path, ignored);
    }

    Place(const Place&) = delete;
    Place& operator=(const Place&) = delete;

    Response answer(const Request& request)
    {
        Response response = workbench::Api(*workplace, nullptr).answer(request);
        if (request.method == "PUT" && response.status == 200) {
            restoreStation();
        }
        return response;
    }

    // The version of the station's file, by which a page saves it.
    std::string version() const { return workplace->station()->read().version; }
    const std::string& hiddenWord() const { return hidden; }

private:
    std::string catalogueUrl() const { return "sqlite:" + (path / "devices.sqlite").string(); }
    fs::path station() const { return path / "folder" / "station.yaml"; }
    void restoreStation() const { write(station(), "station: Fuzz\nmodules: [MX0108.yaml]\n"); }

    fs::path path;
    std::string hidden;
    std::optional<workbench::Workplace> workplace;
};

Place& place()
{
    static Place one;
    return one;
}

RequestHead headIn(fuzz::Words& words)
{
    const std::string first = words.takeLine();
    const std::size_t blank = first.find(' ');
    RequestHead head;
    head.method = first.substr(0, blank);
    head.target = blank == std::string::npos ? "" : first.substr(blank + 1);
    for (std::string line = words.takeLine(); !line.empty(); line = words.takeLine()) {
        const std::size_t colon = line.find(": ");
        head.fields.emplace_back(line.substr(0, colon),
                                 colon == std::string::npos ? "" : line.substr(colon + 2));
        head.size += line.size();
    }
    return head;
}

void requireForm(const Response& response)
{
    require(response.status >= 200 && response.status < 600);
    require(response.body.find(place().hiddenWord()) == std::string::npos);
    if (!response.type.empty() && response.type != "application/json") {
        return;
    }
    const auto json = nlohmann::json::parse(response.body, nullptr, false);
    require(json.is_object() && (response.status < 400 || !json.at("findings").empty()));
}

void passGate(const RequestHead& head)
{
    static const workbench::Gatekeeper gatekeeper(token, port, workbench::Limits());
    const auto refusal = gatekeeper.refusalOf(head);
    if (refusal) {
        require(refusal->status >= 400);
        requireForm(*refusal);
        return;
    }
    const std::string path = workbench::pathOf(head.target);
    require(head.valuesOf("Host").size() == 1);
    require(path.find("/api/v1/") != 0 ||
            head.valuesOf("Authorization") == std::vector<std::string>{"Bearer " + token});
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz::silence();
    // libFuzzer takes texts that are compared into its inputs; answers may quote those.
    if (std::string(data, data + size).find(place().hiddenWord()) != std::string::npos) {
        return 0;
    }
    fuzz::Words words({data, data + size});
    const RequestHead head = headIn(words);
    passGate(head);
    const auto target = workbench::parsedTarget(head.target);
    if (!target) {
        return 0;
    }
    const auto rest = words.takeRest();
    std::string body(rest.begin(), rest.end());
    const std::string mark = "@version@";
    if (const std::size_t at = body.find(mark); at != std::string::npos) {
        body.replace(at, mark.size(), place().version());
    }
    requireForm(place().answer({head.method, target->path, target->query, body}));
    return 0;
}

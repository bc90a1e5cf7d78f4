#include "serve/ServeRun.h"

#include "DatabaseChoice.h"
#include "Diagnostic.h"
#include "InputFile.h"
#include "Interruption.h"
#include "OutputFile.h"
#include "serve/BrowserFile.h"
#include "serve/BrowserStart.h"
#include "serve/WorkbenchModule.h"

#include <mxmodule/FileKind.h>
#include <mxonline/Target.h>

#include <chrono>
#include <filesystem>

namespace mxtool {

namespace {

using ServeClock = std::chrono::steady_clock;
using mxmodule::FileKind;

FileKind kindOfServed(const std::string& file)
{
    if (file == "-") {
        throw Failure(Origin::Request, inputName(file),
                      "the page needs a file with a name, to which it can save",
                      "name the file, or leave it out");
    }
    const std::vector<char> content = loadBytesToReplace(file);
    const FileKind kind = mxmodule::kindOf({content.begin(), content.end()});
    if (kind != FileKind::Station && kind != FileKind::MxFile && kind != FileKind::TextForm) {
        throw Failure(Origin::Input, file,
                      std::string("the file is ") + mxmodule::nameOf(kind) +
                          ", not a station, an mx file or the text form of one",
                      mxmodule::callThatTakes(kind, file));
    }
    return kind;
}

void checkFolder(const std::string& folder)
{
    std::error_code ignored;
    if (!folder.empty() && !std::filesystem::is_directory(folder, ignored)) {
        throw Failure(Origin::Input, folder, "there is no such directory", "");
    }
}

// What the server would otherwise find out while it is used.
void checkOptions(const ServeOptions& options)
{
    const FileKind kind = options.file.empty() ? FileKind::Other : kindOfServed(options.file);
    checkFolder(options.folder);
    if (!options.target.empty()) {
        static_cast<void>(mxonline::targetOf(options.target));
        if (kind != FileKind::Station) {
            throw Failure(Origin::Request, options.target, "a target needs a station",
                          "name the file of the station that is there");
        }
    }
    if (!options.databaseUrl.empty()) {
        static_cast<void>(openCatalogue(options.databaseUrl));
    }
}

workbench::Options serverOptions(const ServeOptions& options)
{
    workbench::Options server;
    server.file = options.file;
    server.folder = options.folder;
    server.catalogueUrl = options.databaseUrl;
    server.target = options.target;
    server.port = options.port;
    return server;
}

// Ends early only by a signal.
void waitUntil(ServeClock::time_point end, std::optional<BrowserStart>& browser)
{
    constexpr auto step = std::chrono::milliseconds(200);
    while (ServeClock::now() < end &&
           !Interruption::isRequestedUntil(std::min(end, ServeClock::now() + step))) {
        if (browser && browser->hasFailed()) {
            report({Severity::Warning, "", "no browser could be opened with xdg-open",
                    "open the printed address yourself"});
            browser.reset();
        }
    }
}

} // namespace

ExitCode serve(const ServeOptions& options)
{
    checkOptions(options);
    OutputFiles output({"-"}, FileKind::Other);
    const Interruption ends;
    const auto server = startWorkbench(serverOptions(options));
    output.write("-", server->address() + "\n");
    std::optional<BrowserFile> file;
    std::optional<BrowserStart> browser;
    if (options.opensBrowser) {
        file.emplace(server->address());
        browser.emplace(file->path());
    }
    waitUntil(options.seconds ? ServeClock::now() + std::chrono::seconds(*options.seconds)
                              : ServeClock::time_point::max(),
              browser);
    return ExitCode::Done;
}

} // namespace mxtool

#include "Diagnostic.h"
#include "InputFile.h"
#include "OutputFile.h"
#include "ToolObserver.h"
#include "Verbs.h"
#include "station/StationChoice.h"

#include <mxmodule/Datasheet.h>
#include <mxmodule/FileKind.h>
#include <mxstation/Datasheet.h>

#include <CLI/CLI.hpp>

namespace mxtool {

namespace {

using mxmodule::FileKind;

constexpr const char* datasheetFooter =
    R"(The page contains all that it shows, no script, and nothing of the network. It is made for a screen and for
paper: print it, or save it as PDF, with a browser.

Example:
  $ mxtool datasheet examples/modules/MX0304.bin -o /tmp/MX0304.html
)";

struct DatasheetOptions
{
    StationChoice station; // its file may be a module
    std::string output;
};

// What is recognised as another kind of file; anything else may be a damaged module.
void requireDescription(const std::string& path, FileKind kind)
{
    if (kind != FileKind::MxFile && kind != FileKind::TextForm && kind != FileKind::Other) {
        throw Failure(Origin::Input, inputName(path),
                      std::string("This is ") + nameOf(kind) +
                          ", expected an mx file, its text form or a station",
                      callThatTakes(kind, inputName(path)));
    }
}

mxmodule::Module moduleOf(const std::string& path, std::vector<char> content,
                          const std::string& logLevel)
{
    ToolObserver observer(logLevel);
    mxmodule::ModuleOptions options;
    options.observer = &observer;
    return mxmodule::Module(mxmodule::ModuleFile(inputName(path), std::move(content), &observer),
                            options);
}

std::string pageOf(const StationChoice& choice, const std::string& logLevel)
{
    const std::vector<char> content = loadBytes(choice.file);
    const FileKind kind = mxmodule::kindOf({content.begin(), content.end()});
    if (kind == FileKind::Station) {
        return datasheet(planOf(stationOfBytes(choice, content)));
    }
    requireDescription(choice.file, kind);
    return datasheet(moduleOf(choice.file, content, logLevel));
}

ExitCode writeDatasheet(const DatasheetOptions& options, const std::string& logLevel)
{
    writeOutput(options.output, pageOf(options.station, logLevel));
    return ExitCode::Done;
}

} // namespace

void addDatasheetVerb(CLI::App& program, const GlobalOptions& global, const VerbChoice& choose)
{
    CLI::App* verb =
        program.add_subcommand("datasheet", "Write a page about a module or a station");
    auto options = std::make_shared<DatasheetOptions>();
    verb->add_option("FILE", options->station.file,
                     "The mx file, its text form, or the station file; - for standard input")
        ->required();
    addStationDatabase(*verb, options->station);
    verb->add_option("-o,--output", options->output,
                     "Write the page (HTML) to this file, - for standard output")
        ->type_name("FILE")
        ->required();
    verb->footer(datasheetFooter);
    verb->callback([options, choose, &global] {
        choose([options, &global] { return writeDatasheet(*options, global.logLevel); });
    });
}

} // namespace mxtool

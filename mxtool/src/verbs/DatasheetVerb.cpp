#include "DatabaseChoice.h"
#include "Diagnostic.h"
#include "InputFile.h"
#include "OutputFile.h"
#include "ToolObserver.h"
#include "Verbs.h"

#include <mxmodule/Datasheet.h>
#include <mxmodule/FileKind.h>

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
    std::string file;
    std::string output;
};

// What is recognised as another kind of file; anything else may be a damaged module.
void requireDescription(const std::string& path, FileKind kind)
{
    if (kind != FileKind::MxFile && kind != FileKind::TextForm && kind != FileKind::Other) {
        throw Failure(Origin::Input, inputName(path),
                      std::string("This is ") + nameOf(kind) +
                          ", expected an mx file or its text form",
                      callThatTakes(kind, inputName(path)));
    }
}

std::string pageOf(const DatasheetOptions& options, const std::string& logLevel)
{
    const std::vector<char> content = loadBytes(options.file);
    const FileKind kind = mxmodule::kindOf({content.begin(), content.end()});
    requireDescription(options.file, kind);
    ToolObserver observer(logLevel);
    mxmodule::ModuleOptions moduleOptions;
    moduleOptions.observer = &observer;
    return datasheet(mxmodule::Module(
        mxmodule::ModuleFile(inputName(options.file), content, &observer), moduleOptions));
}

ExitCode writeDatasheet(const DatasheetOptions& options, const std::string& logLevel)
{
    writeOutput(options.output, pageOf(options, logLevel));
    return ExitCode::Done;
}

} // namespace

void addDatasheetVerb(CLI::App& program, const GlobalOptions& global, const VerbChoice& choose)
{
    CLI::App* verb =
        program.add_subcommand("datasheet", "Write a page about a module, for screen and paper");
    auto options = std::make_shared<DatasheetOptions>();
    addModuleFile(*verb, options->file);
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

#include "CommandLineOptions.h"
#include "DatabaseChoice.h"
#include "Verbs.h"
#include "serve/ServeRun.h"

namespace mxtool {

namespace {

constexpr const char* serveFooter =
    R"(The page is at the address on standard output, for this user on this computer alone: what is after "#"
is new in each run, and whoever has it may do what the page can do. Without FILE the page shows the
catalogue and the modules of the folder. It ends after Ctrl+C or --seconds, with exit code 0.
It needs the package mx-workbench.

Example:
  $ mxtool serve examples/stations/pump-house.yaml --port 0 --seconds 0 | sed 's/:[0-9].*//'
  http://127.0.0.1
)";

CLI::Option& addText(CLI::App& verb, const char* name, std::string& value, const char* description,
                     const char* type)
{
    CLI::Option* const option = verb.add_option(name, value, description);
    option->type_name(type);
    rejectEmptyValue(*option);
    return *option;
}

void addServeOptions(CLI::App& verb, ServeOptions& options)
{
    rejectEmptyValue(
        *verb.add_option("FILE", options.file, "A station, an mx file or the text form of one"));
    addDatabaseOption(verb, options.databaseUrl);
    verb.add_option("--port", options.port,
                    "Where the page is, 0 for a port that the system chooses; by default " +
                        std::to_string(defaultServePort))
        ->type_name("PORT")
        ->check(CLI::Range(0U, 65535U));
    verb.add_flag("--open", options.opensBrowser, "Open the page in the browser of the user");
    addText(verb, "--folder", options.folder,
            "Where the files are that a station or a text form names; by default the directory of "
            "FILE, else the current one",
            "DIRECTORY");
    addText(verb, "--target", options.target,
            "The coupler of the station: tcp:HOST[:PORT] or rtu:DEVICE[,BAUD[,PARITY[,STOPBITS]]]",
            "TARGET");
    verb.add_option("--seconds", options.seconds, "End after this time")
        ->type_name("SECONDS")
        ->check(CLI::Range(0U, 86400U));
}

} // namespace

void addServeVerb(CLI::App& program, const GlobalOptions& /*global*/, const VerbChoice& choose)
{
    CLI::App* verb = program.add_subcommand(
        "serve", "Show modules and stations on a page in the browser, and configure them there");
    auto options = std::make_shared<ServeOptions>();
    addServeOptions(*verb, *options);
    verb->footer(serveFooter);
    verb->callback([options, choose] { choose([options] { return serve(*options); }); });
}

} // namespace mxtool

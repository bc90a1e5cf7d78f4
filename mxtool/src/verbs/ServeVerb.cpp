#include "CommandLineOptions.h"
#include "DatabaseChoice.h"
#include "Verbs.h"
#include "serve/ServeRun.h"

namespace mxtool {

namespace {

constexpr const char* serveFooter =
    R"(The page is at the printed address, on this computer alone. What is after "#" is new in each run: whoever
has it may do what the page can do. Without FILE the page shows the catalogue and the modules of the
folder. It ends after Ctrl+C or --seconds, with exit code 0; 4 when it cannot listen, or the package
mx-workbench is not installed.

Example:
  $ mxtool serve examples/stations/pump-house.yaml --folder examples --seconds 1
  http://127.0.0.1:8538/#0kUFdJqB7pB2hQzQHL0xY1uYk2pUrcZ1x8O3yT5nQ4s
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
            "Where the files are that a station or a text form names; FILE is in it; by "
            "default the directory of FILE, else the current one",
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
    CLI::App* verb =
        program.add_subcommand("serve", "Show and configure modules and stations in the browser");
    auto options = std::make_shared<ServeOptions>();
    addServeOptions(*verb, *options);
    verb->footer(serveFooter);
    verb->callback([options, choose] { choose([options] { return serve(*options); }); });
}

} // namespace mxtool

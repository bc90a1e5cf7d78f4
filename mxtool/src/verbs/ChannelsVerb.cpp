#include "CommandLineOptions.h"
#include "Diagnostic.h"
#include "FormatOfName.h"
#include "ModuleChoice.h"
#include "OutputFile.h"
#include "ToolObserver.h"
#include "Verbs.h"

#include <unistd.h>

namespace mxtool {

namespace {

constexpr const char* channelsFooter = R"(Example:
  $ mxtool channels --format st examples/modules/MX0304.bin
  (* 4 AI ±10 V / 0-20 mA (kv38.5a030304). Addresses count bytes. *)
  VAR_GLOBAL
      AI_1 AT %IW0 : INT; (* AI 1 *)
      AI_2 AT %IW2 : INT; (* AI 2 *)
      AI_3 AT %IW4 : INT; (* AI 3 *)
      AI_4 AT %IW6 : INT; (* AI 4 *)
  END_VAR
)";

struct ChannelsOptions
{
    ModuleChoice module;
    std::string format = "text";
    CsvOptions csv;
    std::string output = "-";
    std::string picture; // empty: none
    bool map = false;
};

std::string listing(const ChannelsOptions& options, const mxmodule::ChannelMap& map)
{
    if (options.format == "json") {
        return map.json();
    }
    if (options.format == "csv") {
        return map.csv(options.csv.style());
    }
    if (options.format == "st") {
        return map.declarations();
    }
    const bool coloured = options.output == "-" && takesColour(STDOUT_FILENO);
    return (options.map ? map.drawing(coloured) + "\n" : "") + map.text();
}

void checkWords(const ChannelsOptions& options)
{
    requireCsv(options.csv, options.format);
    if (isOtherPicture(options.picture)) {
        throw CLI::ValidationError("--picture", "draws SVG, expected a name that ends in .svg, "
                                                "not " +
                                                    options.picture);
    }
    if (options.map && options.format != "text") {
        throw CLI::ValidationError("--map",
                                   "is drawn with --format text only, not with " + options.format);
    }
}

ExitCode channels(const ChannelsOptions& options, const std::string& logLevel)
{
    const mxmodule::Module module = loadModule(options.module, logLevel);
    ToolObserver observer(logLevel);
    const mxmodule::ChannelMap map = module.channelMap(&observer);
    std::vector<Output> outputs;
    if (!options.picture.empty()) {
        outputs.push_back({options.picture, map.svg()});
    }
    if (options.picture != "-" || options.output != "-") {
        outputs.push_back({options.output, listing(options, map)});
    }
    writeOutputs(outputs);
    return ExitCode::Done;
}

void addOptions(CLI::App& verb, ChannelsOptions& options)
{
    addPlacedModuleChoice(verb, options.module);
    acceptOneOf(*verb.add_option("--format", options.format,
                                 "text, json, csv or st (IEC 61131-3 declarations)"),
                {"text", "json", "csv", "st"});
    addCsvOptions(verb, options.csv);
    verb.add_option("-o,--output", options.output, "Write to this file, - for standard output")
        ->type_name("FILE");
    verb.add_option("--picture", options.picture,
                    "Draw the process images to this SVG file as well; - for standard output, in "
                    "place of the list")
        ->type_name("FILE");
    verb.add_flag("--map", options.map, "Draw the process images above the list");
}

} // namespace

void addChannelsVerb(CLI::App& program, const GlobalOptions& global, const VerbChoice& choose)
{
    CLI::App* verb =
        program.add_subcommand("channels", "Show where the channels lie in the process images");
    auto options = std::make_shared<ChannelsOptions>();
    addOptions(*verb, *options);
    verb->footer(channelsFooter);
    verb->callback([options, choose, &global] {
        checkWords(*options);
        choose([options, &global] { return channels(*options, global.logLevel); });
    });
}

} // namespace mxtool

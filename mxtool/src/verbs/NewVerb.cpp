#include "Diagnostic.h"
#include "OutputFile.h"
#include "Verbs.h"

#include <mxmodule/FileKind.h>

#include <mxauthor/Skeleton.h>
#include <text/ShownText.h>

#include <fmt/format.h>

#include <algorithm>

namespace mxtool {

namespace {

constexpr const char* newFooter =
    R"(Channels: COUNT KIND, separated by commas. DI, DO: bits; AI, AO: SInt16; in TYPE, out TYPE: any kind.

Example:
  $ mxtool new --channels 3AI,2DO --id 0x5a030399 -o /tmp/MX0399.yaml
  /tmp/MX0399.yaml: 55 lines, to be filled in
)";

// An existing text may contain the user's work.
void protectText(const std::string& output, bool overwrite)
{
    const auto present = output == "-" ? mxmodule::FileKind::Other : mxmodule::kindOfFile(output);
    if (mxmodule::costsWork(present) && !overwrite) {
        throw Failure(
            Origin::Request, output,
            fmt::format("The file is {}, a new module would replace it", mxmodule::nameOf(present)),
            "name another file, or add --overwrite to replace this one");
    }
}

ExitCode writeSkeleton(const mxauthor::SkeletonRequest& request, const std::string& output,
                       const GlobalOptions& global)
{
    try {
        const std::string text = mxauthor::skeletonText(request);
        protectText(output, global.overwrite);
        writeOutput(output, text);
        if (!global.quiet && output != "-") {
            writeOutput("-",
                        fmt::format("{}: {} lines, to be filled in\n", text::forTerminal(output),
                                    std::count(text.begin(), text.end(), '\n')));
        }
        return ExitCode::Done;
    } catch (const mxauthor::SkeletonError& error) {
        throw Failure(Origin::Request, "--" + error.member(), error.what());
    }
}

} // namespace

void addNewVerb(CLI::App& program, const GlobalOptions& global, const VerbChoice& choose)
{
    CLI::App* verb =
        program.add_subcommand("new", "Write the text of a new module, to be filled in");
    auto request = std::make_shared<mxauthor::SkeletonRequest>();
    request->schema = "/usr/share/parser-mx/mx-module.schema.json";
    auto output = std::make_shared<std::string>("-");
    verb->add_option("--channels", request->channels, "Such as \"3 AI, 2 DO\"; default: none")
        ->type_name("CHANNELS");
    verb->add_option("--name", request->name, "Name of the module in its catalogue")
        ->type_name("NAME");
    verb->add_option("--id", request->id, "Module identifier")->type_name("MODULE_ID");
    verb->add_option("--type", request->type,
                     "Number of the module type; default: derived from the channels")
        ->type_name("TYPE");
    verb->add_option("--schema", request->schema,
                     "Where editors find the JSON Schema, for the first line of the text");
    verb->add_option("-o,--output", *output, "Write to this file, - for standard output");
    verb->footer(newFooter);
    verb->callback([request, output, choose, &global] {
        choose([request, output, &global] { return writeSkeleton(*request, *output, global); });
    });
}

} // namespace mxtool

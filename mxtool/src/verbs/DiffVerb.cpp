#include "CommandLineOptions.h"
#include "Diagnostic.h"
#include "InputFile.h"
#include "OutputFile.h"
#include "Verbs.h"
#include "diff/DiffOutput.h"

#include <text/JsonText.h>
#include <unistd.h>

namespace mxtool {

namespace {

constexpr const char* diffFooter =
    R"(Exit codes: 0 the files are the same, 1 they differ, 3 one cannot be read.

Example:
  $ mxtool diff examples/modules/MX0108.bin examples/modules/MX0108.bin
  a parameter image stored for examples/modules/MX0108.bin stays valid for examples/modules/MX0108.bin: yes, because every parameter keeps its place and still accepts its old values
)";

struct DiffOptions
{
    std::string before;
    std::string after;
    std::string format = "text";
    std::string output = "-";
};

mxauthor::MxFile readFile(const std::string& path)
{
    const mxmodule::ModuleFile input = loadModuleFile(path);
    mxauthor::ReadGroups read = mxauthor::readWholeGroups(input.bytes());
    if (read.failure) {
        throw Failure(Origin::Input, input.placeOf(read.file.tail.place.offset), *read.failure,
                      "mxtool check " + path + " shows the details");
    }
    return std::move(read.file);
}

ExitCode diffFiles(const DiffOptions& options)
{
    const mxauthor::MxFile before = readFile(options.before);
    const mxauthor::MxFile after = readFile(options.after);
    const mxauthor::Comparison comparison = mxauthor::compare(before, after);
    const std::string first = inputName(options.before);
    const std::string second = inputName(options.after);
    writeOutput(options.output,
                options.format == "json"
                    ? text::jsonText(diffJson(comparison, first, second))
                    : diffText(comparison, first, second,
                               options.output == "-" && takesColour(STDOUT_FILENO)));
    return comparison.differences.empty() ? ExitCode::Done : ExitCode::Findings;
}

void addOptions(CLI::App& verb, DiffOptions& options)
{
    verb.add_option("BEFORE", options.before,
                    "The mx file that is in use, or its text form; - for standard input")
        ->required();
    verb.add_option("AFTER", options.after,
                    "The mx file that is to take its place, or its text form")
        ->required();
    acceptOneOf(*verb.add_option("--format", options.format, "text or json"), {"text", "json"});
    verb.add_option("-o,--output", options.output, "Write to this file, - for standard output");
}

} // namespace

void addDiffVerb(CLI::App& program, const GlobalOptions& /*global*/, const VerbChoice& choose)
{
    CLI::App* verb = program.add_subcommand("diff", "Compare what two mx files describe");
    auto options = std::make_shared<DiffOptions>();
    addOptions(*verb, *options);
    verb->footer(diffFooter);
    verb->callback([options, choose] {
        if (options->before == "-" && options->after == "-") {
            throw CLI::ValidationError("AFTER", "standard input can be read once only");
        }
        choose([options] { return diffFiles(*options); });
    });
}

} // namespace mxtool

#include "Diagnostic.h"
#include "InputFile.h"
#include "OutputFile.h"
#include "Verbs.h"
#include <text/Counted.h>

#include <mxauthor/TextForm.h>

#include <fmt/format.h>

namespace mxtool {

namespace {

constexpr const char* dumpFooter = R"(Example:
  $ mxtool dump examples/modules/MX0901.bin
  module:
    type: 8
    id: 0x0e81276d
    datasets:
      - {id: 0x10, data: "0104"}
  catalogue:
    BrandId: "41"
    BrandLabelName: Coupler extension
    BrandVersion: "2.1"
    BrandSerialNumber: "0"
    ProductVersion: "01.02.03"
    BrandOrderCode: K38-901
    BrandHwRevision: "05"
  component:
    Component: kv38-0901 01.02.03
    Creator: mx 3
  extension: {gtin: "20000009010005"}
  channels:
    - {name: Station state, number: 1, in: UInt16}
    - {name: Station command, number: 1, out: UInt16, again: true}
  parameters:
    - {name: Cycle time, at: 0, type: UInt16, default: 2000, range: [500, 65000], unit: µs}
  dataSizes: {Parameter: W}
  texts: {first: 100, step: 7}
  raw:
    - id: 0x20d4
      hex: "000102030405060708090a0b0c0d0e0f101112131415161718191a1b1c1d1e1f2021222324252627"
    - id: 0x7abc
      hex: "7072697661746520646174612c206b657074206173206974206973"
)";

struct DumpOptions
{
    std::string file;
    std::string output = "-";
};

ExitCode dump(const DumpOptions& options)
{
    const mxmodule::ModuleFile input = loadModuleFile(options.file);
    const auto [file, failure] = mxauthor::readDamagedMxFile(input.bytes());
    writeOutput(options.output, mxauthor::dumpText(file));
    if (!failure) {
        return ExitCode::Done;
    }
    const std::size_t readable = input.bytes().size() - file.tail.value.size();
    report({Severity::Warning, input.placeOf(readable), *failure,
            fmt::format("{} from here on {} under \"tail\"",
                        text::counted(file.tail.value.size(), "byte"),
                        file.tail.value.size() == 1 ? "is kept" : "are kept")});
    return ExitCode::Findings;
}

} // namespace

void addDumpVerb(CLI::App& program, const GlobalOptions& /*options*/, const VerbChoice& choose)
{
    CLI::App* verb =
        program.add_subcommand("dump", "Write an mx file as text, for people and for build");
    auto options = std::make_shared<DumpOptions>();
    verb->add_option("FILE", options->file, "The mx file or its text form, - for standard input")
        ->required();
    verb->add_option("-o,--output", options->output, "Write to this file, - for standard output");
    verb->footer(dumpFooter);
    verb->callback([options, choose] { choose([options] { return dump(*options); }); });
}

} // namespace mxtool

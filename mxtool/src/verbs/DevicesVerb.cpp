#include "DatabaseChoice.h"
#include "Diagnostic.h"
#include "OutputFile.h"
#include "ToolObserver.h"
#include "Verbs.h"
#include "verbs/DevicesExport.h"
#include "verbs/DevicesOptions.h"

#include <fmt/format.h>
#include <text/Counted.h>
#include <text/ShownText.h>

namespace mxtool {

namespace {

using mxmodule::Catalogue;

ExitCode reportUnknown(Catalogue& catalogue, const std::string& moduleId)
{
    report(catalogue.unknownModule(moduleId));
    return ExitCode::Findings;
}

// Reports those of `modules` that are stored without a file.
ExitCode exitCodeOf(const std::vector<mxmodule::CatalogueEntry>& modules)
{
    const auto missing = withoutFile(modules);
    report(missing);
    return missing.empty() ? ExitCode::Done : ExitCode::Findings;
}

ExitCode showAll(Catalogue& catalogue, const DevicesOptions& options)
{
    report(catalogue.searchFindings(options.query));
    const auto modules = catalogue.search(options.query);
    const bool isCsv = options.format == "csv";
    writeOutput(options.output, options.format == "json" ? catalogue.json(modules)
                                : isCsv ? catalogueCsv(modules, options.csv.style())
                                        : catalogueTable(modules));
    return exitCodeOf(modules);
}

ExitCode showOne(Catalogue& catalogue, const DevicesOptions& options)
{
    const auto record = catalogue.find(options.moduleId);
    if (!record) {
        return reportUnknown(catalogue, options.moduleId);
    }
    const bool isCsv = options.format == "csv";
    writeOutput(options.output, options.format == "json" ? record->json()
                                : isCsv ? catalogueCsv({record->module}, options.csv.style())
                                        : record->text());
    return exitCodeOf({record->module});
}

ExitCode exportAll(Catalogue& catalogue, const DevicesOptions& options, bool quiet)
{
    const auto modules = catalogue.search(options.query);
    const auto written = exportModules(catalogue, modules, options.exportDirectory);
    const ExitCode end = exitCodeOf(modules);
    if (!quiet) {
        writeOutput("-", fmt::format("{} written to {}\n", text::counted(written, "module"),
                                     text::forTerminal(options.exportDirectory)));
    }
    return written == modules.size() ? end : ExitCode::Findings;
}

ExitCode copyAll(Catalogue& catalogue, const DevicesOptions& options, bool quiet)
{
    Catalogue target = openCatalogueForWriting(options.copyUrl);
    ToolObserver observer;
    const std::size_t copied = catalogue.copyTo(target, catalogue.search(options.query), &observer);
    if (!quiet) {
        writeOutput("-", fmt::format("{} copied to {}\n", text::counted(copied, "module"),
                                     text::forTerminal(target.name())));
    }
    return ExitCode::Done;
}

ExitCode removeOne(Catalogue& catalogue, const DevicesOptions& options, bool quiet)
{
    if (!catalogue.remove(options.removedId)) {
        return reportUnknown(catalogue, options.removedId);
    }
    if (!quiet) {
        writeOutput("-", fmt::format("{} removed\n", text::forTerminal(options.removedId)));
    }
    return ExitCode::Done;
}

ExitCode devices(const DevicesOptions& options, bool quiet)
{
    Catalogue catalogue = openCatalogue(options.databaseUrl);
    if (!options.removedId.empty()) {
        return removeOne(catalogue, options, quiet);
    }
    if (!options.exportDirectory.empty()) {
        return exportAll(catalogue, options, quiet);
    }
    if (!options.copyUrl.empty()) {
        return copyAll(catalogue, options, quiet);
    }
    return options.moduleId.empty() ? showAll(catalogue, options) : showOne(catalogue, options);
}

} // namespace

void addDevicesVerb(CLI::App& program, const GlobalOptions& global, const VerbChoice& choose)
{
    auto options = std::make_shared<DevicesOptions>();
    addDevicesOptions(program, *options)->callback([options, choose, &global] {
        checkWords(*options);
        choose([options, &global] { return devices(*options, global.quiet); });
    });
}

} // namespace mxtool

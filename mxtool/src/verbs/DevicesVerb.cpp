#include "DatabaseChoice.h"
#include "Diagnostic.h"
#include "OutputFile.h"
#include "ToolObserver.h"
#include "Verbs.h"
#include "verbs/DevicesExport.h"
#include "verbs/DevicesLists.h"
#include "verbs/DevicesOptions.h"

#include <fmt/format.h>
#include <text/Counted.h>
#include <text/ShownText.h>

namespace mxtool {

namespace {

using mxmodule::Catalogue;

ExitCode exportAll(Catalogue& catalogue, const DevicesOptions& options, bool quiet)
{
    const mxmodule::CataloguePage page = catalogue.page(options.query);
    const auto written = exportModules(catalogue, page.modules, options.exportDirectory);
    const ExitCode end = reportWithoutFile(page.modules);
    if (!quiet) {
        writeOutput("-", fmt::format("{} written to {}\n", text::counted(written, "module"),
                                     text::forTerminal(options.exportDirectory)));
    }
    reportRest(page, quiet);
    return written == page.modules.size() ? end : ExitCode::Findings;
}

ExitCode copyAll(Catalogue& catalogue, const DevicesOptions& options, bool quiet)
{
    Catalogue target = openCatalogueForWriting(options.copyUrl);
    ToolObserver observer;
    const mxmodule::CataloguePage page = catalogue.page(options.query);
    const std::size_t copied = catalogue.copyTo(target, page.modules, &observer);
    if (!quiet) {
        writeOutput("-", fmt::format("{} copied to {}\n", text::counted(copied, "module"),
                                     text::forTerminal(target.name())));
    }
    reportRest(page, quiet);
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
    if (options.isExplained) {
        return explainSearch(catalogue, options);
    }
    return options.moduleId.empty() ? showAll(catalogue, options, quiet)
                                    : showOne(catalogue, options);
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

#include "verbs/DevicesLists.h"

#include "Diagnostic.h"
#include "OutputFile.h"
#include "verbs/DevicesQuery.h"

#include <fmt/format.h>

namespace mxtool {

using mxmodule::Catalogue;

ExitCode reportUnknown(Catalogue& catalogue, const std::string& moduleId)
{
    report(catalogue.unknownModule(moduleId));
    return ExitCode::Findings;
}

ExitCode reportWithoutFile(const std::vector<mxmodule::CatalogueEntry>& modules)
{
    const auto missing = withoutFile(modules);
    report(missing);
    return missing.empty() ? ExitCode::Done : ExitCode::Findings;
}

void reportRest(const mxmodule::CataloguePage& page, bool quiet)
{
    if (page.hasMore && !quiet) {
        report({Severity::Note, "", "More modules match than --limit allows",
                fmt::format("the next ones: the same call with --after {}",
                            wordOfAfter(page.modules.back()))});
    }
}

ExitCode explainSearch(Catalogue& catalogue, const DevicesOptions& options)
{
    const mxmodule::SearchExplanation explanation = catalogue.explain(options.query);
    writeOutput(options.output, options.format == "json" ? explanation.json() : explanation.text());
    return ExitCode::Done;
}

ExitCode showAll(Catalogue& catalogue, const DevicesOptions& options, bool quiet)
{
    report(catalogue.searchFindings(options.query));
    const mxmodule::CataloguePage page = catalogue.page(options.query);
    const auto& modules = page.modules;
    const bool isCsv = options.format == "csv";
    writeOutput(options.output, options.format == "json" ? catalogue.json(modules)
                                : isCsv ? catalogueCsv(modules, options.csv.style())
                                        : catalogueTable(modules));
    reportRest(page, quiet);
    return reportWithoutFile(modules);
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
    return reportWithoutFile({record->module});
}

} // namespace mxtool

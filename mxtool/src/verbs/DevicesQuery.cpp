#include "verbs/DevicesQuery.h"

#include "Diagnostic.h"

#include <cstdint>
#include <utility>

namespace mxtool {

namespace {

// The module and, before a slash, its family.
std::pair<std::string, std::string> moduleOfAfter(const std::string& word)
{
    const std::size_t slash = word.rfind('/');
    return slash == std::string::npos ? std::pair(word, std::string())
                                      : std::pair(word.substr(slash + 1), word.substr(0, slash));
}

} // namespace

std::vector<CLI::Option*> addQueryOptions(CLI::App& verb, DevicesOptions& options)
{
    auto* const search = verb.add_option(
        "--search", options.search,
        "Only modules with all of these words, separated by blanks, in label, order code, the "
        "names of channels and parameters or the texts of options; the best matches first");
    auto* const where = verb.add_option("--where", options.where,
                                        "Only modules with this property, such as in_bytes>4; may "
                                        "be given several times")
                            ->expected(1)
                            ->take_all();
    auto* const limit =
        verb.add_option("--limit", options.limit, "Only the first modules, this number of them")
            ->type_name("COUNT")
            ->check(CLI::Range(std::uint64_t{1}, std::uint64_t{1000000000000}));
    auto* const after =
        verb.add_option("--after", options.after,
                        "Only modules after this one in the list: MODULE_ID, or FAMILY/MODULE_ID")
            ->type_name("MODULE_ID");
    rejectEmptyValue(*after);
    return {search, where, limit, after};
}

void readQuery(DevicesOptions& options)
{
    try {
        options.query =
            mxmodule::CatalogueQuery(options.search, options.where).limitedTo(options.limit);
    } catch (const Failure& failure) {
        throw CLI::ValidationError("--where", failure.reason().text);
    }
    if (!options.after.empty()) {
        const auto [moduleId, family] = moduleOfAfter(options.after);
        options.query = options.query.after(moduleId, family);
    }
}

std::string wordOfAfter(const mxmodule::CatalogueEntry& module)
{
    return module.family == "kv38" ? module.moduleId : module.family + "/" + module.moduleId;
}

} // namespace mxtool

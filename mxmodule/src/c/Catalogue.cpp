#include "c/FindingList.h"
#include "c/Handles.h"

#include <mxmodule/Population.h>
#include <mxmodule/c/CallFromC.h>
#include <text/JsonText.h>

namespace mxmodule {

namespace {

Catalogue& catalogueOf(mxmodule_catalogue* handle)
{
    return requirePointer(handle, "a catalogue").catalogue;
}

std::string moduleIdOf(const char* text)
{
    return requireText(text, "a module identifier");
}

CatalogueQuery queryOf(const char* words, const char* const* conditions, std::size_t count)
{
    return CatalogueQuery(words == nullptr ? "" : words,
                          requireTexts(conditions, count, "conditions of a search", "a condition"));
}

CatalogueQuery queryOf(const mxmodule_search* search)
{
    const mxmodule_search& stated = requirePointer(search, "a search");
    const CatalogueQuery query =
        queryOf(stated.words, stated.conditions, stated.count).limitedTo(stated.limit);
    return stated.after == nullptr
               ? query
               : query.after(stated.after, stated.family == nullptr ? "" : stated.family);
}

SearchExplanation explanationOf(mxmodule_catalogue* handle, const mxmodule_search* search)
{
    Catalogue& catalogue = catalogueOf(handle);
    return catalogue.explain(queryOf(search));
}

CatalogueRecord recordOf(Catalogue& catalogue, const std::string& moduleId)
{
    std::optional<CatalogueRecord> record = catalogue.find(moduleId);
    if (!record) {
        throw Failure(catalogue.unknownModule(moduleId));
    }
    return std::move(*record);
}

// Passes what happens to the functions of a caller.
class ObserverOfC : public Observer
{
public:
    explicit ObserverOfC(const mxmodule_observer* functions) : called(functions) {}

    void notice(const Finding& finding) override
    {
        if (called != nullptr && called->notice != nullptr) {
            requireGoingOn(called->notice(called->context, findingsJson({finding}).c_str()));
        }
    }

    void progress(std::size_t done, std::size_t total, const char*) override
    {
        if (called != nullptr && called->progress != nullptr) {
            requireGoingOn(called->progress(called->context, done, total));
        }
    }

    std::string logLevel() const override { return "none"; }

private:
    static void requireGoingOn(int answer)
    {
        if (answer != 0) {
            throw Failure(Origin::Request, "", "The caller ended the operation");
        }
    }

    const mxmodule_observer* called;
};

text::Json entryJson(const CatalogueEntry& module)
{
    return {{"module_id", module.moduleId}, {"family", module.family}, {"label", module.label}};
}

std::string populationJson(const Population& population)
{
    return text::jsonText({{"schema", text::jsonSchema("mxmodule.population", 1)},
                           {"inserted", population.inserted},
                           {"replaced", population.replaced},
                           {"failed", population.failed},
                           {"removed", text::listJson(population.removed, entryJson)},
                           {"findings", findingList(population.findings)}});
}

} // namespace

} // namespace mxmodule

using mxmodule::callFromC;
using mxmodule::catalogueOf;
using mxmodule::newBytes;

mxmodule_catalogue* mxmodule_catalogue_open(const char* url, int create, mxmodule_error** error)
{
    using mxmodule::Catalogue;
    return callFromC(error, [&] {
        const std::string stated = url == nullptr ? "" : url;
        return new mxmodule_catalogue{create != 0 ? Catalogue::openOrCreate(stated)
                                                  : Catalogue::open(stated)};
    });
}

void mxmodule_catalogue_free(mxmodule_catalogue* catalogue)
{
    delete catalogue;
}

mxmodule_bytes* mxmodule_catalogue_name(const mxmodule_catalogue* catalogue, mxmodule_error** error)
{
    return mxmodule::bytesOfHandle(
        catalogue, "a catalogue", error,
        [](const mxmodule_catalogue& one) { return one.catalogue.name(); });
}

mxmodule_bytes* mxmodule_catalogue_search(mxmodule_catalogue* catalogue, const char* words,
                                          const char* const* conditions, size_t count,
                                          mxmodule_error** error)
{
    return callFromC(error, [&] {
        mxmodule::Catalogue& searched = catalogueOf(catalogue);
        return newBytes(
            searched.json(searched.search(mxmodule::queryOf(words, conditions, count))));
    });
}

mxmodule_bytes* mxmodule_catalogue_search_page(mxmodule_catalogue* catalogue,
                                               const mxmodule_search* search, int* hasMore,
                                               mxmodule_error** error)
{
    return callFromC(error, [&] {
        mxmodule::Catalogue& searched = catalogueOf(catalogue);
        const mxmodule::CataloguePage page = searched.page(mxmodule::queryOf(search));
        if (hasMore != nullptr) {
            *hasMore = page.hasMore ? 1 : 0;
        }
        return newBytes(searched.json(page.modules));
    });
}

mxmodule_bytes* mxmodule_catalogue_explain_json(mxmodule_catalogue* catalogue,
                                                const mxmodule_search* search,
                                                mxmodule_error** error)
{
    return callFromC(error,
                     [&] { return newBytes(mxmodule::explanationOf(catalogue, search).json()); });
}

mxmodule_bytes* mxmodule_catalogue_explain_text(mxmodule_catalogue* catalogue,
                                                const mxmodule_search* search,
                                                mxmodule_error** error)
{
    return callFromC(error,
                     [&] { return newBytes(mxmodule::explanationOf(catalogue, search).text()); });
}

mxmodule_bytes* mxmodule_catalogue_search_findings(mxmodule_catalogue* catalogue, const char* words,
                                                   const char* const* conditions, size_t count,
                                                   mxmodule_error** error)
{
    return callFromC(error, [&] {
        return newBytes(mxmodule::findingsJson(
            catalogueOf(catalogue).searchFindings(mxmodule::queryOf(words, conditions, count))));
    });
}

mxmodule_bytes* mxmodule_catalogue_find(mxmodule_catalogue* catalogue, const char* moduleId,
                                        mxmodule_error** error)
{
    return callFromC(error, [&] {
        return newBytes(
            mxmodule::recordOf(catalogueOf(catalogue), mxmodule::moduleIdOf(moduleId)).json());
    });
}

mxmodule_bytes* mxmodule_catalogue_file(mxmodule_catalogue* catalogue, const char* moduleId,
                                        mxmodule_error** error)
{
    return callFromC(error, [&] {
        return newBytes(
            mxmodule::recordOf(catalogueOf(catalogue), mxmodule::moduleIdOf(moduleId)).file);
    });
}

mxmodule_module* mxmodule_catalogue_module(mxmodule_catalogue* catalogue, const char* moduleId,
                                           uint32_t inputOffset, uint32_t outputOffset,
                                           mxmodule_error** error)
{
    return callFromC(error, [&] {
        mxmodule::ModuleOptions options;
        options.offsets = {inputOffset, outputOffset};
        return mxmodule::newModule(
            catalogueOf(catalogue).module(mxmodule::moduleIdOf(moduleId), options));
    });
}

int mxmodule_catalogue_remove(mxmodule_catalogue* catalogue, const char* moduleId,
                              mxmodule_error** error)
{
    return callFromC(error, [&] {
        mxmodule::Catalogue& changed = catalogueOf(catalogue);
        const std::string stated = mxmodule::moduleIdOf(moduleId);
        if (!changed.remove(stated)) {
            throw mxmodule::Failure(changed.unknownModule(stated));
        }
        return 1;
    });
}

mxmodule_bytes* mxmodule_catalogue_populate(mxmodule_catalogue* catalogue, const char* directory,
                                            int replace, const mxmodule_observer* observer,
                                            mxmodule_error** error)
{
    return callFromC(error, [&] {
        mxmodule::ObserverOfC told(observer);
        mxmodule::PopulateOptions options;
        options.replace = replace != 0;
        const mxmodule::MxDirectory files = mxmodule::listMxDirectory(
            mxmodule::requireText(directory, "the path of a directory"), &told);
        return newBytes(mxmodule::populationJson(
            mxmodule::populate(files, catalogueOf(catalogue), options, &told)));
    });
}

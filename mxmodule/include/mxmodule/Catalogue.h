#pragma once

#include "mxmodule/CsvStyle.h"
#include "mxmodule/Finding.h"
#include "mxmodule/Module.h"
#include "mxmodule/Observer.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace mxmodule {

/// A module of a catalogue, as in lists. `moduleId` and `family` are the bytes of the record.
struct CatalogueEntry
{
    std::string moduleId;            ///< Eight lower-case hexadecimal digits.
    std::string family;              ///< Such as "kv38".
    std::string label;               ///< Printed on the module, UTF-8.
    std::uint32_t inputSize = 0;     ///< Input process data, in bytes.
    std::uint32_t outputSize = 0;    ///< Output process data, in bytes.
    std::uint64_t parameterSize = 0; ///< Default parameter block, in bytes.
    std::uint64_t fileSize = 0;      ///< The mx file, in bytes; 0: stored without it.
    bool hasContent = false;         ///< Searches know its channels and parameters.
};

/// Returns the name of the file for the mx file of `module`: "MX", the module identifier and
/// ".bin", so that populating from its directory finds it. A family other than "kv38" follows the
/// identifier; bytes other than letters, digits, "-" and "_" become %XX.
MXMODULE_API std::string exportName(const CatalogueEntry& module);

/// Returns `modules` as a table for people.
MXMODULE_API std::string catalogueTable(const std::vector<CatalogueEntry>& modules);

/// Returns `modules` as CSV, a line for each.
MXMODULE_API std::string catalogueCsv(const std::vector<CatalogueEntry>& modules,
                                      const CsvStyle& style = {});

/// Returns a warning that names those of `modules` that are stored without an mx file; nothing if
/// there are none.
MXMODULE_API std::vector<Finding> withoutFile(const std::vector<CatalogueEntry>& modules);

/// All that a catalogue has of one module.
struct CatalogueRecord
{
    CatalogueEntry module;            ///< As in lists.
    std::vector<char> parameterBlock; ///< The default parameter block.
    std::vector<char> file;           ///< The mx file, byte for byte; empty: stored without it.
    std::vector<char> hostData;       ///< Bytes that a host keeps with the record.

    MXMODULE_API std::string text() const; ///< As a table for people.
    MXMODULE_API std::string json() const; ///< Schema "mxtool.device-record" version 1.
};

/// A property of modules that a condition of a search may name.
struct ConditionField
{
    std::string name;      ///< In conditions.
    bool isNumber = false; ///< Compared as a whole number, otherwise as a text.
    std::string meaning;   ///< For help texts.
    /// The operators that a condition may use with it, the most useful one first.
    std::vector<std::string> comparisons = {};
};

/// Returns the properties that a condition may name.
MXMODULE_API std::vector<ConditionField> conditionFields();

/// Which modules of a catalogue are searched for.
class MXMODULE_API CatalogueQuery
{
public:
    /// All modules.
    CatalogueQuery();

    /// The modules that have each of `words`, which are separated by blanks, in the label, the
    /// order code, the name of a channel or parameter or the text of an option, as a part of any
    /// length, whatever the case and the accents; and that meet each of `conditions`: a field, one
    /// of = != < <= > >= or, for texts, ~ (contains), and a value, such as "in_bytes>4" or "label ~
    /// DI". Blanks are part of a text, except those around the operator of "FIELD = TEXT". Throws a
    /// `Failure` of `Origin::Request` for another text.
    explicit CatalogueQuery(const std::string& words,
                            const std::vector<std::string>& conditions = {});

    /// Returns this query for its first `count` modules; 0: for all.
    CatalogueQuery limitedTo(std::size_t count) const;

    /// Returns this query for the modules that come after `moduleId` in its order. Without `family`
    /// the module is that of family "kv38", or of the first family that has it.
    CatalogueQuery after(const std::string& moduleId, const std::string& family = {}) const;

    /// Copying and moving share the content.
    CatalogueQuery(const CatalogueQuery&) = default;
    /// The same.
    CatalogueQuery& operator=(const CatalogueQuery&) = default;
    ~CatalogueQuery() = default;

private:
    friend class Catalogue;
    struct Content;
    explicit CatalogueQuery(std::shared_ptr<const Content> content);
    std::shared_ptr<const Content> content;
};

/// A part of the modules that match a query.
struct CataloguePage
{
    std::vector<CatalogueEntry> modules; ///< In the order of the query.
    bool hasMore = false;                ///< Modules that match come after them.
};

/// How a catalogue carries a search out, for people who wonder why it takes its time.
struct SearchExplanation
{
    /// Where the modules come from.
    enum class Source
    {
        Index, ///< The search index: modules that may match, each of which is compared.
        Order, ///< All modules in their order, each compared until there are enough.
        Scan   ///< All modules: the database is of a version without an index.
    };

    Source source = Source::Order;       ///< Where they come from.
    std::vector<std::string> words = {}; ///< As they are compared: without case and accents.
    std::vector<std::string> parts = {}; ///< Looked up in the index.
    std::size_t blocks = 0;              ///< Of the index, each of up to 1,024 modules.
    std::size_t candidates = 0;          ///< Modules that the index names.
    std::size_t notIndexed = 0;          ///< Modules newer than the index: all are compared.
    std::string sql = {};                ///< The statement that reads modules.

    MXMODULE_API std::string text() const; ///< As sentences for people.
    MXMODULE_API std::string json() const; ///< Schema "mxtool.search-explanation" version 1.
};

/// A catalogue: a device database with the records of modules, their mx files, and tables of their
/// channels and parameters.
///
/// An object must not be used by two threads at once; each thread, and each process, may have one
/// of its own of the same database. A `Failure` with `Origin::Output` states what the database
/// could not do; nothing is changed then.
class MXMODULE_API Catalogue
{
public:
    /// Opens the existing catalogue at `url`: "sqlite:PATH", or "postgresql:CONNECTION", a libpq
    /// connection string or URL; empty: `defaultUrl`. Creates nothing.
    static Catalogue open(const std::string& url = {});

    /// Opens the catalogue at `url`, as above or "sqlite::memory:", and creates what is missing.
    static Catalogue openOrCreate(const std::string& url = {});

    /// Returns the value of the environment variable DEVICE_DATABASE_URL, else
    /// "sqlite:devices.sqlite".
    static std::string defaultUrl();

    /// Moves the open catalogue; `other` can only be assigned to or destroyed then.
    Catalogue(Catalogue&& other) noexcept;
    /// The same; what was open before is closed.
    Catalogue& operator=(Catalogue&& other) noexcept;
    ~Catalogue();

    /// Returns the name in messages: engine, host and database, never a password.
    const std::string& name() const;

    /// Returns the modules that match `query`. The best matches are the first: those with all words
    /// in label and order code, then those that need names of channels too, then of parameters,
    /// then texts of options; equally good ones, and all without words, are ordered by family and
    /// module identifier. Throws a `Failure` of `Origin::Request` if the module after which the
    /// list is to go on is unknown, or not in the list.
    std::vector<CatalogueEntry> search(const CatalogueQuery& query = {});

    /// As above; calls `take` with each module as soon as it is found, until it returns false.
    /// `take` must not use this object; what it throws ends the search.
    void search(const CatalogueQuery& query,
                const std::function<bool(const CatalogueEntry&)>& take);

    /// As above; returns the modules up to the limit of `query`, and whether there are more.
    CataloguePage page(const CatalogueQuery& query);

    /// Returns how `query` is carried out.
    SearchExplanation explain(const CatalogueQuery& query);

    /// Returns a warning if `query` may miss modules: those without content. Nothing if it selects
    /// all.
    std::vector<Finding> searchFindings(const CatalogueQuery& query);

    /// Returns the record of the module with the identifier `moduleId`, if there is one.
    std::optional<CatalogueRecord> find(const std::string& moduleId);

    /// Returns the error that there is no module `moduleId`; its hint names those that there are,
    /// `accepted` has the nearest.
    Finding unknownModule(const std::string& moduleId);

    /// Removes the module with the identifier `moduleId`. Returns whether there was one.
    bool remove(const std::string& moduleId);

    /// Makes the module with the identifier `moduleId` from its stored mx file. Throws a `Failure`
    /// if it is unknown, stored without the file, or cannot be translated.
    Module module(const std::string& moduleId, const ModuleOptions& options = {});

    /// Returns `modules` with their parameter blocks as JSON, schema "mxtool.devices" version 1.
    std::string json(const std::vector<CatalogueEntry>& modules);

    /// Calls `visitor` with the mx file, byte for byte as it was read, of each of `modules` that
    /// still exists and has one. Returns how many these are.
    std::size_t
    visitFiles(const std::vector<CatalogueEntry>& modules,
               const std::function<void(const CatalogueEntry&, const std::vector<char>&)>& visitor,
               Observer* observer = nullptr);

    /// Copies those of `modules` that still exist to `target`, in one transaction. Returns how many
    /// these are.
    std::size_t copyTo(Catalogue& target, const std::vector<CatalogueEntry>& modules,
                       Observer* observer = nullptr);

private:
    friend class PopulationRun;
    struct Content;
    explicit Catalogue(std::unique_ptr<Content> content);
    std::unique_ptr<Content> content;
};

} // namespace mxmodule

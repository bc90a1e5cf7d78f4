#include "DatabaseChoice.h"
#include "Diagnostic.h"
#include "LogToDiagnostics.h"
#include "OutputFile.h"
#include "Verbs.h"

#include <devices/parser/mx/Parser_kv38.h>

#include <fmt/format.h>

#include <filesystem>

namespace mxtool {

namespace {

constexpr const char* footer = R"(Example:
  $ mxtool populate examples/modules --db sqlite:/tmp/devices.sqlite
  error: File MX9999.bin: Parser::parse(): Truncated mx buffer
  38 modules inserted, 1 failed
)";

struct PopulateOptions
{
    std::string directory;
    std::string databaseUrl;
};

// The library takes an unreadable directory for an empty one; a person is told.
void requireReadable(const std::string& directory)
{
    std::error_code error;
    const std::filesystem::directory_iterator entries(directory, error);
    if (error) {
        throw Failure(ExitCode::Input,
                      {"error", directory, "Cannot read the directory: " + error.message(), ""});
    }
}

std::string closingLine(unsigned inserted, unsigned failed)
{
    return fmt::format("{} {} inserted, {} failed\n", inserted,
                       inserted == 1 ? "module" : "modules", failed);
}

// Inserts the records of the directory, all or none. Returns how many were inserted.
unsigned populateAtOnce(const std::string& directory, devices::database::DeviceDatabase& database,
                        devices::parser::mx::Parser_kv38& parser)
{
    try {
        auto transaction = database.beginTransaction();
        unsigned inserted = 0;
        try {
            inserted = parser.populateDatabase(directory);
        } catch (const std::runtime_error& failure) {
            throw Failure(ExitCode::Input,
                          {"error", directory, failure.what(), "the database is unchanged"});
        }
        transaction.commit();
        return inserted;
    } catch (const Failure&) {
        throw;
    } catch (const std::runtime_error& failure) {
        throw Failure(ExitCode::Output, {"error", "", failure.what(), "the database is unchanged"});
    }
}

ExitCode populate(const PopulateOptions& options, const GlobalOptions& global)
{
    requireReadable(options.directory);
    auto& database = useDatabaseForWriting(options.databaseUrl);
    devices::parser::mx::Parser_kv38 parser;
    const LogToDiagnostics log(global.logLevel);
    const unsigned inserted = populateAtOnce(options.directory, database, parser);
    const unsigned failed = log.errorLines();
    if (!global.quiet) {
        writeOutput("-", closingLine(inserted, failed));
    }
    return failed == 0 ? ExitCode::Done : ExitCode::Findings;
}

} // namespace

void addPopulateVerb(CLI::App& program, const GlobalOptions& global, const VerbChoice& choose)
{
    CLI::App* verb =
        program.add_subcommand("populate", "Insert every mx file of a directory into a database");
    auto options = std::make_shared<PopulateOptions>();
    verb->add_option("DIRECTORY", options->directory, "Holds the files MX*.bin")->required();
    verb->add_option("--db", options->databaseUrl,
                     "Database URL, sqlite:PATH; without it the one of DEVICE_DATABASE_URL, else "
                     "sqlite:devices.sqlite")
        ->type_name("URL");
    verb->footer(footer);
    verb->callback([options, choose, &global] {
        choose([options, &global] { return populate(*options, global); });
    });
}

} // namespace mxtool

#pragma once

#include "Diagnostic.h"
#include "FilePlace.h"

#include <string>
#include <vector>

namespace mxtool {

/// The input and output files of one run of the program. An output that is also an input, and two
/// outputs that are the same file, would lose data: both are rejected.
///
/// The functions that open files register them here (`loadBytes`, `openCatalogue`, `writeOutput`,
/// the `ToolObserver`); verbs need not. After one rejected output every further output is
/// rejected.
class FilesInUse
{
public:
    /// `overwrite`: an output may replace a file of another kind.
    explicit FilesInUse(bool overwrite = false) : mayOverwrite(overwrite) {}

    /// Registers the file at `path` as an input, "-" for standard input. Throws a `Failure` when it
    /// is also an output (standard output counts), and when standard input was read before.
    void addInput(const std::string& path);

    /// Registers the database at `url` as an input; for SQLite also the files that it keeps beside
    /// it.
    void addInputDatabase(const std::string& url);

    /// Registers the files at `paths` as outputs, "-" for standard output. Throws a `Failure`
    /// naming the first that is an input or another output. Called once, before the first file is
    /// written: a second call asserts.
    void addOutputs(const std::vector<std::string>& paths);

    /// Registers the database at `url` as an output.
    void addOutputDatabase(const std::string& url);

    /// Returns whether --overwrite was given.
    bool overwrites() const { return mayOverwrite; }

private:
    struct Entry
    {
        std::string name; // for diagnostics
        FilePlace place;
    };

    static std::vector<Entry> entriesOfDatabase(const std::string& url);
    void addInputEntry(Entry input);
    void requireUnreadStandardInput();
    void requireOutput(const Entry& output);
    [[noreturn]] void reject(const std::string& output, const std::string& text,
                             const std::string& hint);
    [[noreturn]] void rejectInput(const std::string& output, const std::string& input);
    [[noreturn]] void rejectDuplicate(const std::string& output, const std::string& other);

    bool mayOverwrite;
    bool namedFiles = false; // whether outputs were registered
    bool readsStandardInput = false;
    std::vector<Entry> inputs;
    std::vector<Entry> outputs;
    std::optional<Failure> rejection; // of the first rejected output
};

/// Returns the files of this process.
FilesInUse& filesInUse();

} // namespace mxtool

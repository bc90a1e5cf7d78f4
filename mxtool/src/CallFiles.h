#pragma once

#include "Diagnostic.h"
#include "FilePlace.h"

#include <string>
#include <vector>

namespace mxtool {

/// The files that one call of the program reads and writes: an output that is an input as well, or
/// two outputs that are one file, would lose what was there, so each is refused.
///
/// Whatever opens a file says so here: `loadInput` and its like, the database's options,
/// `writeOutput`. A verb has nothing to do for it. After a refusal each output is refused.
class CallFiles
{
public:
    /// `overwrite`: content of one kind may replace that of another.
    explicit CallFiles(bool overwrite = false) : mayOverwrite(overwrite) {}

    /// Says that the file at `path` is an input, "-" for standard input. Throws a `Failure` when it
    /// is an output too, standard output included, and for standard input when it was read already.
    void addInput(const std::string& path);

    /// Says that the database at `url` is read. An SQLite file has further ones beside it.
    void addInputDatabase(const std::string& url);

    /// Says that the files at `paths` are written, "-" for standard output. Throws a `Failure`
    /// naming the first that is an input or another output. A call that writes files says so once,
    /// before the first is written: saying it again asserts.
    void addOutputs(const std::vector<std::string>& paths);

    /// Says that the database at `url` is changed.
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
    [[noreturn]] void refuse(const std::string& output, const std::string& text,
                             const std::string& hint);
    [[noreturn]] void refuseInput(const std::string& output, const std::string& input);
    [[noreturn]] void refuseSecond(const std::string& output, const std::string& other);

    bool mayOverwrite;
    bool namedFiles = false; // as outputs
    bool readsStandardInput = false;
    std::vector<Entry> inputs;
    std::vector<Entry> outputs;
    std::optional<Failure> refusal; // for a verb that goes on after it
};

/// Returns the files of the call that this process runs.
CallFiles& callFiles();

} // namespace mxtool

#include "FilesInUse.h"

#include <mxmodule/ReplaceFile.h>

#include <unistd.h>

#include <cassert>

namespace mxtool {

namespace {

const std::string fileScheme = "sqlite:";
const std::string standardInput = "<standard input>";
const std::string standardOutput = "<standard output>";

} // namespace

void FilesInUse::reject(const std::string& output, const std::string& text, const std::string& hint)
{
    rejection.emplace(Origin::Request, output, text + "; nothing is written", hint);
    throw Failure(*rejection);
}

void FilesInUse::rejectInput(const std::string& output, const std::string& input)
{
    const std::string which = output == input ? "an input of this call" : "the input " + input;
    reject(output, "The output is also " + which + ", which would be lost", "name another output");
}

void FilesInUse::rejectDuplicate(const std::string& output, const std::string& other)
{
    const std::string which = output == other ? "this one" : "this one and " + other;
    reject(output, "Two outputs of this call are the same file, " + which,
           other == standardOutput ? "-o - writes to standard output, without it name another file"
                                   : "name a separate file for each");
}

void FilesInUse::addInputEntry(Entry input)
{
    if (FilePlace::ofDescriptor(STDOUT_FILENO).isSameAs(input.place)) {
        rejectInput(standardOutput, input.name);
    }
    for (const Entry& output : outputs) {
        if (output.place.isSameAs(input.place)) {
            rejectInput(output.name, input.name);
        }
    }
    inputs.push_back(std::move(input));
}

// Reading it again gives no bytes, like an empty file.
void FilesInUse::requireUnreadStandardInput()
{
    if (readsStandardInput) {
        throw Failure(Origin::Request, standardInput, "Two inputs of this call are standard input",
                      "name a file for one of them");
    }
    readsStandardInput = true;
}

void FilesInUse::addInput(const std::string& path)
{
    if (path == "-") {
        requireUnreadStandardInput();
        addInputEntry({standardInput, FilePlace::ofDescriptor(STDIN_FILENO)});
    } else {
        addInputEntry({path, FilePlace::ofPath(path)});
    }
}

// Does not show a password in the URL of a server.
std::vector<FilesInUse::Entry> FilesInUse::entriesOfDatabase(const std::string& url)
{
    if (url.compare(0, fileScheme.size(), fileScheme) != 0) {
        return {{"the server's database", FilePlace::ofName(url)}};
    }
    const std::string path = url.substr(fileScheme.size());
    if (path == ":memory:") {
        return {}; // each is a database of its own
    }
    std::vector<Entry> entries = {{path, FilePlace::ofPath(path)}};
    for (const char* beside : {"-wal", "-shm", "-journal"}) {
        const std::string name = mxmodule::followLinks(path) + beside;
        entries.push_back({name, FilePlace::ofPath(name)});
    }
    return entries;
}

void FilesInUse::addInputDatabase(const std::string& url)
{
    for (Entry& entry : entriesOfDatabase(url)) {
        addInputEntry(std::move(entry));
    }
}

void FilesInUse::requireOutput(const Entry& output)
{
    for (const Entry& input : inputs) {
        if (input.place.isSameAs(output.place)) {
            rejectInput(output.name, input.name);
        }
    }
    for (const Entry& other : outputs) {
        if (other.place.isSameAs(output.place)) {
            rejectDuplicate(output.name, other.name);
        }
    }
}

void FilesInUse::addOutputs(const std::vector<std::string>& paths)
{
    if (rejection) {
        throw Failure(*rejection);
    }
    const bool again = namedFiles;
    for (const std::string& path : paths) {
        if (path == "-") {
            continue; // checked against each file that is added
        }
        assert(!again && "a verb names all files that it writes before it writes one");
        Entry output{path, FilePlace::ofPath(path)};
        requireOutput(output);
        if (FilePlace::ofDescriptor(STDOUT_FILENO).isSameAs(output.place)) {
            rejectDuplicate(path, standardOutput);
        }
        outputs.push_back(std::move(output));
        namedFiles = true;
    }
}

void FilesInUse::addOutputDatabase(const std::string& url)
{
    for (Entry& entry : entriesOfDatabase(url)) {
        requireOutput(entry);
        outputs.push_back(std::move(entry));
    }
}

FilesInUse& filesInUse()
{
    static FilesInUse files;
    return files;
}

} // namespace mxtool

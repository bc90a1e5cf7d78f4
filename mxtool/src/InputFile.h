#pragma once

#include <mxmodule/ModuleFile.h>

#include <functional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace mxtool {

/// Adds FILE to `verb`: an mx file or its text form. `file` must outlive the parsing.
void addModuleFile(CLI::App& verb, std::string& file);

/// Returns the bytes of the file at `path`, of standard input for "-". Throws a `Failure` naming
/// the file and the reason.
std::vector<char> loadBytes(const std::string& path);

/// Returns the bytes of the file at `path`, which the verb writes as well: it is no input whose
/// loss is to be prevented. Throws a `Failure`, also for a pipe or a device, which cannot be
/// replaced.
std::vector<char> loadBytesToReplace(const std::string& path);

/// Returns the mx file at `path` ("-": standard input), built if it is a text form. Every verb
/// reads modules through this function. Throws a `Failure`.
mxmodule::ModuleFile loadModuleFile(const std::string& path);

/// Runs `reading`. A `Failure` about an input is reported and does not end the verb, so that the
/// other inputs are read as well. Returns whether there was none.
bool readsOrReports(const std::function<void()>& reading);

/// Returns the name of the input for messages: its path, "<standard input>" for "-".
std::string inputName(const std::string& path);

} // namespace mxtool

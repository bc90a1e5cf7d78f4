#include "InputFile.h"

#include "Diagnostic.h"
#include "FilesInUse.h"
#include "ToolObserver.h"

#include <mxmodule/ReadFile.h>

#include <CLI/CLI.hpp>

#include <filesystem>
#include <iostream>
#include <iterator>

namespace mxtool {

void addModuleFile(CLI::App& verb, std::string& file)
{
    verb.add_option("FILE", file, "The mx file or its text form, - for standard input")->required();
}

std::vector<char> loadBytes(const std::string& path)
{
    filesInUse().addInput(path);
    if (path == "-") {
        return {std::istreambuf_iterator<char>(std::cin), {}};
    }
    return mxmodule::readFile(path);
}

std::vector<char> loadBytesToReplace(const std::string& path)
{
    std::error_code ignored;
    if (std::filesystem::is_fifo(path, ignored) ||
        std::filesystem::is_character_file(path, ignored)) {
        throw Failure(Origin::Request, path, "The file is a pipe or a device, not to be replaced",
                      "name an output with -o, - for standard output");
    }
    return mxmodule::readFile(path);
}

mxmodule::ModuleFile loadModuleFile(const std::string& path)
{
    ToolObserver observer;
    return mxmodule::ModuleFile(inputName(path), loadBytes(path), &observer);
}

bool readsOrReports(const std::function<void()>& reading)
{
    try {
        reading();
        return true;
    } catch (const Failure& failure) {
        if (failure.reason().origin != Origin::Input) {
            throw;
        }
        report(failure.findings());
        return false;
    }
}

std::string inputName(const std::string& path)
{
    return path == "-" ? "<standard input>" : path;
}

} // namespace mxtool

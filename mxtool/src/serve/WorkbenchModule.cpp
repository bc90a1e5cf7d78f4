#include "serve/WorkbenchModule.h"

#include "Diagnostic.h"

#include <mxmodule/FileKind.h>

#include <Poco/Exception.h>
#include <Poco/SharedLibrary.h>

#include <filesystem>
#include <string>

#include <dlfcn.h>

namespace mxtool {

namespace {

constexpr const char* moduleName = "libmx-workbench.so";
constexpr const char* installHint = "install the package mx-workbench of the same version";

[[noreturn]] void rejectModule(const std::string& reason)
{
    throw Failure(Origin::Output, "", "the page cannot be served: " + reason, installHint);
}

// The folder "mxtool" beside the libraries of the program.
std::filesystem::path moduleFolder()
{
    Dl_info library{};
    std::error_code ignored;
    if (dladdr(reinterpret_cast<const void*>(&mxmodule::nameOf), &library) == 0 ||
        library.dli_fname == nullptr) {
        return "mxtool";
    }
    return std::filesystem::canonical(library.dli_fname, ignored).parent_path() / "mxtool";
}

workbench::StartWorkbench loadModule()
{
    const std::filesystem::path folder = moduleFolder();
    const std::string path = (folder / moduleName).string();
    std::error_code ignored;
    if (!std::filesystem::exists(path, ignored)) {
        rejectModule(moduleName + (" is not in " + folder.string()));
    }
    try {
        Poco::SharedLibrary library(path); // stays loaded when this object is destroyed
        if (*static_cast<const int*>(library.getSymbol("workbenchModuleVersion")) !=
            workbench::moduleVersion) {
            rejectModule(path + " is of another version");
        }
        return reinterpret_cast<workbench::StartWorkbench>(library.getSymbol("startWorkbench"));
    } catch (const Poco::Exception& failure) {
        rejectModule(path + " cannot be loaded: " + failure.message());
    }
}

} // namespace

std::unique_ptr<workbench::Server> startWorkbench(const workbench::Options& options)
{
    static const workbench::StartWorkbench start = loadModule();
    return std::unique_ptr<workbench::Server>(start(options));
}

} // namespace mxtool

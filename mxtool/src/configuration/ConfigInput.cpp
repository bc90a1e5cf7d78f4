#include "configuration/ConfigInput.h"

#include "InputFile.h"

#include <mxmodule/WantedValues.h>

#include <filesystem>
#include <utility>

namespace mxtool {

namespace {

using mxmodule::Module;
using mxmodule::WantedValues;

std::string textOfFile(const std::string& path)
{
    const std::vector<char> bytes = loadBytes(path);
    return {bytes.begin(), bytes.end()};
}

WantedValues wantedValues(const ConfigOptions& options, const Module& module)
{
    WantedValues wanted(module);
    for (const std::string& file : options.valuesFiles) {
        wanted.add(mxmodule::readValues(textOfFile(file), inputName(file)), inputName(file));
    }
    wanted.add(options.set, "--set", options.check());
    return wanted;
}

// How values are written: into which image, how strictly.
mxmodule::ComposeOptions composeOptions(const ConfigOptions& options, const WantedValues& wanted,
                                        const Module& module)
{
    const std::string& blockFile = options.module.parameterBlockFile;
    if (!blockFile.empty() && wanted.image()) {
        throw Failure(Origin::Request, "--param-block " + blockFile,
                      wanted.imageFile() + " also has an image to write values into",
                      "leave one of them out; a file of --format values has no image");
    }
    if (!blockFile.empty()) {
        return {options.check(), loadBytes(blockFile), inputName(blockFile)};
    }
    return {options.check(), wanted.image(), wanted.image() ? wanted.imageFile() : module.name()};
}

mxmodule::ReadImage imageOfWords(const ConfigOptions& options, const Module& module)
{
    try {
        return module.imageOfWords(options.imageWords(), options.fieldbusOfBytes(),
                                   options.imageOption());
    } catch (const Failure& failure) {
        Finding reason = failure.reason();
        if (reason.origin == Origin::Request && reason.hint.empty()) {
            reason.text += ", or the name of an existing file";
        }
        throw Failure(reason);
    }
}

mxmodule::ReadImage readImage(const ConfigOptions& options, const Module& module)
{
    const std::string& words = options.imageWords();
    std::error_code ignored;
    if (words == "-" || std::filesystem::exists(words, ignored)) {
        return module.imageOfFile(loadBytes(words), inputName(words), options.fieldbusOfBytes(),
                                  options.imageOption());
    }
    return imageOfWords(options, module);
}

} // namespace

mxmodule::Configuration composedConfiguration(const ConfigOptions& options, const Module& module)
{
    const WantedValues wanted = wantedValues(options, module);
    const mxmodule::ComposeOptions how = composeOptions(options, wanted, module);
    const mxmodule::Composition made = module.compose(wanted.assignments(), how);
    if (!made.ok()) {
        throw Failure(made.findings);
    }
    const mxmodule::Configuration configuration =
        module.configuration(made.image, options.fieldbusOfBytes(), how.imagePlace);
    report(made.findings);
    report(configuration.findings());
    return configuration;
}

std::vector<char> imageOfCall(const ConfigOptions& options, const Module& module, bool quiet)
{
    mxmodule::ReadImage read = readImage(options, module);
    if (!quiet) {
        report(read.findings);
    }
    return std::move(read.image);
}

} // namespace mxtool

#include "ModuleChoice.h"

#include "CommandLineOptions.h"
#include "Diagnostic.h"
#include "InputFile.h"
#include "ToolObserver.h"

#include <CLI/CLI.hpp>

namespace mxtool {

void addModuleChoice(CLI::App& verb, ModuleChoice& choice)
{
    addModuleFile(verb, choice.file);
    CLI::Option* const block =
        verb.add_option("--param-block", choice.parameterBlockFile,
                        "File whose bytes replace the default parameter block");
    block->type_name("FILE");
    rejectEmptyValue(*block);
}

void addPlacedModuleChoice(CLI::App& verb, ModuleChoice& choice)
{
    addModuleChoice(verb, choice);
    addOffsetOption(verb, "--in-offset", choice.offsets.input,
                    "Byte of the input image at which the module's data begins");
    addOffsetOption(verb, "--out-offset", choice.offsets.output,
                    "Byte of the output image at which the module's data begins");
}

mxmodule::Module loadModule(const ModuleChoice& choice, const std::string& logLevel)
{
    ToolObserver observer(logLevel);
    mxmodule::ModuleOptions options;
    options.offsets = choice.offsets;
    options.observer = &observer;
    if (!choice.parameterBlockFile.empty()) {
        options.parameterBlock = loadBytes(choice.parameterBlockFile);
        options.parameterBlockPlace = inputName(choice.parameterBlockFile);
    }
    const mxmodule::Module module(loadModuleFile(choice.file), options);
    report(module.offsetFindings("--in-offset", "--out-offset"));
    return module;
}

} // namespace mxtool

#pragma once

#include <mxmodule/Module.h>
#include <mxmodule/ReadFile.h>

#include <string>
#include <vector>

/// Returns the bytes of the example module `name`, such as "MX0304.bin".
inline std::vector<char> exampleBytes(const std::string& name)
{
    return mxmodule::readFile(std::string(EXAMPLE_MODULES) + "/" + name);
}

/// Returns the example module `name`, made of bytes that are gone.
inline mxmodule::Module exampleModule(const std::string& name,
                                      const mxmodule::ModuleOptions& options = {})
{
    return mxmodule::Module::fromBytes(exampleBytes(name), name, options);
}

#include "c/Handles.h"

#include <mxmodule/Check.h>
#include <mxmodule/ModuleFile.h>
#include <mxmodule/c/CallFromC.h>
#include <mxmodule/c/check.h>

namespace {

std::vector<mxmodule::CheckedFile> checkedFiles(const char* const* paths, std::size_t count)
{
    std::vector<mxmodule::CheckedFile> files;
    for (const std::string& path :
         mxmodule::requireTexts(paths, count, "paths of files", "the path of a file")) {
        files.push_back(mxmodule::ModuleFile::read(path).check());
    }
    return files;
}

} // namespace

mxmodule_bytes* mxmodule_check(const char* const* paths, size_t count, mxmodule_error** error)
{
    return mxmodule::callFromC(
        error, [&] { return mxmodule::newBytes(mxmodule::checkJson(checkedFiles(paths, count))); });
}

mxmodule_bytes* mxmodule_check_sarif(const char* const* paths, size_t count, mxmodule_error** error)
{
    return mxmodule::callFromC(error, [&] {
        return mxmodule::newBytes(mxmodule::checkSarif(checkedFiles(paths, count)));
    });
}

mxmodule_bytes* mxmodule_check_rules(mxmodule_error** error)
{
    return mxmodule::callFromC(error,
                               [] { return mxmodule::newBytes(mxmodule::checkRulesJson()); });
}

const char* mxmodule_version(void)
{
    return MXMODULE_VERSION;
}

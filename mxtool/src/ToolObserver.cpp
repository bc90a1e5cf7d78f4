#include "ToolObserver.h"

#include "Diagnostic.h"
#include "FilesInUse.h"

namespace mxtool {

void ToolObserver::notice(const Finding& finding)
{
    report(finding);
}

void ToolObserver::progress(std::size_t done, std::size_t total, const char* things)
{
    if (!line) {
        line.emplace(things, total);
    }
    line->show(done);
    if (done == total) {
        line.reset();
    }
}

void ToolObserver::reads(const std::string& path)
{
    filesInUse().addInput(path);
}

} // namespace mxtool

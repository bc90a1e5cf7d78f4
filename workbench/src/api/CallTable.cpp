#include "api/CallTable.h"

namespace workbench {

const std::vector<CallEntry>& callTable()
{
    static const std::vector<CallEntry> table = {
        {"GET", "/api/v1/start", startCall},
        {"GET", "/api/v1/file", readFileCall},
        {"GET", "/api/v1/file/version", fileVersionCall},
        {"PUT", "/api/v1/file", saveFileCall},
        {"GET", "/api/v1/modules", moduleFilesCall},
        {"POST", "/api/v1/catalogue", searchCatalogueCall},
        {"POST", "/api/v1/module", moduleCall},
        {"POST", "/api/v1/module/configuration", moduleConfigurationCall},
        {"POST", "/api/v1/module/explanation", moduleExplanationCall},
        {"POST", "/api/v1/module/export", moduleExportCall},
        {"POST", "/api/v1/station", stationCall},
        {"POST", "/api/v1/station/pictures", stationPicturesCall},
        {"POST", "/api/v1/station/export", stationExportCall},
        {"GET", "/api/v1/online", onlineStateCall},
        {"POST", "/api/v1/online/plan", onlinePlanCall},
        {"POST", "/api/v1/online/verify", onlineVerifyCall},
        {"POST", "/api/v1/online/apply", onlineApplyCall},
        {"POST", "/api/v1/online/watch", onlineWatchCall},
        {"DELETE", "/api/v1/online/watch", onlineUnwatchCall},
        {"GET", "/api/v1/online/report", onlineReportCall},
    };
    return table;
}

} // namespace workbench

#include "http/HttpServer.h"
#include "http/OpenPaths.h"
#include "http/Refusal.h"
#include "http/Token.h"
#include "start/Assets.h"
#include "start/SignalsElsewhere.h"

#include <workbench/Workbench.h>

#include <memory>

namespace workbench {

namespace {

// The page, the calls of the API and the server that passes requests to them.
class RunningServer : public Server
{
public:
    explicit RunningServer(const Options& options)
        : token(newToken()),
          http(options.port, token, [this](const Request& request) { return answer(request); })
    {}

    std::string address() const override { return plainAddress() + "#" + token; }

    std::string plainAddress() const override
    {
        return "http://127.0.0.1:" + std::to_string(http.port()) + "/";
    }

private:
    Response answer(const Request& request) const
    {
        if (isOpenPath(request.path)) {
            return assets.at(request.path);
        }
        return refusal(404, "there is no such call", "see docs/workbench-api.md");
    }

    const Assets assets;
    const std::string token;
    HttpServer http;
};

} // namespace

} // namespace workbench

extern "C" {

__attribute__((visibility("default"))) extern const int workbenchModuleVersion;
const int workbenchModuleVersion = workbench::moduleVersion;

__attribute__((visibility("default"))) workbench::Server*
startWorkbench(const workbench::Options& options);

workbench::Server* startWorkbench(const workbench::Options& options)
{
    const workbench::SignalsElsewhere block;
    return new workbench::RunningServer(options);
}
}

#include "api/Api.h"
#include "http/HttpServer.h"
#include "http/OpenPaths.h"
#include "http/Token.h"
#include "start/Assets.h"
#include "start/ReturnedMemory.h"
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
        : workplace(options.file, options.folder, options.catalogueUrl),
          online(options.target.empty() ? nullptr
                                        : std::make_unique<OnlineSession>(options.target)),
          api(workplace, online.get()),
          token(newToken()),
          http(options.port, token, [this](const Request& request) { return answer(request); })
    {}

    std::string address() const override { return plainAddress() + "#" + token; }

    std::string plainAddress() const override
    {
        return "http://127.0.0.1:" + std::to_string(http.port()) + "/";
    }

private:
    Response answer(const Request& request)
    {
        if (isOpenPath(request.path)) {
            return assets.at(request.path);
        }
        Response response = api.answer(request);
        memory.giveBack();
        return response;
    }

    const Assets assets;
    Workplace workplace;
    std::unique_ptr<OnlineSession> online; // null: no coupler is stated
    const Api api;
    const std::string token;
    ReturnedMemory memory;
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

#include "catalogue/TranslatedFile.h"

#include "DeviceReport.h"
#include "ProcessParser.h"
#include "catalogue/LoadedFile.h"
#include "catalogue/ModuleContent.h"

#include <filesystem>
#include <memory>
#include <stdexcept>
#include <utility>
#include <vector>

namespace mxmodule {

namespace {

using devices::parser::mx::Parser_kv38;

// The device in `mxData`, or null and why there is none.
std::shared_ptr<Parser_kv38::DeviceP> parsed(std::vector<char>& mxData, Observer* observer,
                                             std::string& reason)
{
    std::shared_ptr<Parser_kv38::DeviceP> device;
    withParser(observer, [&](Parser_kv38& parser) {
        try {
            device = parser.parse(mxData, nullptr, 0, 0);
        } catch (const std::runtime_error& failure) {
            reason = failure.what();
        }
    });
    return device;
}

} // namespace

TranslatedFile translatedFile(const std::string& path, Observer* observer)
{
    TranslatedFile file;
    file.name = std::filesystem::path(path).filename().string();
    logDebug(observer, "Loading mx file " + file.name);
    std::vector<char> mxData = loadedFile(path);
    auto device = parsed(mxData, observer, file.failure);
    if (device == nullptr) {
        return file;
    }
    file.module = ModuleOfFile{device->privateProps,
                               catalogueContent(makeReport(*device, conversionsOf(mxData)))};
    device.reset(); // points into the bytes
    file.module->record.mxFileData = new std::vector<char>(std::move(mxData));
    return file;
}

} // namespace mxmodule

#include "start/Assets.h"

#include "http/Refusal.h"
#include "start/EmbeddedAssets.h"

#include <text/Gzip.h>

#include <cassert>

namespace workbench {

namespace {

constexpr std::size_t mostBytesOfAsset = std::size_t{4} << 20;

Response responseOf(const EmbeddedAsset& asset)
{
    const auto content = text::gunzipped({asset.bytes, asset.bytes + asset.size}, mostBytesOfAsset);
    assert(content);
    Response response;
    response.type = asset.type;
    response.body = *content;
    response.gzippedBody.assign(asset.bytes, asset.bytes + asset.size);
    return response;
}

} // namespace

Assets::Assets()
{
    for (const EmbeddedAsset& asset : embeddedAssets) {
        responses.emplace(asset.path, responseOf(asset));
    }
}

Response Assets::at(const std::string& path) const
{
    const auto found = responses.find(path);
    return found == responses.end() ? refusal(404, "there is nothing at this address", "")
                                    : found->second;
}

} // namespace workbench

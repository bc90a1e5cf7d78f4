#include "FormKeys.h"

#include <mxformat/DataSizes.h>

namespace mxauthor {

const std::map<std::string, std::vector<std::string>>& formKeys()
{
    static const std::map<std::string, std::vector<std::string>> keys = {
        {"file",
         {"module", "catalogue", "component", "extension", "channels", "channelNames", "parameters",
          "optionLists", "conversions", "dataSizes", "parameterBlock", "image", "texts", "header",
          "order", "checksums", "unread", "raw", "tail"}},
        {"module", {"type", "id", "datasets"}},
        {"dataset", {"id", "data", "unread", "trailer"}},
        {"entry", {"key", "kind", "value"}},
        {"extension", {"gtin", "calibrationDate", "dateBytes", "version", "rest"}},
        {"channel",
         {"name", "number", "in", "out", "bits", "bit", "words", "flags", "unread", "again",
          "repeat", "each"}},
        {"channelName", {"channel", "name"}},
        {"parameter",
         {"name", "number", "channel", "at", "type", "bits", "bit", "default", "range", "options",
          "conversion", "unit", "flags", "overlaps", "repeat", "each"}},
        {"optionList", {"id", "options"}},
        {"conversion", {"id", "factor", "offset", "unit"}},
        {"dataSizes", {mxformat::dataSizeKeys.begin(), mxformat::dataSizeKeys.end()}},
        {"parameterBlock", {"version", "descriptor", "skipped", "bytes"}},
        {"image", {"file", "svg", "hex", "base64"}},
        {"texts", {"head", "first", "step", "fixed"}},
        {"fixedText", {"id", "text"}},
        {"textReference", {"id"}},
        {"header", {"contentLength", "rest"}},
        {"rawGroup", {"id", "file", "hex", "base64", "checksum"}},
    };
    return keys;
}

const std::vector<std::string>& keysOf(const std::string& mapping)
{
    return formKeys().at(mapping);
}

} // namespace mxauthor

#pragma once

#include <devices/parser/mx/Parser_kv38.h>

#include <memory>
#include <string>

namespace bench {

using Device = devices::parser::mx::Parser_kv38::DeviceP;

/// Returns the bytes of the product image of `device`; empty if it has none.
std::string imageOf(const Device& device);

/// Returns a device equal to `ready`, built as a parser must build it: object by object, text by
/// text, with the product image `image` encoded by Poco's encoder and the sets grouped by one walk
/// over the attributes per channel. Only reading the file is left out: this is the lower bound for
/// a translation.
std::shared_ptr<Device> buildFromReadyValues(const Device& ready, const std::string& image);

/// Returns whether both contain equal objects: texts, ids and members.
bool sameTree(const Device& first, const Device& second);

} // namespace bench

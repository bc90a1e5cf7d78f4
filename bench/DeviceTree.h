#pragma once

#include <devices/parser/mx/Parser_kv38.h>

#include <memory>
#include <string>

namespace bench {

using Device = devices::parser::mx::Parser_kv38::DeviceP;

/// Returns the bytes of the product image of `device`, nothing where it has none.
std::string imageOf(const Device& device);

/// Returns a device equal to `ready`, built as a parser has to build it: object by object, text by
/// text, its product image encoded from the bytes `image` by Poco's encoder, the sets grouped by
/// walking the attributes once per channel. What is left out is reading the file, so this is the
/// least that a translation can cost.
std::shared_ptr<Device> buildFromReadyValues(const Device& ready, const std::string& image);

/// Returns whether both hold the same objects with the same texts, ids and members.
bool sameTree(const Device& first, const Device& second);

} // namespace bench

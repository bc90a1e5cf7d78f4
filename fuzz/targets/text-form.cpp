// The text form of an mx file: a file built without errors is checked, written, read, dumped and
// built again, and must have the same bytes.
#include "FuzzTarget.h"

#include <mxauthor/CheckText.h>

#include <cstdlib>
#include <exception>

namespace {

// File names in the text must not name an existing file.
constexpr const char* directory = "/nonexistent";

mxauthor::Bytes build(const std::string& source, bool* isGood)
{
    const mxauthor::BuildResult result = mxauthor::buildFromText(source, directory);
    for (const mxauthor::SourceError& error : result.errors) {
        mxauthor::sourceExcerpt(source, error);
    }
    *isGood = result.errors.empty();
    if (*isGood) {
        for (const mxauthor::TextFinding& finding : mxauthor::checkText(source, result)) {
            mxauthor::sourceExcerpt(source, finding.where);
        }
    }
    return *isGood ? mxauthor::writeMxFile(result.file) : mxauthor::Bytes();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string source(reinterpret_cast<const char*>(data), size);
    bool isGood = false;
    mxauthor::Bytes bytes;
    try {
        bytes = build(source, &isGood);
    } catch (const std::length_error&) {
        return 0; // more than an mx file can hold
    }
    if (!isGood) {
        return 0;
    }
    const auto file = mxauthor::readDamagedMxFile({bytes.begin(), bytes.end()}).file;
    const mxauthor::Bytes again = build(mxauthor::dumpText(file), &isGood);
    if (!isGood || again != bytes) {
        std::abort();
    }
    return 0;
}

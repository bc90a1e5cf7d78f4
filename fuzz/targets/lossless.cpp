// An mx file as typed content and as text: both must give the same bytes again. Every byte must be
// explained once. The file is checked and compared with itself, without a difference.
#include "FuzzTarget.h"

#include <mxauthor/Check.h>
#include <mxauthor/Diff.h>
#include <mxauthor/Explain.h>
#include <mxauthor/TextForm.h>

#include <cstdlib>
#include <stdexcept>

namespace {

using mxauthor::Bytes;
using mxauthor::MxFile;

void require(bool holds)
{
    if (!holds) {
        std::abort();
    }
}

void explainOnce(const std::vector<char>& chars)
{
    std::size_t next = 0;
    for (const mxauthor::ExplainedPart& part : mxauthor::explain(chars).parts) {
        require(part.place.offset == next && part.place.length != 0);
        next += part.place.length;
    }
    require(next == chars.size());
}

// The text form must give the bytes of `file` again.
void throughText(const MxFile& file, const Bytes& bytes)
{
    const auto result = mxauthor::buildFromText(mxauthor::dumpText(file), "/nonexistent");
    require(result.errors.empty() && mxauthor::writeMxFile(result.file) == bytes);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::vector<char> chars(data, data + size);
    const Bytes bytes(data, data + size);
    const MxFile damaged = mxauthor::readDamagedMxFile(chars).file;
    require(mxauthor::writeMxFile(damaged) == bytes);
    throughText(damaged, bytes);
    const auto [whole, failure] = mxauthor::readWholeGroups(chars);
    require(mxauthor::writeMxFile(whole) == bytes);
    bool isFramed = true;
    try {
        require(mxauthor::writeMxFile(mxauthor::readMxFile(chars)) == bytes);
    } catch (const std::runtime_error&) {
        isFramed = false;
    }
    require(isFramed == !failure.has_value());
    explainOnce(chars);
    for (const mxauthor::Finding& finding : mxauthor::check(chars)) {
        mxauthor::describe(finding);
    }
    require(mxauthor::compare(whole, whole).differences.empty());
    return 0;
}

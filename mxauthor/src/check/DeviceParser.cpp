#include "check/Checks.h"
#include "mxauthor/Check.h"

#include <devices/parser/mx/Parser_kv38.h>

namespace mxauthor {

namespace {

// Runs the device parser on `bytes` and the additional byte that every loaded file ends with.
void checkWithParser(const std::vector<char>& bytes, const MxFile& file, Findings& findings)
{
    std::vector<char> loaded = bytes;
    loaded.push_back('\xFF');
    Refused what = Refused::File;
    try {
        devices::parser::mx::Parser_kv38 parser;
        const auto device = parser.parse(loaded, nullptr, 0, 0);
        what = Refused::Modbus;
        parser.getCalculatedRawConfig(devices::parser::FieldbusType::Modbus, loaded, device.get(),
                                      nullptr);
    } catch (const std::runtime_error& failure) {
        addRefusal(what, failure.what(), file, findings);
    }
}

} // namespace

std::vector<Finding> check(const std::vector<char>& bytes)
{
    const ReadGroups read = readWholeGroups(bytes);
    Findings findings;
    checkRead(bytes, read, findings);
    checkWithParser(bytes, read.file, findings);
    return std::move(findings).sorted();
}

} // namespace mxauthor

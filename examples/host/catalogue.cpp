// A host that keeps modules in a device database: it stores mx files and lists what is stored.

#include <devices/database/DeviceDatabase.h>
#include <devices/parser/mx/LoadFile.h>
#include <devices/parser/mx/Parser_kv38.h>

#include <exception>
#include <iostream>

namespace {

using devices::database::DeviceDatabase;
using devices::database::DeviceProperties;

// The record of a device does not contain its mx file: the host adds the bytes, as returned by
// `loadFile`, with the one byte appended.
DeviceProperties recordOf(const std::string& file)
{
    std::vector<char> mxData;
    devices::parser::mx::loadFile(file, mxData);

    devices::parser::mx::Parser_kv38 parser;
    DeviceProperties record = parser.parse(mxData, nullptr, 0, 0)->privateProps;
    record.mxFileData = new std::vector<char>(std::move(mxData));
    return record;
}

void list(DeviceDatabase& database)
{
    for (const DeviceProperties& record : database.list()) {
        std::cout << record.moduleIdText << ": " << record.mxFileData->size() - 1
                  << " bytes of mx file\n";
    }
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 3) {
        std::cerr << "Usage: catalogue URL MX-FILE...   such as sqlite:devices.sqlite\n";
        return 2;
    }
    try {
        DeviceDatabase database(argv[1]);
        auto transaction = database.beginTransaction(); // all of them or none
        for (int i = 2; i < argc; ++i) {
            database.insert(recordOf(argv[i]));
        }
        transaction.commit();
        list(database);
        return 0;
    } catch (const std::exception& error) {
        std::cerr << argv[1] << ": " << error.what() << '\n';
        return 1;
    }
}

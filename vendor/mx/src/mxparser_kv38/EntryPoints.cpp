#include "devices/database/DeviceDatabase.h"
#include "devices/parser/mx/HexText.h"
#include "devices/parser/mx/LoadFile.h"
#include "devices/parser/mx/Parser_kv38.h"

#include "LogLine.h"
#include "OneThreadAtATime.h"
#include "TextIndex.h"

#include <mxfileext/mxfileext.h>
#include <mxformat/Groups.h>

#include <dirent.h>

#include <memory>
#include <stdexcept>

namespace devices::parser::mx {

namespace {

bool isMxFileName(const std::string& name)
{
    const std::string prefix = "MX";
    const std::string suffix = ".bin";
    return name.size() > prefix.size() + suffix.size() &&
           name.compare(0, prefix.size(), prefix) == 0 &&
           name.compare(name.size() - suffix.size(), suffix.size(), suffix) == 0;
}

std::string pathIn(const std::string& directory, const std::string& name)
{
    const bool closed = !directory.empty() && directory.back() == '/';
    return directory + (closed ? "" : "/") + name;
}

struct CloseDirectory
{
    void operator()(DIR* open) const { closedir(open); }
};
using Directory = std::unique_ptr<DIR, CloseDirectory>;

// Loads the file `name` of the directory. A file that cannot be loaded ends the walk,
// the directory still open: for hosts it differs from a file that cannot be translated.
std::vector<char> loadFrom(Directory& handle, const std::string& directory, const std::string& name)
{
    DIR* const open = handle.release();
    std::vector<char> mxData;
    loadFile(pathIn(directory, name), mxData);
    handle.reset(open);
    return mxData;
}

} // namespace

Parser_kv38::Parser_kv38()
    : logger(Poco::Logger::get("mxparser-kv38")), textIndex(std::make_unique<TextIndex>())
{
    logger.setLevel("information");
}

Parser_kv38::~Parser_kv38() = default;

void Parser_kv38::setLoggingLevel(const std::string& level)
{
    logger.setLevel(level);
}

std::shared_ptr<Parser_kv38::DeviceP> Parser_kv38::parse(const std::vector<char>& mxData,
                                                         std::vector<char>* customParamBuffer,
                                                         unsigned inOffset, unsigned outOffset)
{
    traceEntry(logger, "parse");
    const OneThreadAtATime::Use use(parsers, "Parser_kv38::parse");
    return parseInternal(mxData, customParamBuffer, inOffset, outOffset);
}

const std::shared_ptr<Parser_kv38::DeviceP>&
Parser_kv38::parseInternal(const std::vector<char>& mxData, std::vector<char>* customParamBuffer,
                           unsigned inOffset, unsigned outOffset)
{
    traceEntry(logger, "parseInternal");
    initializeDataStructs(mxData, customParamBuffer);
    inDataOffset = inOffset;
    inBytePosition = inOffset;
    outDataOffset = outOffset;
    outBytePosition = outOffset;
    parseContent();
    return dev;
}

void Parser_kv38::initializeDataStructs(const std::vector<char>& mxData,
                                        std::vector<char>* customParamBuffer)
{
    traceEntry(logger, "initializeDataStructs");
    nextObjectId = 0;
    inBitPosition = 0;
    inBytePosition = 0;
    outBitPosition = 0;
    outBytePosition = 0;
    dev = std::make_shared<DeviceP>();
    aggregatedChannelCandidates.clear();
    mx::Parser::parse(reinterpret_cast<const std::uint8_t*>(mxData.data()),
                      static_cast<std::uint32_t>(mxData.size()));

    mxfileext::clearParsedData(0);
    for (const std::uint16_t id : groupOrder) {
        std::uint32_t size = 0;
        const std::uint8_t* payload = getGroup(id, &size);
        if (payload == nullptr) {
            continue;
        }
        if (logger.debug()) {
            logLine(logger, Poco::Message::PRIO_DEBUG, "parseGroup: %s (%i bytes)", u16AsHex(id),
                    static_cast<int>(size));
        }
        mxfileext::parseGroup(0, id, payload - mxformat::groupHeaderSize,
                              static_cast<unsigned short>(size + mxformat::groupOverhead));
    }

    setupDefaultParams();
    auto& block = dev->privateProps.defaultParameterBlock;
    if (customParamBuffer != nullptr) {
        if (customParamBuffer->size() != block->size()) {
            throw std::runtime_error("Provided custom parameter buffer size is not equal to the "
                                     "default parameter bauffer size");
        }
        block = new std::vector<char>(*customParamBuffer);
    }
    paramBuffer = block->empty() ? nullptr : block->data();
    paramBufferSize = static_cast<std::uint16_t>(block->size());
    mxfileext::initializeModule(paramBuffer, paramBufferSize);
}

unsigned Parser_kv38::populateDatabase(const std::string& directory)
{
    traceEntry(logger, "populateDatabase");
    const OneThreadAtATime::Use use(parsers, "Parser_kv38::populateDatabase");
    unsigned inserted = 0;
    Directory handle(opendir(directory.c_str()));
    while (const dirent64* entry = handle != nullptr ? readdir64(handle.get()) : nullptr) {
        const std::string name = entry->d_name;
        if (!isMxFileName(name)) {
            continue;
        }
        logLine(logger, Poco::Message::PRIO_DEBUG, "Loading mx file %s", name);
        const std::vector<char> mxData = loadFrom(handle, directory, name);
        try {
            parseInternal(mxData, nullptr, 0, 0);
            const std::shared_ptr<DeviceP> device = dev;
            device->privateProps.mxFileData = new std::vector<char>(mxData);
            devices::database::insertDeviceProperties(device->privateProps);
            ++inserted;
        } catch (const std::exception& failure) {
            logLine(logger, Poco::Message::PRIO_ERROR, "File %s: %s", name,
                    std::string(failure.what()));
        }
    }
    if (handle == nullptr || closedir(handle.release()) != 0) {
        logLine(logger, Poco::Message::PRIO_ERROR, ">> %s(). Failed to call closedir().",
                std::string("populateDatabase"));
    }
    return inserted;
}

} // namespace devices::parser::mx

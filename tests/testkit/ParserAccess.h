#pragma once

#include "devices/parser/mx/Parser_kv38.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace testkit {

/// The kv38 parser with its protected members opened for tests.
class ParserAccess : public devices::parser::mx::Parser_kv38
{
public:
    /// Called before every operation, as a host may do; empty: nothing.
    static inline std::function<void()> beforeOperation;
    /// The logging level that a host sets for each new parser; empty: none.
    static inline std::string levelOfNewParsers;

    ParserAccess()
    {
        if (!levelOfNewParsers.empty()) {
            setLoggingLevel(levelOfNewParsers);
        }
    }

    unsigned populateDatabase(const std::string& directory) override
    {
        prepare();
        return Parser_kv38::populateDatabase(directory);
    }

    std::shared_ptr<DeviceP> parse(const std::vector<char>& mxData,
                                   std::vector<char>* customParamBuffer, unsigned inOffset,
                                   unsigned outOffset) override
    {
        prepare();
        return Parser_kv38::parse(mxData, customParamBuffer, inOffset, outOffset);
    }

    std::shared_ptr<std::vector<char>>
    getCalculatedRawConfig(devices::parser::FieldbusType fieldbus, const std::vector<char>& mxData,
                           datamodel::Device* device, datamodel::ParamDevice* user) override
    {
        prepare();
        return Parser_kv38::getCalculatedRawConfig(fieldbus, mxData, device, user);
    }

    std::vector<std::unique_ptr<ChannelMappingInfo>>
    getChannelMappingInfoList(datamodel::Device* device) override
    {
        prepare();
        return Parser_kv38::getChannelMappingInfoList(device);
    }

    using Container = devices::parser::mx::Parser;

    // The container reader below.
    using Parser_kv38::buffer;
    using Parser_kv38::bytesAt;
    using Parser_kv38::bytesFrom;
    using Parser_kv38::calculateCrc;
    using Parser_kv38::getGroup;
    using Parser_kv38::getGroupEntry;
    using Parser_kv38::getModuleIdAndType;
    using Parser_kv38::getTavoDatasetFromGroup;
    using Parser_kv38::groupIndex;
    using Parser_kv38::groupOrder;

    // Operations.
    using Parser_kv38::addStaticProperty;
    using Parser_kv38::addToAggregatedChannelCandidate;
    using Parser_kv38::assignIdAndAddAttribute;
    using Parser_kv38::createModbusParamBuffer;
    using Parser_kv38::getDataArraySizes;
    using Parser_kv38::getDatatypeSize;
    using Parser_kv38::getOptionListById;
    using Parser_kv38::getParameterListOrderdLikeKv38;
    using Parser_kv38::getTextStringById;
    using Parser_kv38::initializeDataStructs;
    using Parser_kv38::mxTextToStdString;
    using Parser_kv38::parseChannel;
    using Parser_kv38::parseContent;
    using Parser_kv38::parseInternal;
    using Parser_kv38::parseParameter;
    using Parser_kv38::setupChannel;
    using Parser_kv38::setupDefaultParams;
    using Parser_kv38::setupReferences;
    using Parser_kv38::updateDataArraySize;

    // Members.
    using Parser_kv38::aggregatedChannelCandidates;
    using Parser_kv38::dev;
    using Parser_kv38::diagDataSize;
    using Parser_kv38::inBitPosition;
    using Parser_kv38::inBytePosition;
    using Parser_kv38::inDataOffset;
    using Parser_kv38::inDataSize;
    using Parser_kv38::logger;
    using Parser_kv38::moduleId;
    using Parser_kv38::mxVersion;
    using Parser_kv38::nextObjectId;
    using Parser_kv38::outBitPosition;
    using Parser_kv38::outBytePosition;
    using Parser_kv38::outDataOffset;
    using Parser_kv38::outDataSize;
    using Parser_kv38::paramBuffer;
    using Parser_kv38::paramBufferSize;
    using Parser_kv38::PARAMETER_BUFFER_SIZE;

    /// Indexes `mxData` (which must outlive the accesses) without translating it: no device is
    /// made.
    void index(const std::vector<char>& mxData)
    {
        Container::parse(mxData.data(), static_cast<std::uint32_t>(mxData.size()));
    }

    /// The parser seen as its container reader.
    Container& asContainer() { return *this; }

private:
    static void prepare()
    {
        if (beforeOperation) {
            beforeOperation();
        }
    }
};

} // namespace testkit

#pragma once

#include "Failure.h"
#include "GuardedBuffer.h"
#include "MxBuffer.h"
#include "ParserAccess.h"

#include <mxfileext/mxfileext.h>

#include <gmock/gmock.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

/// A parser whose mx buffer is next to a page that cannot be read.
class Guarded : public testing::Test
{
protected:
    void index(const testkit::Bytes& bytes)
    {
        guarded = std::make_unique<testkit::GuardedBuffer>(bytes);
        parser.asContainer().parse(guarded->data(), guarded->size());
    }

    void index(const testkit::MxBuffer& buffer) { index(buffer.bytes()); }

    // A whole translation of the guarded bytes themselves: `parse` takes a vector, whose memory
    // is the allocator's.
    void translate(const testkit::Bytes& bytes)
    {
        parser.dev = std::make_shared<devices::parser::mx::Parser_kv38::DeviceP>();
        parser.nextObjectId = 0;
        index(bytes);
        mxfileext::clearParsedData(0);
        for (const std::uint16_t id : parser.groupOrder) {
            std::uint32_t size = 0;
            const std::uint8_t* payload = parser.getGroup(id, &size);
            mxfileext::parseGroup(0, id, payload - 4, static_cast<unsigned short>(size + 6));
        }
        parser.setupDefaultParams();
        auto& block = *parser.dev->privateProps.defaultParameterBlock;
        parser.paramBuffer = block.empty() ? nullptr : block.data();
        parser.paramBufferSize = static_cast<std::uint16_t>(block.size());
        mxfileext::initializeModule(parser.paramBuffer, parser.paramBufferSize);
        parser.parseContent();
    }

    std::string failureOfTranslation(const testkit::MxBuffer& buffer)
    {
        return testkit::failureOf([&] { translate(buffer.bytes()); });
    }

    // Returns whether the bytes became a device.
    bool survives(const testkit::Bytes& bytes)
    {
        try {
            translate(bytes);
            return true;
        } catch (const std::runtime_error&) {
            return false;
        }
    }

    template <class Object>
    std::vector<std::string> namesOf(datamodel::TypeCode typeCode) const
    {
        std::vector<std::string> names;
        for (const auto& attribute : parser.dev->attributes) {
            if (attribute->typeCode() == typeCode) {
                names.push_back(static_cast<const Object&>(*attribute).name);
            }
        }
        return names;
    }

    std::unique_ptr<testkit::GuardedBuffer> guarded;
    testkit::ParserAccess parser;
};

#pragma once

#include "devices/parser/mx/Parser.h"

#include <cstdint>
#include <vector>

namespace testkit {

/// The container reader with its protected members opened for tests.
class ContainerAccess : public devices::parser::mx::Parser
{
public:
    using Parser::buffer;
    using Parser::bytesAt;
    using Parser::bytesFrom;
    using Parser::groupIndex;
    using Parser::groupOrder;

    /// Indexes `mxData`, which must outlive the accesses.
    void index(const std::vector<char>& mxData)
    {
        parse(mxData.data(), static_cast<std::uint32_t>(mxData.size()));
    }
};

} // namespace testkit

#pragma once

#include <mxmodule/Observer.h>

#include <devices/parser/mx/Parser_kv38.h>

#include <functional>

namespace mxmodule {

/// The device parser, and the groups of the mx data that it translated last.
class GroupParser : public devices::parser::mx::Parser_kv38
{
public:
    using Parser_kv38::getGroup;
};

/// Runs `work` with a device parser while no other thread of this library uses one: parser and
/// companion library have state for the whole process.
///
/// The lines that the parser logs meanwhile, of the level that `observer` wants, are passed to it
/// after `work`, also when that throws. Without an observer they go where the host's logging sends
/// them. The level and the channel of the parser's logger are the same after the call as before.
void withParser(Observer* observer, const std::function<void(GroupParser&)>& work);

/// Calls `observer`, if there is one, with a line of debug priority, as if the parser had logged
/// it.
void logDebug(Observer* observer, const std::string& line);

} // namespace mxmodule

#include "mxonline/SimulatedFault.h"

#include <fmt/format.h>
#include <mxmodule/Finding.h>
#include <mxonline/TimeText.h>
#include <text/Beginning.h>
#include <text/NearestWords.h>
#include <text/WholeNumber.h>

#include <algorithm>
#include <limits>

namespace mxonline {

namespace {

using mxmodule::Failure;
using mxmodule::Origin;

constexpr const char* conditions = "after=N, times=N, function=F, address=A";

[[noreturn]] void rejectFault(const std::string& text, const std::string& reason,
                              const std::string& hint)
{
    throw Failure(Origin::Request, text, reason, hint);
}

// Reads the parts of a stated fault.
class FaultReader
{
public:
    explicit FaultReader(const std::string& stated) : text(stated), rest(stated) {}

    SimulatedFault read()
    {
        SimulatedFault fault;
        while (takeCondition(fault)) {
        }
        const std::size_t sign = rest.find('=');
        const std::string name = rest.substr(0, sign);
        value = sign == std::string::npos ? "" : rest.substr(sign + 1);
        const FaultDescription& description = describedBy(name);
        fault.kind = description.kind;
        fault.text = text;
        const bool needsValue = description.form.find('=') != std::string::npos;
        if (needsValue == value.empty() || (!needsValue && sign != std::string::npos)) {
            rejectFault(text, needsValue ? "its value is missing" : "it takes no value",
                        "state it as " + description.form);
        }
        readValue(fault);
        return fault;
    }

private:
    // Conditions are at the end: names of parameters may contain commas.
    bool takeCondition(SimulatedFault& fault)
    {
        const std::size_t comma = rest.rfind(',');
        const std::size_t sign = comma == std::string::npos ? comma : rest.find('=', comma);
        if (sign == std::string::npos) {
            return false;
        }
        const std::string name = rest.substr(comma + 1, sign - comma - 1);
        const std::string number = rest.substr(sign + 1);
        if (name == "after") {
            fault.after = numberIn<std::size_t>(number, name);
        } else if (name == "times") {
            fault.times = numberIn<std::size_t>(number, name);
        } else if (name == "function") {
            fault.function = numberIn<std::uint8_t>(number, name);
        } else if (name == "address") {
            fault.address = numberIn<std::uint16_t>(number, name);
        } else {
            return false;
        }
        rest.erase(comma);
        return true;
    }

    const FaultDescription& describedBy(const std::string& name) const
    {
        std::vector<std::string> names;
        for (const FaultDescription& one : faultDescriptions()) {
            names.push_back(one.form.substr(0, one.form.find('=')));
            if (names.back() == name) {
                return one;
            }
        }
        const bool hasComma = name.find(',') != std::string::npos;
        rejectFault(text,
                    fmt::format("there is no fault \"{}\"{}", text::abbreviated(name),
                                hasComma ? "" : text::acceptedWords(name, names)),
                    hasComma ? fmt::format("after the fault there are only {}", conditions) : "");
    }

    void readValue(SimulatedFault& fault)
    {
        switch (fault.kind) {
        case FaultKind::Exception:
            fault.code = numberIn<std::uint8_t>(value, "exception", 1);
            break;
        case FaultKind::Busy:
        case FaultKind::Acknowledge:
        case FaultKind::Late:
        case FaultKind::Slow:
            fault.time = timeIn(value);
            break;
        case FaultKind::Identity:
            readIdentity(fault);
            break;
        case FaultKind::Refuse:
        case FaultKind::Stuck:
            fault.parameter = value;
            break;
        case FaultKind::Clamp:
            fault.most = numberIn<std::uint16_t>(takeAfterColon("MODULE/PARAMETER:N"), "clamp");
            fault.parameter = value;
            break;
        default:
            break;
        }
    }

    void readIdentity(SimulatedFault& fault)
    {
        const std::string digits = takeAfterColon("POSITION:ID");
        const auto moduleId = text::wholeNumber<std::uint32_t>(digits, 16);
        if (digits.size() != 8 || !moduleId) {
            rejectFault(text, fmt::format("found the identifier \"{}\"", text::abbreviated(digits)),
                        "an identifier has eight hexadecimal digits, such as 5a030304");
        }
        fault.moduleId = *moduleId;
        fault.position = numberIn<std::size_t>(value, "identity");
    }

    // Takes what is after the last colon of the value.
    std::string takeAfterColon(const char* form)
    {
        const std::size_t colon = value.rfind(':');
        if (colon == std::string::npos) {
            rejectFault(text, "\":\" is missing in its value",
                        fmt::format("state the value as {}", form));
        }
        std::string taken = value.substr(colon + 1);
        value.erase(colon);
        return taken;
    }

    template <typename Number>
    Number numberIn(const std::string& digits, const std::string& name, Number least = 0) const
    {
        const bool isHex = digits.compare(0, 2, "0x") == 0;
        const std::string all = digits.substr(isHex ? 2 : 0);
        const auto number = text::wholeNumber<Number>(all, isHex ? 16 : 10);
        if (!number || *number < least) {
            rejectFault(text,
                        fmt::format("found \"{}\" for \"{}\", expected a number from {} to {}",
                                    text::abbreviated(digits), name, +least,
                                    +std::numeric_limits<Number>::max()),
                        "");
        }
        return *number;
    }

    std::chrono::milliseconds timeIn(const std::string& stated) const
    {
        const bool hasUnit = stated.find_first_not_of("0123456789") != std::string::npos;
        try {
            return timeOf(hasUnit ? stated : stated + "ms");
        } catch (const Failure& failure) {
            rejectFault(text, failure.reason().text, failure.reason().hint);
        }
    }

    const std::string& text;
    std::string rest;
    std::string value;
};

} // namespace

const std::vector<FaultDescription>& faultDescriptions()
{
    static const std::vector<FaultDescription> all = {
        {FaultKind::Exception, "exception=CODE", "requests are rejected with this exception"},
        {FaultKind::Busy, "busy=TIME", "exception 6 for this time, from the first request on"},
        {FaultKind::Acknowledge, "acknowledge=TIME", "exception 5 for this time"},
        {FaultKind::Refuse, "refuse=MODULE/PARAMETER", "exception 3 when it is written"},
        {FaultKind::Silence, "silence", "no answer; the request is not carried out"},
        {FaultKind::Lost, "lost", "no answer; the request is carried out"},
        {FaultKind::Late, "late=TIME", "answers come after this time"},
        {FaultKind::Slow, "slow=TIME", "this time passes before each byte of an answer"},
        {FaultKind::Short, "short", "the last byte of an answer is missing"},
        {FaultKind::Long, "long", "answers have two bytes too many"},
        {FaultKind::Twice, "twice", "each answer is sent twice"},
        {FaultKind::Garbage, "garbage", "answers are bytes of another protocol"},
        {FaultKind::Unit, "unit", "answers are of another unit"},
        {FaultKind::Transaction, "transaction", "answers are of another transaction (tcp)"},
        {FaultKind::Protocol, "protocol", "answers are of another protocol (tcp)"},
        {FaultKind::Length, "length", "headers state ten bytes more than there are (tcp)"},
        {FaultKind::Checksum, "checksum", "checksums are wrong (rtu)"},
        {FaultKind::Function, "function", "answers are of another function"},
        {FaultKind::Count, "count", "answers to reads state two bytes more than they have"},
        {FaultKind::Echo, "echo", "answers to writes confirm another address"},
        {FaultKind::Close, "close", "the connection is closed in place of an answer (tcp)"},
        {FaultKind::Half, "half", "the connection is closed in the middle of an answer (tcp)"},
        {FaultKind::Identity, "identity=POSITION:ID", "another module is at this position"},
        {FaultKind::Stuck, "stuck=MODULE/PARAMETER", "the parameter keeps its value"},
        {FaultKind::Clamp, "clamp=MODULE/PARAMETER:N", "the parameter's registers take at most N"}};
    return all;
}

SimulatedFault simulatedFaultOf(const std::string& text)
{
    return FaultReader(text).read();
}

} // namespace mxonline

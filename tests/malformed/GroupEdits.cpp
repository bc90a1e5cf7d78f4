#include "GroupEdits.h"

#include "MxBuffer.h"

#include <algorithm>
#include <stdexcept>

namespace malformed {

namespace {

constexpr std::size_t groupOverhead = 6;
constexpr std::size_t groupHeaderSize = 4;

void append(Bytes& target, const Bytes& source)
{
    target.insert(target.end(), source.begin(), source.end());
}

} // namespace

GroupEdits::Group& GroupEdits::first(unsigned id)
{
    const auto found = std::find_if(groups.begin(), groups.end(),
                                    [id](const Group& group) { return group.id == id; });
    if (found == groups.end()) {
        throw std::runtime_error("there is no group " + std::to_string(id));
    }
    return *found;
}

void GroupEdits::setPayload(unsigned id, const Bytes& payload)
{
    const auto found = std::find_if(groups.begin(), groups.end(),
                                    [id](const Group& group) { return group.id == id; });
    if (found == groups.end()) {
        addAgain(id, payload);
    } else {
        found->payload = payload;
    }
}

void GroupEdits::addAgain(unsigned id, const Bytes& payload)
{
    groups.push_back({id, payload, -1});
}

void GroupEdits::drop(unsigned id)
{
    first(id);
    groups.erase(std::remove_if(groups.begin(), groups.end(),
                                [id](const Group& group) { return group.id == id; }),
                 groups.end());
}

void GroupEdits::writeOver(unsigned id, std::size_t offset, const Bytes& bytes)
{
    Bytes& payload = first(id).payload;
    if (offset > payload.size() || bytes.size() > payload.size() - offset) {
        throw std::runtime_error("the payload has " + std::to_string(payload.size()) + " bytes");
    }
    std::copy(bytes.begin(), bytes.end(), payload.begin() + static_cast<std::ptrdiff_t>(offset));
}

void GroupEdits::setLength(unsigned id, unsigned length)
{
    first(id).length = static_cast<int>(length);
}

void GroupEdits::setFile(const Bytes& bytes)
{
    wholeFile = bytes;
    isWholeFile = true;
    groups.clear();
}

std::size_t GroupEdits::groupsSize() const
{
    std::size_t size = 0;
    for (const Group& group : groups) {
        size += group.payload.size() + groupOverhead;
    }
    return size;
}

std::vector<char> GroupEdits::file() const
{
    Bytes bytes = wholeFile;
    for (const Group& group : groups) {
        Bytes payload = group.payload;
        if (group.id == 0 && payload.size() >= 2) {
            const std::size_t length =
                contentLength < 0 ? groupsSize() : static_cast<std::size_t>(contentLength);
            const Bytes stated = testkit::u16(static_cast<unsigned>(length));
            std::copy(stated.begin(), stated.end(), payload.begin());
        }
        const std::size_t length = group.length < 0 ? payload.size() + groupOverhead
                                                    : static_cast<std::size_t>(group.length);
        append(bytes,
               testkit::join({testkit::u16(group.id), testkit::u16(static_cast<unsigned>(length)),
                              payload, testkit::u16(0)}));
    }
    append(bytes, tail);
    bytes.resize(bytes.size() - cutBytes);
    return {bytes.begin(), bytes.end()};
}

std::size_t GroupEdits::startOf(unsigned id, unsigned occurrence) const
{
    std::size_t start = 0;
    for (const Group& group : groups) {
        if (group.id == id && --occurrence == 0) {
            return start;
        }
        start += group.payload.size() + groupOverhead;
    }
    throw std::runtime_error("no place: there is no such group");
}

std::size_t GroupEdits::offsetOf(const std::string& place) const
{
    if (place == "tail") {
        return groupsSize();
    }
    if (place.rfind("0x", 0) == 0) {
        return std::stoul(place, nullptr, 16);
    }
    const std::size_t mark = place.find_first_of("+/");
    const auto id = static_cast<unsigned>(std::stoul(place.substr(0, mark), nullptr, 16));
    if (mark == std::string::npos) {
        return startOf(id, 1);
    }
    const auto number = static_cast<unsigned>(std::stoul(place.substr(mark + 1)));
    return place[mark] == '/' ? startOf(id, number) : startOf(id, 1) + groupHeaderSize + number;
}

} // namespace malformed

#include "diff/StationMatch.h"

#include <deque>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <utility>

namespace mxstation {

namespace {

// Gives items of two lists a partner in the other list, in rounds: each with its own key.
template <typename Item>
class Matching
{
public:
    Matching(const std::vector<const Item*>& ofA, const std::vector<const Item*>& ofB)
        : a(ofA), b(ofB), partnersOfA(ofA.size()), partnersOfB(ofB.size())
    {}

    // Each item without a partner gets the first of the other list with the same key. An item whose
    // key is empty gets none.
    template <typename KeyOfA, typename KeyOfB>
    void match(const KeyOfA& keyOfA, const KeyOfB& keyOfB)
    {
        std::map<decltype(keyOfB(*b.front())), std::deque<std::size_t>> left;
        for (std::size_t i = 0; i < b.size(); ++i) {
            if (partnersOfB[i] == nullptr && keyOfB(*b[i])) {
                left[keyOfB(*b[i])].push_back(i);
            }
        }
        for (std::size_t i = 0; i < a.size(); ++i) {
            const auto found = partnersOfA[i] == nullptr ? left.find(keyOfA(*a[i])) : left.end();
            if (found != left.end() && !found->second.empty()) {
                partnersOfA[i] = b[found->second.front()];
                partnersOfB[found->second.front()] = a[i];
                found->second.pop_front();
            }
        }
    }

    template <typename Key>
    void match(const Key& key)
    {
        match(key, key);
    }

    const Item* partnerOfA(std::size_t index) const { return partnersOfA[index]; }
    const Item* partnerOfB(std::size_t index) const { return partnersOfB[index]; }

private:
    const std::vector<const Item*>& a;
    const std::vector<const Item*>& b;
    std::vector<const Item*> partnersOfA;
    std::vector<const Item*> partnersOfB;
};

std::vector<const PlannedModule*> pointersTo(const std::vector<PlannedModule>& modules)
{
    std::vector<const PlannedModule*> pointers;
    pointers.reserve(modules.size());
    for (const PlannedModule& module : modules) {
        pointers.push_back(&module);
    }
    return pointers;
}

using ModuleKey = std::optional<std::string>;

ModuleKey ownName(const PlannedModule& module)
{
    return module.hasOwnName ? ModuleKey(module.name) : std::nullopt;
}

ModuleKey typeIfNamed(const PlannedModule& module)
{
    return module.hasOwnName ? ModuleKey(module.module.moduleId()) : std::nullopt;
}

ModuleKey typeIfUnnamed(const PlannedModule& module)
{
    return module.hasOwnName ? std::nullopt : ModuleKey(module.module.moduleId());
}

} // namespace

std::vector<ModulePair> matchedModules(const Plan& a, const Plan& b)
{
    const auto ofA = pointersTo(a.modules);
    const auto ofB = pointersTo(b.modules);
    Matching<PlannedModule> matching(ofA, ofB);
    matching.match(ownName);
    matching.match(typeIfUnnamed);
    matching.match(typeIfUnnamed, typeIfNamed); // named since
    matching.match(typeIfNamed, typeIfUnnamed);
    std::vector<ModulePair> pairs;
    for (std::size_t i = 0; i < ofB.size(); ++i) {
        pairs.push_back({matching.partnerOfB(i), ofB[i]});
    }
    for (std::size_t i = 0; i < ofA.size(); ++i) {
        if (matching.partnerOfA(i) == nullptr) {
            pairs.push_back({ofA[i], nullptr});
        }
    }
    return pairs;
}

std::vector<ChannelPair> matchedChannels(const std::vector<const Channel*>& a,
                                         const std::vector<const Channel*>& b)
{
    Matching<Channel> matching(a, b);
    matching.match([](const Channel& channel) {
        return std::optional(std::tuple(channel.name, channel.number, channel.isInput));
    });
    matching.match([](const Channel& channel) {
        return std::optional(std::tuple(channel.name, channel.isInput));
    });
    matching.match([](const Channel& channel) { return std::optional(channel.name); });
    std::vector<ChannelPair> pairs;
    for (std::size_t i = 0; i < a.size(); ++i) {
        pairs.push_back({a[i], matching.partnerOfA(i)});
    }
    for (std::size_t i = 0; i < b.size(); ++i) {
        if (matching.partnerOfB(i) == nullptr) {
            pairs.push_back({nullptr, b[i]});
        }
    }
    return pairs;
}

} // namespace mxstation

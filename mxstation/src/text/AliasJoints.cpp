#include "text/AliasJoints.h"

#include <set>
#include <utility>

namespace mxstation {

namespace {

bool isIn(const YamlExtent& extent, std::size_t offset)
{
    return offset >= extent.begin && offset < extent.end;
}

// Finds the aliases that join the text of an entry with another text.
class JointsOf
{
public:
    JointsOf(const YamlExtent& entry, const YamlExtent& others) : own(entry), other(others) {}

    void find(const YamlNode& node)
    {
        if (!known.insert(&node).second) {
            return;
        }
        const bool isOwn = isIn(own, node.offset);
        for (const YamlAlias& alias : node.aliases) {
            const bool isJoint = isOwn ? isIn(other, alias.offset)
                                       : isIn(own, alias.offset) && isIn(other, node.offset);
            if (isJoint) {
                aliases.push_back({node.place, alias.place});
            }
        }
        for (const YamlNodeP& item : node.items) {
            find(*item);
        }
        for (const auto& [key, value] : node.members) {
            find(*key);
            find(*value);
        }
    }

    std::vector<YamlError> errors(const std::string& why) const
    {
        std::vector<YamlError> all;
        for (const auto& [named, alias] : aliases) {
            YamlNode node;
            node.place = named;
            node.aliases.push_back({alias, 0});
            all.push_back(usedAgain(node, why).front());
        }
        return all;
    }

private:
    YamlExtent own;
    YamlExtent other;
    std::set<const YamlNode*> known;
    std::vector<std::pair<SourcePlace, SourcePlace>> aliases; // the value, the alias
};

} // namespace

std::vector<YamlError> aliasesBetween(const YamlNode& node, const YamlExtent& own,
                                      const YamlExtent& other, const std::string& why)
{
    JointsOf joints(own, other);
    joints.find(node);
    return joints.errors(why);
}

} // namespace mxstation

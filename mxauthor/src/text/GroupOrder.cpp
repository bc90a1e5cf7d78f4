#include "GroupOrder.h"

#include <text/NearestWords.h>

namespace mxauthor {

namespace {

using Ordered = std::vector<std::pair<Group, YAML::Mark>>;

// Removes the groups from the context one by one.
class Taker
{
public:
    explicit Taker(BuildContext& buildContext) : context(buildContext) {}

    bool take(std::uint16_t id)
    {
        const auto found = context.groups.find(id);
        if (found == context.groups.end()) {
            return false;
        }
        Group group;
        group.id = id;
        group.content = std::move(found->second);
        ordered.emplace_back(std::move(group), context.marks[id]);
        context.groups.erase(found);
        return true;
    }

    bool takeRaw()
    {
        if (nextRaw == context.rawGroups.size()) {
            return false;
        }
        ordered.emplace_back(std::move(context.rawGroups[nextRaw]), context.rawMarks[nextRaw]);
        ++nextRaw;
        return true;
    }

    void takeAllInUsualOrder()
    {
        for (const std::uint16_t id : usualOrder()) {
            take(id);
        }
        while (takeRaw()) {
        }
    }

    bool isDone() const { return context.groups.empty() && nextRaw == context.rawGroups.size(); }

    Ordered ordered;

private:
    BuildContext& context;
    std::size_t nextRaw = 0;
};

void takeWord(const YAML::Node& node, Taker& taker, SourceErrors& errors)
{
    const auto word = readScalar(node, errors);
    if (!word) {
        return;
    }
    const auto id = groupOfWord(*word);
    if (!id && *word != rawWord) {
        std::vector<std::string> words = groupWords();
        words.push_back(rawWord);
        errors.add(node, "unknown group \"" + *word + "\"" + text::acceptedWords(*word, words));
    } else if (!(id ? taker.take(*id) : taker.takeRaw())) {
        errors.add(node, "there is no (other) group \"" + *word + "\" in this text");
    }
}

} // namespace

Ordered orderedGroups(const std::optional<YAML::Node>& node, BuildContext& context)
{
    Taker taker(context);
    if (!node) {
        taker.takeAllInUsualOrder();
        return std::move(taker.ordered);
    }
    for (const YAML::Node& item : readSequence(*node, context.errors)) {
        takeWord(item, taker, context.errors);
    }
    if (!taker.isDone()) {
        const std::string missing =
            context.groups.empty() ? rawWord : groupWord(context.groups.begin()->first);
        context.errors.add(*node, "the order must name all groups, \"" + missing + "\" is missing");
    }
    return std::move(taker.ordered);
}

} // namespace mxauthor

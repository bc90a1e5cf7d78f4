#include "UnreadBytes.h"

#include <text/NearestWords.h>

#include <algorithm>

namespace mxauthor {

namespace {

template <typename Content, typename Found>
void findRest(Content& content, Found found)
{
    std::visit(
        [&found](auto& group) {
            using Type = std::decay_t<decltype(group)>;
            if constexpr (std::is_same_v<Type, Parameters> || std::is_same_v<Type, OptionLists> ||
                          std::is_same_v<Type, Conversions> || std::is_same_v<Type, Channels> ||
                          std::is_same_v<Type, ChannelNames>) {
                found(group.rest.value);
            }
        },
        content);
}

std::string missingGroup(const std::string& word)
{
    return "there are no " + word + " in this text: state " + word + " too";
}

} // namespace

const Bytes* unreadBytes(const GroupContent& content)
{
    const Bytes* rest = nullptr;
    findRest(content, [&rest](const Bytes& bytes) { rest = &bytes; });
    return rest;
}

const std::vector<std::string>& wordsWithUnreadBytes()
{
    static const std::vector<std::string> words = {"channels", "channelNames", "parameters",
                                                   "optionLists", "conversions"};
    return words;
}

void buildUnreadBytes(const YAML::Node& node, BuildContext& context)
{
    const std::vector<std::string>& words = wordsWithUnreadBytes();
    for (const auto& [key, value] : readMapping(node, context.errors)) {
        const std::string& word = key.Scalar();
        if (std::find(words.begin(), words.end(), word) == words.end()) {
            context.errors.add(key,
                               "unknown group \"" + word + "\"" + text::acceptedWords(word, words));
            continue;
        }
        const auto found = context.groups.find(*groupOfWord(word));
        if (found == context.groups.end()) {
            context.errors.add(key, missingGroup(word));
            continue;
        }
        const Bytes bytes = readHex(value, context.errors).value_or(Bytes());
        findRest(found->second, [&bytes](Bytes& rest) { rest = bytes; });
    }
}

} // namespace mxauthor

#include <mxmodule/Catalogue.h>

#include <fmt/format.h>
#include <text/Counted.h>
#include <text/JsonText.h>
#include <text/ShownText.h>
#include <text/Utf8.h>

namespace mxmodule {

namespace {

using Source = SearchExplanation::Source;

std::string quotedList(const std::vector<std::string>& texts)
{
    std::string list;
    for (const std::string& text : texts) {
        list += " \"" + text::forTerminal(text) + "\"";
    }
    return list;
}

std::string howFound(const SearchExplanation& search)
{
    switch (search.source) {
    case Source::Index:
        return fmt::format("Compared with the search: {} that the search index names, the best "
                           "matches first, until there are enough; and {} newer than the index, "
                           "all of them.\n",
                           text::counted(search.candidates, "module"),
                           text::counted(search.notIndexed, "module"));
    case Source::Order:
        return "All modules are compared with the search, in the order of family and identifier, "
               "until there are enough: nothing of it is looked up in the search index.\n";
    case Source::Scan:
        break;
    }
    return "All modules are compared with the search, in the order of family and identifier: the "
           "database is of an older version, without a search index. It gets one when it is opened "
           "by a user who may change it.\n";
}

std::string nameOfSource(Source source)
{
    return source == Source::Index ? "index" : source == Source::Order ? "order" : "scan";
}

} // namespace

std::string SearchExplanation::text() const
{
    std::string all = howFound(*this);
    if (!words.empty()) {
        all += "Words, without case and accents:" + quotedList(words) + "\n";
    }
    if (source == Source::Index) {
        if (!parts.empty()) {
            all += "Parts looked up in the index:" + quotedList(parts) + "\n";
        }
        all += fmt::format("Index: {} of up to 1,024 modules\n", text::counted(blocks, "block"));
    }
    return all + "Statement that reads modules:\n  " + text::forTerminal(sql) + "\n";
}

std::string SearchExplanation::json() const
{
    return text::jsonText({{"schema", text::jsonSchema("mxtool.search-explanation", 1)},
                           {"source", nameOfSource(source)},
                           {"words", text::textsJson(words)},
                           {"parts", text::textsJson(parts)},
                           {"blocks", blocks},
                           {"candidates", candidates},
                           {"not_indexed", notIndexed},
                           {"sql", text::toUtf8(sql)}});
}

} // namespace mxmodule

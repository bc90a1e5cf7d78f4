#include "SearchMix.h"

#include <set>
#include <sstream>

namespace bench {

namespace {

using devices::database::Comparison;
using devices::database::ModuleCondition;

// What users look for: labels, order codes, names of channels and of parameters, texts that only
// options have; words that are frequent but in no module together; words that no module has.
const std::vector<std::string>& phrases()
{
    static const std::vector<std::string> texts{
        // labels and order codes
        "ai", "ai 1", "ai 16", "zähler", "ZÄHLER 32", "di 24", "16", "24 v", "16 di 24 v dc 3 ms",
        "relais", "relais 230 v 16 a", "Digitaleingang 24", "analog input ±10 v", "4-20 ma hart",
        "rs-485", "pt100 3-wire", "rtd pt1000", "thermocouple type k", "counter 32 bit",
        "energiezähler 65 a", "drehgeber", "safe inputs", "m-bus", "dali", "di3-", "ai4-07",
        "DO5-12345", "ct3-0", "em", "xtr", "slim", "ex i", "weiß", "lackiert", "rogowski",
        // channels
        "drahtbruch", "overload", "line fault 16", "messwert 4", "sicherung", "l2 i",
        // parameters
        "hysteresis", "wire break check", "netzunterdrückung", "öffnungszeit", "übersetzung",
        "watchdog", "safety address", "schleppfehler 24",
        // options
        "quadratwurzel", "logarithmisch", "115200", "letzten wert halten", "60 hz", "400 hz",
        "ni1000", "kurve",
        // frequent words that are not in one module
        "relais hart", "dali rtd", "zähler namur", "drehgeber thermocouple", "ai do", "do namur",
        "relais ±10", "ssi hart",
        // in no module
        "xylophon", "qqq", "zzzz 24", "24 qqq",
        // one and two characters
        "ü", "ß", "±", "µ", "°c", "a", "i", "1", "2", "dc", "ac", "v", "ma", "0,5", "0.5 a", "in",
        "er", "e i n", "1 2 3", "di do ai ao", "2 4 8 16", "m s", "tt", "z q"};
    return texts;
}

MixedQuery wordsQuery(const std::string& text)
{
    MixedQuery made{text, {}};
    std::istringstream stream(text);
    for (std::string word; stream >> word;) {
        made.query.words.push_back(word);
    }
    return made;
}

SearchMix asTyped()
{
    SearchMix mix{"words as typed", {}};
    std::set<std::vector<std::string>> seen;
    for (const std::string& phrase : phrases()) {
        for (std::size_t end = 1; end <= phrase.size(); ++end) {
            if (end < phrase.size() && (static_cast<unsigned char>(phrase[end]) & 0xC0U) == 0x80U) {
                continue; // inside a character
            }
            MixedQuery query = wordsQuery(phrase.substr(0, end));
            if (seen.insert(query.query.words).second) {
                mix.queries.push_back(std::move(query));
            }
        }
    }
    return mix;
}

struct Condition
{
    const char* field;
    char sign; ///< Of = > < ~.
    const char* value;
};

Comparison comparisonOf(char sign)
{
    return sign == '='   ? Comparison::Equal
           : sign == '>' ? Comparison::Greater
           : sign == '<' ? Comparison::Less
                         : Comparison::Contains;
}

void add(MixedQuery& query, const std::vector<Condition>& conditions)
{
    for (const Condition& condition : conditions) {
        query.text += std::string(query.text.empty() ? "" : ", ") + condition.field +
                      condition.sign + condition.value;
        query.query.conditions.push_back(
            {condition.field, comparisonOf(condition.sign), condition.value});
    }
}

const std::vector<std::vector<Condition>>& conditionLists()
{
    static const std::vector<std::vector<Condition>> lists{
        {{"module_id", '=', "20000001"}},
        {{"module_id", '~', "0001"}},
        {{"family", '=', "kv38"}},
        {{"family", '=', "kv37"}},
        {{"order_code", '=', "DI4-07919.A0"}},
        {{"order_code", '~', "DI3"}},
        {{"label", '~', "±10"}},
        {{"label", '~', "DI"}},
        {{"label", '~', "Zähler"}},
        {{"label", '~', "Xylophon"}},
        {{"in_bytes", '=', "4"}},
        {{"in_bytes", '=', "3000"}},
        {{"in_bytes", '>', "40"}},
        {{"out_bytes", '>', "0"}, {"in_bytes", '>', "0"}},
        {{"out_bytes", '=', "32"}},
        {{"channels", '=', "16"}},
        {{"channels", '>', "20"}},
        {{"channels", '<', "2"}},
        {{"parameters", '>', "50"}},
        {{"parameter_bytes", '=', "7"}},
        {{"file_bytes", '>', "3000"}},
        {{"channel", '=', "AI 16"}},
        {{"channel", '~', "Zähler"}},
        {{"channel", '=', "Xylophon"}},
        {{"direction", '=', "out"}},
        {{"size_letter", '=', "D"}},
        {{"parameter", '=', "Schleppfehler"}},
        {{"parameter", '~', "filter"}},
        {{"unit", '=', "µA/s"}},
        {{"unit", '=', "V"}},
        {{"option", '~', "Gray"}},
        {{"option", '=', "115200"}},
        {{"option", '~', "kurve"}},
        {{"direction", '=', "in"}, {"unit", '=', "%"}, {"option", '~', "Hz"}},
        {{"size_letter", '=', "W"}, {"channels", '=', "8"}, {"parameter", '~', "Hysteresis"}}};
    return lists;
}

SearchMix conditionsAlone()
{
    SearchMix mix{"conditions", {}};
    for (const auto& conditions : conditionLists()) {
        mix.queries.emplace_back();
        add(mix.queries.back(), conditions);
    }
    return mix;
}

SearchMix wordsAndConditions()
{
    const std::vector<std::pair<const char*, std::vector<Condition>>> combined{
        {"ai", {{"in_bytes", '=', "4"}}},
        {"ai", {{"in_bytes", '>', "40"}}},
        {"di 24", {{"channels", '=', "16"}}},
        {"24 v", {{"direction", '=', "out"}}},
        {"24 v", {{"option", '~', "Gray"}}},
        {"zähler", {{"channel", '~', "Latch"}}},
        {"relais", {{"unit", '=', "°C"}}},
        {"relais", {{"size_letter", '=', "D"}}},
        {"hart", {{"parameter", '~', "Hysteresis"}, {"out_bytes", '>', "0"}}},
        {"a", {{"label", '~', "Ex i"}}},
        {"xylophon", {{"direction", '=', "in"}}},
        {"quadratwurzel", {{"in_bytes", '=', "2"}}}};
    SearchMix mix{"words and conditions", {}};
    for (const auto& [words, conditions] : combined) {
        mix.queries.push_back(wordsQuery(words));
        add(mix.queries.back(), conditions);
    }
    return mix;
}

} // namespace

std::vector<SearchMix> searchMixes()
{
    return {asTyped(), conditionsAlone(), wordsAndConditions()};
}

} // namespace bench

#include "Records.h"

#include <TestDatabase.h>

#include <Poco/Data/RecordSet.h>
#include <Poco/Data/Statement.h>

#include <gmock/gmock.h>

#include <fstream>
#include <sstream>

namespace {

using devices::database::DeviceDatabase;
using devices::database::DeviceProperties;
using testing::ElementsAre;

// The SQL blocks of the document, in its order.
std::vector<std::string> documentedQueries()
{
    std::ifstream file(DATABASE_DOCUMENT);
    std::ostringstream text;
    text << file.rdbuf();
    const std::string document = text.str();
    const std::string opening = "```sql\n";
    std::vector<std::string> queries;
    for (auto at = document.find(opening); at != std::string::npos;
         at = document.find(opening, at + 1)) {
        const auto begin = at + opening.size();
        queries.push_back(document.substr(begin, document.find("```", begin) - begin));
    }
    return queries;
}

DeviceProperties measured(const std::string& id, std::uint32_t inputSize, std::size_t fileSize)
{
    DeviceProperties record = device(id);
    record.inDataSize = inputSize;
    record.mxFileData = new std::vector<char>(fileSize, 'x');
    return record;
}

class DocumentedQueries : public testkit::OnEachEngine
{
protected:
    DocumentedQueries()
    {
        DeviceDatabase database(url);
        // One channel in and one out, "Filter" with the options "off" and "50 Hz".
        database.insert(measured("a", 4, 11), contentNamed("one"));
        auto second = contentNamed("two");
        second.channels = {{1, "AI 1 one", "in", "W", "IW0"},
                           {2, "AI 2", "in", "W", "IW2"},
                           {3, "AI 3", "in", "W", "IW4"}};
        second.parameters[1].defaultValue = "50 Hz";
        database.insert(measured("b", 5, 21), second);
        auto third = contentNamed("three");
        third.parameters.clear();
        database.insert(measured("c", 4000000000, 31), third);
        auto other = measured("d", 0, 101);
        other.family = "kv39";
        auto fourth = contentNamed("four");
        fourth.channels.clear();
        fourth.parameters.pop_back();
        database.insert(other, fourth);
        database.insert(measured("unknown inside", 99, 99));
    }

    /// Returns the rows of the query of that number, cells separated by "|".
    std::vector<std::string> answers(std::size_t number)
    {
        const auto queries = documentedQueries();
        Poco::Data::Session session = place.otherProgram();
        Poco::Data::Statement select(session);
        select << queries.at(number - 1);
        select.execute();
        Poco::Data::RecordSet answer(select);
        std::vector<std::string> rows;
        for (std::size_t row = 0; row < answer.rowCount(); ++row) {
            std::string line;
            for (std::size_t column = 0; column < answer.columnCount(); ++column) {
                line += (column == 0 ? "" : "|") + answer.value(column, row).convert<std::string>();
            }
            rows.push_back(line);
        }
        return rows;
    }
};

RUN_ON_EACH_ENGINE(DocumentedQueries);

TEST_P(DocumentedQueries, AreFive)
{
    EXPECT_EQ(documentedQueries().size(), 5U);
}

TEST_P(DocumentedQueries, LargeInputs)
{
    EXPECT_THAT(answers(1), ElementsAre("c|Label three|4000000000", "b|Label two|5"));
}

TEST_P(DocumentedQueries, InputsAndOutputs)
{
    EXPECT_THAT(answers(2), ElementsAre("a|1|1", "b|3|0", "c|1|1"));
}

TEST_P(DocumentedQueries, ParametersWithAnOption)
{
    EXPECT_THAT(answers(3), ElementsAre("Label one|Filter one|off", "Label two|Filter two|50 Hz"));
}

TEST_P(DocumentedQueries, NamesOfSeveralModules)
{
    EXPECT_THAT(answers(4), ElementsAre("AI 1 one|in|2"));
}

TEST_P(DocumentedQueries, FamiliesAndBytes)
{
    // 10 + 20 + 30 bytes on disk: each stored file has one byte more.
    EXPECT_THAT(answers(5), ElementsAre("kv38|3|60", "kv39|1|100"));
}

} // namespace

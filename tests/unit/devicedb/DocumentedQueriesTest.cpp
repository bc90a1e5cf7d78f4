#include "Records.h"

#include <TestDatabase.h>

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
    DeviceProperties record = device(id, "label " + id);
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
        database.insert(measured("a", 4, 11));
        database.insert(measured("b", 5, 21));
        database.insert(measured("c", 8, 31));
        auto other = measured("d", 0, 101);
        other.family = "kv39";
        database.insert(other);
    }

    /// Returns the rows that the query answers, cells separated by "|".
    std::vector<std::string> answers(const std::string& query)
    {
        Poco::Data::Session session = place.otherProgram();
        std::vector<std::string> first;
        std::vector<std::string> second;
        std::vector<std::string> third;
        session << query, Poco::Data::Keywords::into(first), Poco::Data::Keywords::into(second),
            Poco::Data::Keywords::into(third), Poco::Data::Keywords::now;
        std::vector<std::string> rows;
        for (std::size_t i = 0; i < first.size(); ++i) {
            rows.push_back(first[i] + "|" + second[i] + "|" + third[i]);
        }
        return rows;
    }
};

RUN_ON_EACH_ENGINE(DocumentedQueries);

TEST_P(DocumentedQueries, AreTwo)
{
    EXPECT_EQ(documentedQueries().size(), 2U);
}

TEST_P(DocumentedQueries, LargeInputs)
{
    EXPECT_THAT(answers(documentedQueries().at(0)), ElementsAre("c|label c|8", "b|label b|5"));
}

TEST_P(DocumentedQueries, FamiliesAndBytes)
{
    // 10 + 20 + 30 bytes on disk: each stored file has one byte more.
    EXPECT_THAT(answers(documentedQueries().at(1)), ElementsAre("kv38|3|60", "kv39|1|100"));
}

} // namespace

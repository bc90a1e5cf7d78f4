#include "Records.h"

#include <Failure.h>
#include <ModuleBatches.h>
#include <TestDatabase.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <deque>

namespace {

using devices::database::batchesOf;
using devices::database::DeviceDatabase;
using devices::database::DeviceProperties;
using devices::database::ModuleContent;
using devices::database::ModuleSummary;
using devices::database::ModuleToStore;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testkit::failureOf;

using Rejections = std::vector<std::optional<std::string>>;

// Modules to store, with what they point to.
class Modules
{
public:
    void add(const DeviceProperties& record) { list.push_back({&kept(record), nullptr}); }

    void add(const DeviceProperties& record, const ModuleContent& content)
    {
        contents.push_back(content);
        list.push_back({&kept(record), &contents.back()});
    }

    const std::vector<ModuleToStore>& all() const { return list; }

private:
    const DeviceProperties& kept(const DeviceProperties& record)
    {
        records.push_back(record);
        return records.back();
    }

    std::deque<DeviceProperties> records; // a deque moves no element
    std::deque<ModuleContent> contents;
    std::vector<ModuleToStore> list;
};

// Content that is rejected in this process, not by the engine.
ModuleContent unreadableContent()
{
    ModuleContent content = contentNamed("x");
    content.channels[1].name = "AO \xB1";
    return content;
}

class Batches : public testkit::OnEachEngine
{
protected:
    // Stores modules of these identifiers, with content, in one transaction.
    Rejections stored(const std::vector<std::string>& ids)
    {
        Modules modules;
        for (const std::string& id : ids) {
            modules.add(device(id), contentNamed(id));
        }
        return stored(modules);
    }

    Rejections stored(const Modules& modules)
    {
        auto transaction = database.beginTransaction();
        const Rejections rejections = database.insertAll(modules.all());
        transaction.commit();
        return rejections;
    }

    std::string refusal() const { return cannotWrite + place.refusal(); }

    std::string labelOfContent(const std::string& id)
    {
        const auto content = database.content("kv38", id);
        return content ? content->label : "none";
    }

    DeviceDatabase database{url};
    const std::string cannotWrite = "Cannot write to device database " + place.name() + ": ";
    const std::string unreadable =
        cannotWrite + "byte 4 of a text of 4 bytes in the catalogue is not UTF-8 without NUL";
};

RUN_ON_EACH_ENGINE(Batches);

TEST_P(Batches, AreStoredWithTheirContent)
{
    Modules modules;
    modules.add(device("1", "one"), contentNamed("1"));
    modules.add(device("2", "two"));
    EXPECT_THAT(stored(modules), ElementsAre(std::nullopt, std::nullopt));
    EXPECT_THAT(storedIds(url), ElementsAre("1", "2"));
    EXPECT_EQ(database.find("2")->brandLabelName, "two");
    EXPECT_EQ(linesOf(database.content("kv38", "1").value()), linesOf(contentNamed("1")));
    EXPECT_EQ(labelOfContent("2"), "none");
}

TEST_P(Batches, MayBeEmpty)
{
    EXPECT_THAT(database.insertAll({}), IsEmpty());
    EXPECT_THAT(stored(std::vector<std::string>()), IsEmpty());
}

TEST_P(Batches, ReplaceWhatIsStored)
{
    stored(std::vector<std::string>{"1", "2", "3"});
    Modules next;
    next.add(device("1", "new"), contentNamed("new"));
    next.add(device("3", "new"));
    stored(next);
    EXPECT_EQ(labelOfContent("1"), "Label new");
    EXPECT_EQ(labelOfContent("2"), "Label 2");
    EXPECT_EQ(labelOfContent("3"), "none");
    EXPECT_EQ(database.find("3")->brandLabelName, "new");
}

TEST_P(Batches, RefusedModuleIsLeftOutAlone)
{
    place.refuseModuleBad();
    EXPECT_THAT(stored({"bad", "1"}), ElementsAre(refusal(), std::nullopt));
    EXPECT_THAT(stored({"2", "bad", "3"}), ElementsAre(std::nullopt, refusal(), std::nullopt));
    EXPECT_THAT(stored({"4", "5", "bad"}), ElementsAre(std::nullopt, std::nullopt, refusal()));
    EXPECT_THAT(storedIds(url), ElementsAre("1", "2", "3", "4", "5"));
    EXPECT_EQ(labelOfContent("3"), "Label 3");
    EXPECT_EQ(labelOfContent("bad"), "none");
}

TEST_P(Batches, MayBeRefusedAsAWhole)
{
    place.refuseModuleBad();
    Modules modules;
    for (const char* family : {"kv38", "kv39", "kv40"}) {
        DeviceProperties record = device("bad");
        record.family = family;
        modules.add(record);
    }
    EXPECT_THAT(stored(modules), ElementsAre(refusal(), refusal(), refusal()));
    EXPECT_THAT(storedIds(url), IsEmpty());
}

TEST_P(Batches, UnreadableContentIsTheReasonThatOneInsertStates)
{
    Modules modules;
    modules.add(device("1"), contentNamed("1"));
    modules.add(device("2"), unreadableContent());
    modules.add(device("3"), contentNamed("3"));
    EXPECT_EQ(failureOf([&] { database.insert(device("2"), unreadableContent()); }), unreadable);
    EXPECT_THAT(stored(modules), ElementsAre(std::nullopt, unreadable, std::nullopt));
    EXPECT_THAT(storedIds(url), ElementsAre("1", "3"));
}

TEST_P(Batches, LastOfEqualKeysIsStored)
{
    Modules modules;
    modules.add(device("1", "first"), contentNamed("first"));
    modules.add(device("2", "other"), contentNamed("other"));
    modules.add(device("1", "second"), contentNamed("second"));
    modules.add(device("2", "last"));
    modules.add(device("1", "last"), contentNamed("last"));
    EXPECT_THAT(stored(modules), testing::Each(std::nullopt));
    EXPECT_EQ(database.find("1")->brandLabelName, "last");
    EXPECT_EQ(labelOfContent("1"), "Label last");
    EXPECT_EQ(database.find("2")->brandLabelName, "last");
    EXPECT_EQ(labelOfContent("2"), "none");
}

TEST_P(Batches, RefusedOneOfEqualKeysLeavesTheOneBeforeIt)
{
    Modules modules;
    modules.add(device("1", "kept"), contentNamed("kept"));
    modules.add(device("2", "refused"), unreadableContent());
    modules.add(device("1", "refused"), unreadableContent());
    modules.add(device("2", "kept"), contentNamed("kept"));
    EXPECT_THAT(stored(modules), ElementsAre(std::nullopt, unreadable, unreadable, std::nullopt));
    EXPECT_EQ(database.find("1")->brandLabelName, "kept");
    EXPECT_EQ(labelOfContent("1"), "Label kept");
    EXPECT_EQ(database.find("2")->brandLabelName, "kept");
    EXPECT_EQ(labelOfContent("2"), "Label kept");
}

TEST_P(Batches, OfMoreModulesThanOneStatementAreWhole)
{
    place.refuseModuleBad();
    Modules modules;
    for (int number = 1000; number < 1600; ++number) {
        modules.add(device(number == 1300 ? "bad" : std::to_string(number)));
    }
    const Rejections rejections = stored(modules);
    EXPECT_EQ(std::count(rejections.begin(), rejections.end(), std::nullopt), 599);
    EXPECT_EQ(rejections[300], refusal());
    const auto ids = storedIds(url);
    ASSERT_THAT(ids, SizeIs(599));
    EXPECT_EQ(ids[299], "1299");
    EXPECT_EQ(ids[300], "1301");
    EXPECT_EQ(ids[598], "1599");
}

TEST_P(Batches, WithoutATransactionBecomeVisibleTogether)
{
    place.refuseModuleBad();
    Modules modules;
    for (const char* id : {"1", "bad", "2"}) {
        modules.add(device(id));
    }
    EXPECT_THAT(database.insertAll(modules.all()),
                ElementsAre(std::nullopt, refusal(), std::nullopt));
    EXPECT_THAT(storedIds(url), ElementsAre("1", "2"));
    database.beginTransaction().commit(); // none is open
}

TEST_P(Batches, RefusedInATransactionLeaveItsOtherChanges)
{
    place.refuseModuleBad();
    auto transaction = database.beginTransaction();
    database.insert(device("1"));
    Modules modules;
    modules.add(device("bad"));
    EXPECT_THAT(database.insertAll(modules.all()), ElementsAre(refusal()));
    EXPECT_TRUE(transaction.isAlive());
    database.insert(device("2"));
    transaction.commit();
    EXPECT_THAT(storedIds(url), ElementsAre("1", "2"));
}

TEST(SqliteBatches, TransactionThatTheEngineGaveUpIsAFailure)
{
    const testkit::TestDatabase place(testkit::Engine::Sqlite);
    DeviceDatabase database(place.url());
    place.execute("CREATE TRIGGER refuse BEFORE INSERT ON device_properties"
                  " WHEN NEW.module_id = CAST('bad' AS BLOB)"
                  " BEGIN SELECT RAISE(ROLLBACK, 'refused'); END");
    Modules modules;
    for (const char* id : {"1", "bad", "2"}) {
        modules.add(device(id));
    }
    const std::string refusal = "Cannot write to device database " + place.name() + ": refused";
    EXPECT_EQ(failureOf([&] { database.insertAll(modules.all()); }), refusal);
    {
        auto transaction = database.beginTransaction();
        EXPECT_EQ(failureOf([&] { database.insertAll(modules.all()); }), refusal);
        EXPECT_FALSE(transaction.isAlive());
    }
    EXPECT_THAT(storedIds(place.url()), IsEmpty());
}

std::vector<ModuleSummary> summariesOf(const std::vector<std::string>& ids)
{
    std::vector<ModuleSummary> modules;
    for (const std::string& id : ids) {
        modules.emplace_back();
        modules.back().family = "kv38";
        modules.back().moduleIdText = id;
    }
    return modules;
}

TEST_P(Batches, AreRemovedWithTheirContent)
{
    stored(std::vector<std::string>{"1", "2", "3"});
    EXPECT_EQ(database.removeAll(summariesOf({"1", "3", "4"})), 2U);
    EXPECT_EQ(database.removeAll(summariesOf({"1"})), 0U);
    EXPECT_EQ(database.removeAll({}), 0U);
    EXPECT_THAT(storedIds(url), ElementsAre("2"));
    EXPECT_EQ(labelOfContent("1"), "none");
    EXPECT_EQ(labelOfContent("2"), "Label 2");
}

TEST_P(Batches, AreVisitedInTheOrderThatIsAskedFor)
{
    std::vector<std::string> ids;
    for (int number = 100; number < 250; ++number) {
        ids.push_back(std::to_string(number));
    }
    stored(ids);
    std::reverse(ids.begin(), ids.end());
    auto asked = ids;
    asked.insert(asked.begin() + 70, {"unknown", "111"});
    ids.insert(ids.begin() + 70, "111");
    std::vector<std::string> visited;
    database.visit(summariesOf(asked),
                   [&](const DeviceProperties& record) { visited.push_back(record.moduleIdText); });
    EXPECT_EQ(visited, ids);
}

TEST_P(Batches, AreVisitedWithTheirContent)
{
    Modules modules;
    modules.add(device("1"), contentNamed("1"));
    modules.add(device("2"));
    modules.add(device("3"), contentNamed("3"));
    modules.add(device("\xB1")); // is no text
    stored(modules);
    std::vector<std::string> visited;
    database.visitWithContent(summariesOf({"3", "\xB1", "2", "1"}),
                              [&](const DeviceProperties& record, const ModuleContent* content) {
                                  visited.push_back(record.moduleIdText);
                                  const auto lines = content == nullptr ? std::vector<std::string>()
                                                                        : linesOf(*content);
                                  visited.insert(visited.end(), lines.begin(), lines.end());
                              });
    std::vector<std::string> expected = {"3"};
    for (const std::string id : {"3", "1"}) {
        const auto lines = linesOf(contentNamed(id));
        expected.insert(expected.end(), lines.begin(), lines.end());
        if (id == "3") {
            expected.insert(expected.end(), {"\xB1", "2", "1"});
        }
    }
    EXPECT_EQ(visited, expected);
}

// The positions of modules of these identifiers.
std::vector<devices::database::ModulePositions> batchesOfIds(const std::vector<std::string>& ids)
{
    Modules modules;
    for (const std::string& id : ids) {
        modules.add(device(id));
    }
    return batchesOf(modules.all());
}

TEST(BatchesOf, HaveEachKeyOnce)
{
    EXPECT_THAT(batchesOfIds({"a", "b", "a", "c", "b", "a"}),
                ElementsAre(ElementsAre(0, 1, 3), ElementsAre(2, 4), ElementsAre(5)));
}

TEST(BatchesOf, HaveABoundedCountOfModules)
{
    std::vector<std::string> ids;
    for (int number = 0; number < 513; ++number) {
        ids.push_back(std::to_string(number));
    }
    EXPECT_THAT(batchesOfIds(ids), ElementsAre(SizeIs(256), SizeIs(256), ElementsAre(512)));
}

// Nine MiB are above the bound of eight; one module may be above it alone.
TEST(BatchesOf, HaveABoundedSize)
{
    const DeviceProperties::Bytes three = new std::vector<char>(3U << 20U);
    const DeviceProperties::Bytes nine = new std::vector<char>(9U << 20U);
    Modules modules;
    for (const char* id : {"1", "2", "3", "4", "5"}) {
        DeviceProperties record = device(id);
        record.mxFileData = std::string(id) == "5" ? nine : three;
        modules.add(record);
    }
    EXPECT_THAT(batchesOf(modules.all()),
                ElementsAre(ElementsAre(0, 1), ElementsAre(2, 3), ElementsAre(4)));
}

// Two modules with 20,000 options of 256 bytes each are above the bound.
TEST(BatchesOf, CountTheRowsOfTheContent)
{
    ModuleContent content;
    content.parameters.emplace_back();
    content.parameters[0].options.resize(20000);
    Modules modules;
    for (const char* id : {"1", "2", "3"}) {
        modules.add(device(id), content);
    }
    EXPECT_THAT(batchesOf(modules.all()),
                ElementsAre(ElementsAre(0), ElementsAre(1), ElementsAre(2)));
}

} // namespace

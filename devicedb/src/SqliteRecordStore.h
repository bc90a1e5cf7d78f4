#pragma once

#include "RecordStore.h"

#include <Poco/Data/Session.h>

namespace devices::database {

/// Device records in an SQLite file, or in memory for the path ":memory:".
///
/// A committed transaction survives a power cut: journal, file and directory are synchronised.
class SqliteRecordStore final : public RecordStore
{
public:
    /// Opens the file at `path`, creating it and its schema when missing. Refuses a schema newer
    /// than this library, and a file that holds something else.
    explicit SqliteRecordStore(const std::string& path);

    void begin() override;
    void commit() override;
    void rollback() override;
    void insert(const DeviceProperties& record) override;
    std::optional<DeviceProperties> find(const std::string& moduleId) override;
    std::vector<DeviceProperties> list() override;
    bool remove(const std::string& moduleId) override;

private:
    void execute(const std::string& sql);
    void prepareSchema();
    int readSchemaVersion();
    void migrateFrom(int version);
    void requireTransaction();

    /// Runs `work`; turns a driver's exception into a sentence that says what was `attempted`.
    template <typename Work>
    auto attempt(const char* attempted, Work work) -> decltype(work());

    std::string name; ///< For messages: "sqlite:" and the path.
    Poco::Data::Session session;
    bool inTransaction = false; ///< Between `begin` and `commit` or `rollback`.
};

} // namespace devices::database

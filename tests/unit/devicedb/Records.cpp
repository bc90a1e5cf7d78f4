#include "Records.h"

using devices::database::DeviceDatabase;
using devices::database::DeviceProperties;

DeviceProperties device(const std::string& moduleId, const std::string& label)
{
    DeviceProperties record;
    record.family = "kv38";
    record.moduleIdText = moduleId;
    record.brandLabelName = label;
    record.text4 = std::string(1, '\0');
    record.text5 = std::string(1, '\0');
    record.inDataSize = 2;
    record.outDataSize = 3;
    return record;
}

std::vector<std::string> moduleIds(const std::vector<DeviceProperties>& records)
{
    std::vector<std::string> ids;
    for (const DeviceProperties& record : records) {
        ids.push_back(record.moduleIdText);
    }
    return ids;
}

std::vector<std::string> storedIds(const std::string& url)
{
    return moduleIds(DeviceDatabase(url).list());
}

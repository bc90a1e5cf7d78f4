// Uses the libraries from many threads at once as docs/guide/threads.md allows it, for
// ThreadSanitizer to watch. With a word it leaves the mutex out:
//
//     unlocked    of the parsers: operations are refused, none goes wrong
//     companion   of the companion library, called by the host itself: the same
//     database    of the chosen database, where ThreadSanitizer has to notice it

#include <devices/database/DeviceDatabase.h>
#include <devices/parser/mx/ByteReaders.h>
#include <devices/parser/mx/HexText.h>
#include <devices/parser/mx/LoadFile.h>
#include <devices/parser/mx/Parser_kv38.h>
#include <mxfileext/mxfileext.h>

#include <unistd.h>

#include <atomic>
#include <filesystem>
#include <iostream>
#include <mutex>
#include <thread>

namespace {

using namespace devices::parser;
using devices::database::DeviceDatabase;
using Device = IDeviceParser::BuiltDevice;

constexpr int threadCount = 4;
constexpr int rounds = 25;
constexpr const char* files[] = {"MX0502.bin", "MX0304.bin", "MX0108.bin", "MX0803.bin"};

std::mutex oneAtATime;
bool isLocked = true;
std::atomic<int> refused;

std::unique_lock<std::mutex> lock()
{
    return isLocked ? std::unique_lock(oneAtATime) : std::unique_lock<std::mutex>();
}

std::vector<char> bytesOf(const std::string& file)
{
    std::vector<char> mxData;
    mx::loadFile(std::string(EXAMPLE_MODULES "/") + file, mxData);
    return mxData;
}

// What all threads read: a device, its file, its container.
struct Shared
{
    std::vector<char> mxData = bytesOf("MX0304.bin");
    std::shared_ptr<Device> device;
    mx::Parser container;

    Shared()
    {
        device = mx::Parser_kv38().parse(mxData, nullptr, 0, 0);
        container.parse(mxData.data(), static_cast<std::uint32_t>(mxData.size()));
    }
};

void require(bool condition, const char* what)
{
    if (!condition) {
        std::cerr << "wrong result: " << what << '\n';
        _exit(1);
    }
}

// The first parameter of `device`, with the value that it has.
datamodel::ParamDevice firstValue(const Device& device)
{
    datamodel::ParamDevice values;
    values.deviceTypeId = device.deviceTypeId;
    for (const auto& attribute : device.attributes) {
        if (attribute->typeCode() == datamodel::parameterTypeCode && values.attributes.empty()) {
            auto value = std::make_shared<datamodel::Parameter>();
            value->id = attribute->id;
            value->value = static_cast<const datamodel::Parameter&>(*attribute).value;
            values.attributes.push_back(value);
        }
    }
    return values;
}

// Does `operation`; without the mutex it may be refused, which has to say what helps.
template <class Operation>
void attempt(Operation&& operation)
{
    try {
        operation();
    } catch (const std::logic_error& refusal) {
        ++refused;
        const std::string text = refusal.what();
        require(!isLocked && text.find("docs/guide/threads.md") != std::string::npos, "refusal");
    }
}

// One operation after the other, each under the mutex; the threads take turns between them.
void translateAndConfigure(const std::vector<char>& mxData)
{
    std::shared_ptr<Device> device;
    {
        const auto locked = lock();
        mx::Parser_kv38 parser;
        device = parser.parse(mxData, nullptr, 0, 0);
        const auto values = firstValue(*device);
        const auto image = parser.getCalculatedRawConfig(
            FieldbusType::Raw, mxData, device.get(), const_cast<datamodel::ParamDevice*>(&values));
        require(*image == *device->privateProps.defaultParameterBlock, "image");
    }
    const auto locked = lock();
    require(!mx::Parser_kv38().getChannelMappingInfoList(device.get()).empty(), "mapping");
}

// Everything that needs no mutex.
void read(Shared& shared)
{
    const std::shared_ptr<Device> device = shared.device;
    const devices::database::DeviceProperties record = device->privateProps;
    require(mx::bufferAsHex(*record.defaultParameterBlock).size() == 33 * 3 - 1, "hexadecimal");
    std::size_t letters = 0;
    for (const auto& attribute : device->attributes) {
        letters += attribute->id.size();
    }
    require(letters > 57, "ids");
    std::uint32_t size = 0;
    const std::uint8_t* texts = shared.container.getGroup(0x20D3, &size);
    require(texts != nullptr && mx::readU16BE(texts - 4) == 0x20D3, "group");
    std::uint32_t moduleId = 0;
    std::uint8_t moduleType = 0;
    shared.container.getModuleIdAndType(&moduleId, &moduleType);
    require(moduleId == 0x5A030304, "identity");
    const std::uint8_t slot[8] = {0, 0, 0, 0, 0, 0, 0x01, 0x02};
    require(mx::kv38ParameterValueToString(slot, mx::MxParameterDatatype::UInt16) == "258", "text");
}

// A database object of its own on the file that all threads use.
void store(const Shared& shared, const std::string& url, int thread)
{
    DeviceDatabase database(url);
    auto record = shared.device->privateProps;
    record.moduleIdText = mx::u32AsHex(static_cast<std::uint32_t>(thread));
    database.insert(record);
    require(database.find(record.moduleIdText).has_value(), "record");
}

// What a host does that calls the companion library itself, with a module index of its own.
void useCompanion(Shared& shared, unsigned char index)
{
    auto& block = *shared.device->privateProps.defaultParameterBlock;
    std::vector<unsigned char> image(block.begin(), block.end());
    std::uint32_t size = 0;
    const std::uint8_t* texts = shared.container.getGroup(0x20D3, &size);
    attempt([&] { mxfileext::clearParsedData(index); });
    attempt([&] {
        mxfileext::parseGroup(index, 0x20D3, texts - 4, static_cast<unsigned short>(size + 6));
    });
    attempt([&] {
        mxfileext::initializeModule(block.data(), static_cast<unsigned short>(block.size()));
    });
    for (const auto& attribute : shared.device->attributes) {
        if (attribute->typeCode() != datamodel::parameterTypeCode) {
            continue;
        }
        const auto& parameter = static_cast<const mx::Parser_kv38::ParameterP&>(*attribute);
        auto* const record = const_cast<unsigned char*>(parameter.privateProps.record);
        mxfileext::ParameterValue_t value{};
        attempt([&] { mxfileext::getParameterValue(record, image.data(), &value); });
        float number = 0;
        std::string unit;
        attempt([&] {
            mxfileext::getConvertedParameter(index, image.data(), record, &number, &number, &number,
                                             unit);
        });
        attempt([&] { mxfileext::setParameter(index, image.data(), record, "0"); });
    }
}

void work(Shared& shared, const std::string& url, int thread)
{
    const std::vector<char> mxData = bytesOf(files[thread % 4]);
    for (int round = 0; round < rounds; ++round) {
        attempt([&mxData] { translateAndConfigure(mxData); });
        read(shared);
    }
    store(shared, url, thread);
}

void workWithCompanion(Shared& shared, const std::string& /*url*/, int thread)
{
    for (int round = 0; round < rounds; ++round) {
        useCompanion(shared, static_cast<unsigned char>(thread + 1));
    }
}

void chooseDatabase(Shared& /*shared*/, const std::string& /*url*/, int /*thread*/)
{
    devices::database::insertThrough([](auto& /*record*/) {});
}

// A parser that has an operation of another thread fall into its own.
class Disturbed : public mx::Parser_kv38
{
protected:
    void parseContent() override
    {
        std::thread([this] {
            attempt([this] { mx::Parser_kv38().getChannelMappingInfoList(dev.get()); });
        }).join();
        Parser_kv38::parseContent();
    }
};

} // namespace

int main(int argc, char** argv)
{
    const std::string word = argc < 2 ? "" : argv[1];
    isLocked = word.empty();
    auto* const job = word == "companion"  ? workWithCompanion
                      : word == "database" ? chooseDatabase
                                           : work;
    const auto file = std::filesystem::temp_directory_path() /
                      ("shared-use-" + std::to_string(getpid()) + ".sqlite");
    {
        Shared shared;
        std::vector<std::thread> threads;
        for (int i = 0; i < threadCount; ++i) {
            threads.emplace_back(
                [&shared, &file, i, job] { job(shared, "sqlite:" + file.string(), i); });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        if (word == "unlocked") {
            const int before = refused;
            require(Disturbed().parse(shared.mxData, nullptr, 0, 0) != nullptr, "device");
            require(refused == before + 1, "a second thread that was let in");
        }
    }
    std::filesystem::remove(file);
    std::cout << threadCount << " threads, " << rounds << " rounds each, " << refused
              << " operations refused\n";
}

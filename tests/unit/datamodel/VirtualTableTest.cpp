#include "VirtualSlot.h"

#include <datamodel/DataModel.h>
#include <devices/database/DeviceProperties.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <new>
#include <string>

// Hosts are compiled against the slots of the virtual tables: destructor, deleting destructor,
// typeCode, and nothing else.

namespace {

struct Counts
{
    int destroyed = 0;
    int released = 0;
};

Counts counts; // of the test that runs

template <class Class>
struct Tracked : Class
{
    ~Tracked() { ++counts.destroyed; }
    static void* operator new(std::size_t size) { return ::operator new(size); }
    static void* operator new(std::size_t, void* place) { return place; }
    static void operator delete(void* object)
    {
        ++counts.released;
        ::operator delete(object);
    }
};

using DestructorSlot = void (*)(void*);
using TypeCodeSlot = int (*)(const void*);

// Calls through a slot, past the type system.
__attribute__((no_sanitize("undefined"))) void destroyThrough(void* slot, void* object)
{
    reinterpret_cast<DestructorSlot>(slot)(object);
}

__attribute__((no_sanitize("undefined"))) int askThrough(void* slot, const void* object)
{
    return reinterpret_cast<TypeCodeSlot>(slot)(object);
}

template <class Class>
class VirtualTable : public testing::Test
{
protected:
    VirtualTable() { counts = {}; }
};

using Classes = testing::Types<datamodel::BaseObject, datamodel::Attribute, datamodel::BinaryObject,
                               datamodel::CatalogDeviceInfo, datamodel::Channel, datamodel::Device,
                               datamodel::ParamDevice, datamodel::Parameter,
                               datamodel::ParameterOption, datamodel::ParameterValueRange,
                               datamodel::Role, datamodel::Set, datamodel::StaticProperty,
                               datamodel::Device_p<devices::database::DeviceProperties>,
                               datamodel::Channel_p<int>, datamodel::Parameter_p<int>>;

// Names the suites by number, as the default does, which clang's pedantic warnings refuse.
struct ByNumber
{
    template <class Class>
    static std::string GetName(int number)
    {
        return std::to_string(number);
    }
};

TYPED_TEST_SUITE(VirtualTable, Classes, ByNumber);

TYPED_TEST(VirtualTable, Slot0DestroysWithoutReleasing)
{
    alignas(Tracked<TypeParam>) unsigned char place[sizeof(Tracked<TypeParam>)];
    void* object = new (place) Tracked<TypeParam>;
    destroyThrough(testkit::virtualTableOf(object)[0], object);
    EXPECT_EQ(counts.destroyed, 1);
    EXPECT_EQ(counts.released, 0);
}

TYPED_TEST(VirtualTable, Slot1DestroysAndReleases)
{
    void* object = new Tracked<TypeParam>;
    destroyThrough(testkit::virtualTableOf(object)[1], object);
    EXPECT_EQ(counts.destroyed, 1);
    EXPECT_EQ(counts.released, 1);
}

TYPED_TEST(VirtualTable, Slot2IsTypeCode)
{
    const TypeParam object;
    EXPECT_EQ(askThrough(testkit::virtualTableOf(&object)[2], &object), object.typeCode());
    EXPECT_EQ(testkit::slotOf(&TypeParam::typeCode), 2);
}

} // namespace

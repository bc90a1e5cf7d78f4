/* Reads and writes values through the header of every-kind.yaml, in images filled by hand. Valid C11 and C++17;
 * LITTLE_ENDIAN_IMAGE: the images have the least significant byte first. */

#include "pump-house.h"

#include <stdio.h>
#include <string.h>

#ifdef LITTLE_ENDIAN_IMAGE
#define BY_ORDER(big, little) (little)
#else
#define BY_ORDER(big, little) (big)
#endif

static int failures = 0;

#define EXPECT(condition) expect((condition), #condition, __LINE__)

static void expect(bool holds, const char *text, int line)
{
    if (!holds) {
        printf("images.c:%d: %s is false\n", line, text);
        ++failures;
    }
}

/* Bytes of the input image, the first is byte 8 of the station. */
static const uint8_t given[PUMP_HOUSE_SIZE_OF_INPUT] = {
    0x01, 0x02, 0x03, 0x04, 0x05, 0x06, 0x07, 0x08, /* UInt64 */
    0x80, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x7f, /* SInt64 */
    0xde, 0xad, 0xbe, 0xef,                         /* UInt32 */
    0xff, 0xff, 0xff, 0x00,                         /* SInt32 */
    0x12, 0x34,                                     /* UInt16 */
    0xff, 0xfe,                                     /* SInt16 */
    0xc8, 0x80,                                     /* UInt8, SInt8 */
    0x9b,                                           /* 1, then 101, then 1001 */
    0x5a, 0x02};

static void readValues(void)
{
    Pump_house_input_image in;
    memcpy(in.bytes, given, sizeof given);
    EXPECT(Pump_house_read_All_In_UInt64(&in) ==
           BY_ORDER(UINT64_C(0x0102030405060708), UINT64_C(0x0807060504030201)));
    EXPECT(Pump_house_read_All_In_SInt64(&in) ==
           BY_ORDER(INT64_MIN + 0x7f, INT64_C(0x7f00000000000080)));
    EXPECT(Pump_house_read_All_In_UInt32(&in) == BY_ORDER(0xdeadbeefu, 0xefbeaddeu));
    EXPECT(Pump_house_read_All_In_SInt32(&in) == BY_ORDER(-256, 16777215));
    EXPECT(Pump_house_read_All_In_UInt16(&in) == BY_ORDER(0x1234u, 0x3412u));
    EXPECT(Pump_house_read_LT_101(&in) == BY_ORDER(-2, -257));
    EXPECT(Pump_house_read_All_In_UInt8(&in) == 200u);
    EXPECT(Pump_house_read_All_In_SInt8(&in) == -128);
    EXPECT(Pump_house_read_All_In_Bit(&in));
    EXPECT(Pump_house_read_All_In_Byte_3_bits(&in) == 5u);
    EXPECT(Pump_house_read_All_In_Byte_4_bits(&in) == 9u);
    EXPECT(Pump_house_read_All_In_Byte_8_bits(&in) == 0x5au);
    EXPECT(Pump_house_read_All_channel_201(&in));
    in.bytes[30] = 0x9a;
    EXPECT(!Pump_house_read_All_In_Bit(&in));
}

/* An output image with one value per byte. */
static Pump_house_output_image filled(uint8_t value)
{
    Pump_house_output_image image;
    memset(image.bytes, value, sizeof image.bytes);
    return image;
}

/* Whether `image` has `count` bytes of `expected` from byte `first` on, and `other` elsewhere. */
static bool holds(const Pump_house_output_image *image, uint8_t other, unsigned first,
                  unsigned count, const uint8_t *expected)
{
    Pump_house_output_image whole = filled(other);
    memcpy(&whole.bytes[first], expected, count);
    return memcmp(image->bytes, whole.bytes, sizeof whole.bytes) == 0;
}

#define EXPECT_WRITTEN(channel, value, other, first, count, ...)                                   \
    do {                                                                                           \
        const uint8_t expected[] = {__VA_ARGS__};                                                  \
        Pump_house_output_image out = filled(other);                                               \
        Pump_house_write_##channel(&out, value);                                                   \
        expect(holds(&out, other, first, count, expected), #channel " written", __LINE__);         \
        expect(Pump_house_read_##channel(&out) == (value), #channel " read back", __LINE__);       \
    } while (false)

static void writeBytes(void)
{
#ifdef LITTLE_ENDIAN_IMAGE
    EXPECT_WRITTEN(All_Out_UInt64, UINT64_C(0x0102030405060708), 0x55, 0, 8, 8, 7, 6, 5, 4, 3, 2, 1);
    EXPECT_WRITTEN(All_Out_SInt64, -2, 0x55, 8, 8, 0xfe, 255, 255, 255, 255, 255, 255, 255);
    EXPECT_WRITTEN(All_Out_UInt32, 0xdeadbeefu, 0x55, 16, 4, 0xef, 0xbe, 0xad, 0xde);
    EXPECT_WRITTEN(All_Out_SInt32, INT32_MIN, 0x55, 20, 4, 0, 0, 0, 0x80);
    EXPECT_WRITTEN(All_Out_UInt16, 0x1234u, 0x55, 24, 2, 0x34, 0x12);
    EXPECT_WRITTEN(All_Out_SInt16, -257, 0x55, 26, 2, 0xff, 0xfe);
#else
    EXPECT_WRITTEN(All_Out_UInt64, UINT64_C(0x0102030405060708), 0x55, 0, 8, 1, 2, 3, 4, 5, 6, 7, 8);
    EXPECT_WRITTEN(All_Out_SInt64, -2, 0x55, 8, 8, 255, 255, 255, 255, 255, 255, 255, 0xfe);
    EXPECT_WRITTEN(All_Out_UInt32, 0xdeadbeefu, 0x55, 16, 4, 0xde, 0xad, 0xbe, 0xef);
    EXPECT_WRITTEN(All_Out_SInt32, INT32_MIN, 0x55, 20, 4, 0x80, 0, 0, 0);
    EXPECT_WRITTEN(All_Out_UInt16, 0x1234u, 0x55, 24, 2, 0x12, 0x34);
    EXPECT_WRITTEN(All_Out_SInt16, -257, 0x55, 26, 2, 0xfe, 0xff);
#endif
    EXPECT_WRITTEN(All_Out_UInt8, 200u, 0x55, 28, 1, 200);
    EXPECT_WRITTEN(All_Out_SInt8, -1, 0x55, 29, 1, 255);
}

/* Bits are the same in both orders; those of other channels stay as they were. */
static void writeBits(void)
{
    EXPECT_WRITTEN(All_Out_Bit, true, 0x00, 30, 1, 0x01);
    EXPECT_WRITTEN(All_Out_Bit, false, 0xff, 30, 1, 0xfe);
    EXPECT_WRITTEN(All_Out_Byte_3_bits, 5u, 0x00, 30, 1, 0x0a);
    EXPECT_WRITTEN(All_Out_Byte_3_bits, 5u, 0xff, 30, 1, 0xfb);
    EXPECT_WRITTEN(All_Out_Byte_4_bits, 9u, 0x00, 30, 1, 0x90);
    EXPECT_WRITTEN(All_Out_Byte_8_bits, 0x5au, 0xff, 31, 1, 0x5a);
    /* 0xabc = 1010 1011 1100: its lowest three bits 100 from bit 5 on, then 0101 0111, then 1. */
    EXPECT_WRITTEN(wide_Field, 0xabcu, 0x00, 40, 3, 0x80, 0x57, 0x01);
    EXPECT_WRITTEN(wide_Field, 0xabcu, 0xff, 40, 3, 0x9f, 0x57, 0xff);
    /* Bits 7 to 66: all of bytes 49 to 55, one bit before them, three after. */
    EXPECT_WRITTEN(widest_Field, UINT64_C(0xfffffffffffffff), 0x00, 48, 9, 0x80, 255, 255, 255, 255,
                   255, 255, 255, 0x07);
    EXPECT_WRITTEN(widest_Field, 1u, 0x00, 48, 1, 0x80);
}

/* What does not fit into a bit field does not reach its neighbours. */
static void cutValues(void)
{
    Pump_house_output_image out = filled(0x00);
    Pump_house_write_All_Out_Byte_3_bits(&out, 0xffu);
    EXPECT(out.bytes[30] == 0x0e);
    Pump_house_write_wide_Field(&out, 0xffffu);
    EXPECT(out.bytes[40] == 0xe0 && out.bytes[41] == 0xff && out.bytes[42] == 0x01);
}

/* The places as worked out by hand. */
static_assert(PUMP_HOUSE_FIRST_BYTE_OF_INPUT == 8u && PUMP_HOUSE_SIZE_OF_INPUT == 33u, "input");
static_assert(PUMP_HOUSE_FIRST_BYTE_OF_OUTPUT == 0u && PUMP_HOUSE_SIZE_OF_OUTPUT == 57u, "output");
static_assert(PUMP_HOUSE_LT_101_OFFSET == 26u && PUMP_HOUSE_LT_101_SIZE == 2u, "bytes 34 and 35");
static_assert(PUMP_HOUSE_LT_101_MASK == 0xffffu, "16 bits");
static_assert(PUMP_HOUSE_ALL_IN_UINT64_MASK == UINT64_MAX, "64 bits");
static_assert(PUMP_HOUSE_ALL_IN_BYTE_4_BITS_OFFSET == 30u, "byte 38");
static_assert(PUMP_HOUSE_ALL_IN_BYTE_4_BITS_BIT == 4u, "bits 4 to 7");
static_assert(PUMP_HOUSE_ALL_IN_BYTE_4_BITS_MASK == 0xfu, "4 bits");
static_assert(PUMP_HOUSE_WIDEST_FIELD_SIZE == 9u, "60 bits from bit 7 on");

int main(void)
{
    readValues();
    writeBytes();
    writeBits();
    cutValues();
    return failures == 0 ? 0 : 1;
}

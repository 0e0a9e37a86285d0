#include "core/bit_stream.h"

#include <gtest/gtest.h>

#include "core/packed_image.h"
#include "packed_reference.h"

namespace {

TEST(BitStream, WritesMostSignificantBitFirstAndFlushes) {
    std::vector<uint8_t> buf(3, 0xEE);
    CBitWriter w;
    w.Start(buf.data());
    for (uint32_t v : {5u, 2u, 7u}) {  // 101 010 11|1
        w.Write(3, v);
        w.MarkPending();
    }
    EXPECT_EQ(buf[0], 0xAB);
    EXPECT_EQ(buf[1], 0xEE);  // not stored before Flush
    w.Flush();
    EXPECT_EQ(buf[1], 0x80);
    EXPECT_EQ(w.Out, buf.data() + 2);
    EXPECT_EQ(buf[2], 0xEE);
    w.Flush();  // nothing pending: nothing stored
    EXPECT_EQ(w.Out, buf.data() + 2);

    CBitReader r;
    r.Start(buf.data());
    EXPECT_EQ(r.Read(3), 5u);
    EXPECT_EQ(r.Read(3), 2u);
    EXPECT_EQ(r.Read(3), 7u);
    EXPECT_EQ(r.Read(5), 0u);
}

TEST(BitStream, WideValuesAndRepeats) {
    std::vector<uint8_t> buf(8, 0);
    CBitWriter w;
    w.Start(buf.data());
    w.WriteValue(12, 0xABC);
    w.WriteValue(4, 0xD);
    w.WriteValue(3, 0x5);
    w.WriteValue(10, 0x2F1);
    w.WriteRepeated(1, 20, 1);  // long one-bit run from the middle of a byte
    w.WriteRepeated(5, 0, 31);  // nothing
    w.Flush();
    EXPECT_EQ(buf[0], 0xAB);
    EXPECT_EQ(buf[1], 0xCD);
    EXPECT_EQ(UnpackRef(buf.data() + 2, 5, 1), (std::vector<uint32_t>{1, 0, 1, 1, 0}));
    std::vector<uint32_t> all = UnpackRef(buf, 49, 1);
    for (int i = 29; i < 49; ++i) EXPECT_EQ(all[i], 1u) << i;
    EXPECT_EQ(buf[6] & 0x7F, 0);  // unused low bits stay 0

    CBitReader r;
    r.Start(buf.data());
    EXPECT_EQ(r.ReadValue(12), 0xABCu);
    EXPECT_EQ(r.ReadValue(4), 0xDu);
    EXPECT_EQ(r.ReadValue(3), 0x5u);
    EXPECT_EQ(r.ReadValue(10), 0x2F1u);
    EXPECT_EQ(r.ReadValue(16), 0xFFFFu);
}

TEST(BitStream, ReaderSkips) {
    const std::vector<uint8_t> buf = {0x12, 0x34, 0x56, 0x78};
    CBitReader r;
    r.Start(buf.data());
    r.Skip(4);
    EXPECT_EQ(r.Read(8), 0x23u);
    r.Skip(2);  // inside the current byte
    EXPECT_EQ(r.Read(2), 0x0u);
    r.Skip(9);  // across a whole byte
    EXPECT_EQ(r.Read(7), 0x78u);
}

TEST(BitStream, WriterSkipKeepsExistingBits) {
    std::vector<uint8_t> buf = {0xFF, 0xFF, 0xFF, 0xFF};
    CBitWriter w;
    w.Start(buf.data());
    w.Skip(3);        // from a byte boundary
    w.Write(2, 0);    // bits 3-4
    w.Skip(6);        // bits 5-10, across the byte end
    w.Write(3, 0x2);  // bits 11-13
    w.Skip(2);        // bits 14-15 complete the byte
    EXPECT_EQ(buf[0], 0xE7);
    EXPECT_EQ(buf[1], 0xEB);
    w.Skip(8);  // whole byte untouched
    w.Write(1, 0);
    w.MarkPending();
    w.Flush();
    EXPECT_EQ(buf[2], 0xFF);
    EXPECT_EQ(buf[3], 0x00);  // Flush stores the partial byte with zero low bits
}

}  // namespace

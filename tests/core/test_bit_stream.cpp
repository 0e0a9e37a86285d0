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

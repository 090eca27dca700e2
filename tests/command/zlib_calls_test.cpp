#include "command/pictures/zlib_calls.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <algorithm>
#include <random>
#include <vector>

namespace {

using Bytes = std::vector<Bytef>;

/// Bytes that hardly shrink. With two kinds in turns, the encoder begins a new block at each turn,
/// and all of them together exceed what zlib lets its own grow by.
Bytes HardToPack(std::size_t size, bool inTurns) {
    std::mt19937 dice(1);
    Bytes bytes(size);
    for (std::size_t i = 0; i < size; ++i) {
        bytes[i] = static_cast<Bytef>(dice());
        if (!inTurns || dice() % 100 >= 37) continue;
        bytes[i] = static_cast<Bytef>(i / 5024 % 2 == 0 ? bytes[i] | 0x80 : bytes[i] & 0x7F);
    }
    return bytes;
}

/// zlib's own decoder, whose call the program doesn't answer.
Bytes InflatedByZlib(Bytes deflated, std::size_t size) {
    Bytes inflated(size + 1);
    z_stream stream{};
    stream.next_in = deflated.data();
    stream.avail_in = static_cast<uInt>(deflated.size());
    stream.next_out = inflated.data();
    stream.avail_out = static_cast<uInt>(inflated.size());
    EXPECT_EQ(inflateInit(&stream), Z_OK);
    EXPECT_EQ(inflate(&stream, Z_FINISH), Z_STREAM_END);
    inflated.resize(stream.total_out);
    EXPECT_EQ(inflateEnd(&stream), Z_OK);
    return inflated;
}

}  // namespace

TEST(ZlibCalls, KeepWhatZlibPromises) {
    for (const Bytes& bytes :
         {Bytes(), Bytes(50000, 7), HardToPack(30000, false), HardToPack(331783, true)}) {
        for (const int level : {Z_DEFAULT_COMPRESSION, 0, 1, 4, 9}) {
            SCOPED_TRACE(testing::Message() << bytes.size() << " bytes, level " << level);
            Bytes deflated(compressBound(bytes.size()));
            uLongf size = deflated.size();
            ASSERT_EQ(compress2(deflated.data(), &size, bytes.data(), bytes.size(), level), Z_OK);
            deflated.resize(size);
            EXPECT_EQ(InflatedByZlib(deflated, bytes.size()), bytes);
            Bytes inflated(bytes.size() + 1);
            size = inflated.size();
            ASSERT_EQ(uncompress(inflated.data(), &size, deflated.data(), deflated.size()), Z_OK);
            EXPECT_EQ(size, bytes.size());
            EXPECT_TRUE(std::equal(bytes.begin(), bytes.end(), inflated.begin()));
        }
    }
}

TEST(ZlibCalls, TellFailures) {
    const Bytes bytes = HardToPack(3000, false);
    Bytes deflated(compressBound(bytes.size())), inflated(bytes.size());
    uLongf size = deflated.size();
    EXPECT_EQ(compress2(deflated.data(), &size, bytes.data(), bytes.size(), 10), Z_STREAM_ERROR);
    uLongf little = bytes.size();
    EXPECT_EQ(compress2(deflated.data(), &little, bytes.data(), bytes.size(), 6), Z_BUF_ERROR);
    ASSERT_EQ(compress(deflated.data(), &size, bytes.data(), bytes.size()), Z_OK);
    const std::size_t before = nevrel::InflateFailures();
    little = bytes.size() - 1;
    EXPECT_EQ(uncompress(inflated.data(), &little, deflated.data(), size), Z_BUF_ERROR);
    deflated[size / 2] ^= 1;
    little = bytes.size();
    EXPECT_EQ(uncompress(inflated.data(), &little, deflated.data(), size), Z_DATA_ERROR);
    EXPECT_EQ(nevrel::InflateFailures(), before + 2);
}

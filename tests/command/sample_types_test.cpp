#include "command/pictures/sample_types.h"

#include <gtest/gtest.h>

#include <limits>

namespace nevrel {
namespace {

TEST(SampleTypes, ShorterConversionsGiveTheNearestSample) {
    for (unsigned bits = 0; bits <= std::numeric_limits<std::uint16_t>::max(); ++bits) {
        const auto sample = static_cast<std::uint16_t>(bits);
        ASSERT_EQ(Convert<Channel16>(sample).value, FromUnit<Channel16>(ToUnit(sample)).value);
    }
}

}  // namespace
}  // namespace nevrel

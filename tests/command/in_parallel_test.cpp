// Work on several threads, told in its order.
#include "command/in_parallel.h"

#include <gtest/gtest.h>

#include <latch>
#include <vector>

namespace {

TEST(DoInParallel, DoesEachPieceOnceAndTellsFailuresInOrder) {
    for (const unsigned threads : {1U, 2U, 8U, 1000U}) {
        std::vector<int> done(500);
        std::string told;
        const auto work = [&](std::size_t piece) -> nevrel::Outcome {
            ++done[piece];
            if (piece % 100 == 7) return {false, {std::to_string(piece)}};
            return {};
        };
        EXPECT_FALSE(nevrel::DoInParallel(done.size(), threads, work,
                                          [&](const std::string& line) { told += line + " "; }));
        EXPECT_EQ(done, std::vector<int>(500, 1));
        EXPECT_EQ(told, "7 107 207 307 407 ");
    }
}

TEST(DoInParallel, WorksAtOnceAndWaitsWithWhatCameTooEarly) {
    std::latch bothHaveBegun(2), secondIsOver(1);
    std::string told;
    const auto work = [&](std::size_t piece) -> nevrel::Outcome {
        if (piece == 2) secondIsOver.count_down();
        if (piece < 2) bothHaveBegun.arrive_and_wait();
        if (piece == 0) secondIsOver.wait();
        return {true, {std::to_string(piece)}};
    };
    EXPECT_TRUE(nevrel::DoInParallel(3, 2, work, [&](const std::string& line) { told += line; }));
    EXPECT_EQ(told, "012");
}

}  // namespace

// Work on several threads, told in its order.
#include "command/in_parallel.h"

#include <gtest/gtest.h>

#include <latch>
#include <vector>

namespace {

using Verdict = nevrel::Outcome::Verdict;

TEST(DoInParallel, DoesEachPieceOnceAndTellsFailuresInOrder) {
    for (const unsigned threads : {1U, 2U, 8U, 1000U}) {
        std::vector<int> done(500);
        std::string told;
        std::size_t next = 0;
        const auto work = [&](std::size_t piece) -> nevrel::Outcome {
            ++done[piece];
            return {.verdict = piece % 100 == 7 ? Verdict::Failed : Verdict::Done, .lines = {}};
        };
        const auto tell = [&](std::size_t piece, const nevrel::Outcome& outcome) {
            EXPECT_EQ(piece, next++);
            if (!outcome.succeeded()) told += std::to_string(piece) + " ";
            return true;
        };
        nevrel::DoInParallel(done.size(), threads, work, tell);
        EXPECT_EQ(done, std::vector<int>(500, 1));
        EXPECT_EQ(told, "7 107 207 307 407 ");
        EXPECT_EQ(next, 500U);
    }
}

TEST(DoInParallel, WorksAtOnceAndWaitsWithWhatCameTooEarly) {
    std::latch bothHaveBegun(2), secondIsOver(1);
    std::string told;
    const auto work = [&](std::size_t piece) -> nevrel::Outcome {
        if (piece == 2) secondIsOver.count_down();
        if (piece < 2) bothHaveBegun.arrive_and_wait();
        if (piece == 0) secondIsOver.wait();
        return {};
    };
    nevrel::DoInParallel(3, 2, work, [&](std::size_t piece, const nevrel::Outcome&) {
        told += std::to_string(piece);
        return true;
    });
    EXPECT_EQ(told, "012");
}

}  // namespace

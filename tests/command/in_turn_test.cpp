// Work on several threads, told in its order.
#include "command/in_turn.h"

#include <gtest/gtest.h>

#include <latch>
#include <vector>

namespace {

TEST(DoInTurn, DoesEachPieceOnceAndTellsFailuresInOrder) {
    for (const unsigned threads : {1U, 2U, 8U, 1000U}) {
        std::vector<int> done(500);
        std::string told;
        const auto work = [&](std::size_t piece) {
            ++done[piece];
            return piece % 100 == 7 ? std::to_string(piece) : "";
        };
        EXPECT_FALSE(nevrel::DoInTurn(done.size(), threads, work,
                                      [&](const std::string& line) { told += line + " "; }));
        EXPECT_EQ(done, std::vector<int>(500, 1));
        EXPECT_EQ(told, "7 107 207 307 407 ");
    }
}

TEST(DoInTurn, WorksAtOnceAndWaitsWithWhatCameTooEarly) {
    std::latch bothHaveBegun(2), secondIsOver(1);
    std::string told;
    const auto work = [&](std::size_t piece) -> std::string {
        if (piece == 2) secondIsOver.count_down();
        if (piece < 2) bothHaveBegun.arrive_and_wait();
        if (piece == 0) secondIsOver.wait();
        return std::to_string(piece);
    };
    EXPECT_FALSE(nevrel::DoInTurn(3, 2, work, [&](const std::string& line) { told += line; }));
    EXPECT_EQ(told, "012");
    EXPECT_TRUE(nevrel::DoInTurn(
        2, 2, [](std::size_t) { return ""; }, [](const std::string&) { FAIL(); }));
}

}  // namespace

// The least host that a kernel can run on: its two world suites, with memory that shows what was touched.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "standalone/world.h"
#include "tests/kernel/dice.h"

/// Any row pitch, padded or negative, aligned to the channel type alone; between guards, or in a block that
/// ends where the heap's own checks begin.
standalone::MemoryStyle RandomStyle(PF_PixelFormat format, Dice& dice);

/// Gives the world suites at version 1, and writes down what it is asked for. One at a time on a thread.
class WorldHost {
  public:
    /// The seed chooses how its worlds lie in memory.
    explicit WorldHost(std::uint64_t seed);
    ~WorldHost();
    WorldHost(const WorldHost&) = delete;
    WorldHost& operator=(const WorldHost&) = delete;

    PF_InData* inData() { return &inData_; }
    /// Suites by name, and worlds by width and height, in the order in which they were asked for.
    [[nodiscard]] const std::vector<std::string>& suitesAsked() const { return suitesAsked_; }
    [[nodiscard]] const std::vector<std::pair<int, int>>& worldsAsked() const { return worldsAsked_; }
    /// Makes every request for a world fail with this code.
    void refuseWorlds(PF_Err code) { worldCode_ = code; }
    /// Every suite released, every world disposed of, nothing written outside a world.
    [[nodiscard]] bool balanced() const { return suitesHeld_ == 0 && worlds_.empty() && !damaged_; }

  private:
    static A_long acquireSuite(const char* name, A_long version, const void** suite);
    static A_long releaseSuite(const char* name, A_long version);
    static PF_Err newWorld(PF_ProgPtr host, A_long width, A_long height, A_long flags, PF_EffectWorld* world);
    static PF_Err disposeWorld(PF_ProgPtr host, PF_EffectWorld* world);
    static PF_Err copy(PF_ProgPtr host, PF_EffectWorld* src, PF_EffectWorld* dst, PF_Rect* srcRect,
                       PF_Rect* dstRect);

    Dice dice_;
    SPBasicSuite basicSuite_{};
    PF_WorldSuite1 worldSuite_{};
    PF_WorldTransformSuite1 transformSuite_{};
    PF_InData inData_{};
    std::vector<std::unique_ptr<standalone::World>> worlds_;
    std::vector<std::string> suitesAsked_;
    std::vector<std::pair<int, int>> worldsAsked_;
    PF_Err worldCode_ = PF_Err_NONE;
    int suitesHeld_ = 0;
    bool damaged_ = false;
};

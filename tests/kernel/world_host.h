// The least host that a kernel can run on: its two world suites, with memory that shows what was touched.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "sdk/effect_api.h"
#include "tests/kernel/dice.h"

/// Bytes between two guard bands. Without the bands the block ends where the heap's own checks begin.
class GuardedBytes {
  public:
    /// `misalignment` moves the first byte; the bytes hold `fill`, or noise when it is negative.
    GuardedBytes(std::size_t size, std::size_t guard, std::size_t misalignment, int fill, Dice& dice);

    unsigned char* data() { return block_.get() + front_; }
    const unsigned char* data() const { return block_.get() + front_; }
    std::size_t size() const { return size_; }
    bool guardsIntact() const;

  private:
    std::size_t size_;
    std::size_t front_;
    std::size_t back_;
    std::unique_ptr<unsigned char[]> block_;
};

/// A host image in memory of its own: any row pitch, padded or negative, aligned to the channel type alone.
class HostImage {
  public:
    HostImage(int width, int height, int pixelSize, int channelSize, Dice& dice);

    PF_EffectWorld* world() { return &world_; }
    unsigned char* row(int y) {
        return static_cast<unsigned char*>(world_.data) + std::ptrdiff_t{world_.rowbytes} * y;
    }
    /// Whether nothing but pixels was written since the image was made.
    bool paddingIntact() const;

  private:
    int rowSize_;
    int pitch_;
    GuardedBytes bytes_;
    PF_EffectWorld world_{};
};

/// Gives the world suites at version 1, and writes down what it is asked for. One at a time on a thread.
class WorldHost {
  public:
    WorldHost(int pixelSize, std::uint64_t seed);
    ~WorldHost();
    WorldHost(const WorldHost&) = delete;
    WorldHost& operator=(const WorldHost&) = delete;

    PF_InData* inData() { return &inData_; }
    /// Suites by name, and worlds by width and height, in the order in which they were asked for.
    const std::vector<std::string>& suitesAsked() const { return suitesAsked_; }
    const std::vector<std::pair<int, int>>& worldsAsked() const { return worldsAsked_; }
    /// Makes every request for a world fail with this code.
    void refuseWorlds(PF_Err code) { worldCode_ = code; }
    /// Every suite released, every world disposed of, nothing written outside a world.
    bool balanced() const { return suitesHeld_ == 0 && worlds_.empty() && !damaged_; }

  private:
    static A_long acquireSuite(const char* name, A_long version, const void** suite);
    static A_long releaseSuite(const char* name, A_long version);
    static PF_Err newWorld(PF_ProgPtr host, A_long width, A_long height, A_long flags, PF_EffectWorld* world);
    static PF_Err disposeWorld(PF_ProgPtr host, PF_EffectWorld* world);
    static PF_Err copy(PF_ProgPtr host, PF_EffectWorld* src, PF_EffectWorld* dst, PF_Rect* srcRect,
                       PF_Rect* dstRect);

    int pixelSize_;
    Dice dice_;
    SPBasicSuite basicSuite_{};
    PF_WorldSuite1 worldSuite_{};
    PF_WorldTransformSuite1 transformSuite_{};
    PF_InData inData_{};
    std::vector<std::unique_ptr<GuardedBytes>> worlds_;
    std::vector<std::string> suitesAsked_;
    std::vector<std::pair<int, int>> worldsAsked_;
    PF_Err worldCode_ = PF_Err_NONE;
    int suitesHeld_ = 0;
    bool damaged_ = false;
};

#include "tests/kernel/world_host.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "sdk/effect_api.h"

using standalone::World;

namespace {

thread_local WorldHost* currentHost = nullptr;

World& WorldOf(const PF_EffectWorld* record) { return *static_cast<World*>(record->platform_ref); }

}  // namespace

standalone::MemoryStyle RandomStyle(PF_PixelFormat format, Dice& dice) {
    const A_long channel = standalone::PixelBytes(format) / 4;
    return {.padding = dice.oneIn(3) ? 0 : channel * dice.between(1, 40),
            .misalignment = channel * dice.below(4),
            .bottomUp = dice.oneIn(4),
            .guarded = dice.oneIn(4),
            .seed = static_cast<std::uint32_t>(dice.below(1 << 30))};
}

WorldHost::WorldHost(std::uint64_t seed) : dice_(seed) {
    basicSuite_.AcquireSuite = acquireSuite;
    basicSuite_.ReleaseSuite = releaseSuite;
    worldSuite_ = {newWorld, disposeWorld};
    transformSuite_.copy = copy;
    inData_.effect_ref = reinterpret_cast<PF_ProgPtr>(this);
    inData_.pica_basicP = &basicSuite_;
    currentHost = this;
}

WorldHost::~WorldHost() { currentHost = nullptr; }

A_long WorldHost::acquireSuite(const char* name, A_long version, const void** suite) {
    currentHost->suitesAsked_.emplace_back(name);
    *suite = nullptr;
    if (name == std::string_view(kPFWorldSuite)) *suite = &currentHost->worldSuite_;
    if (name == std::string_view(kPFWorldTransformSuite)) *suite = &currentHost->transformSuite_;
    if (*suite == nullptr || version != 1) return 1;
    ++currentHost->suitesHeld_;
    return 0;
}

A_long WorldHost::releaseSuite(const char*, A_long) {
    --currentHost->suitesHeld_;
    return 0;
}

/// The world is full of set bits and of exactly the size that its row pitch, at times larger than asked for,
/// gives it.
PF_Err WorldHost::newWorld(PF_ProgPtr ref, A_long width, A_long height, A_long flags, PF_EffectWorld* world) {
    auto& host = *reinterpret_cast<WorldHost*>(ref);
    host.worldsAsked_.emplace_back(width, height);
    world->data = &host;  // a refusal leaves something behind that is no world
    if (flags != 0) return PF_Err_BAD_CALLBACK_PARAM;
    if (host.worldCode_ != PF_Err_NONE) return host.worldCode_;
    const A_long wider = width + (host.dice_.oneIn(2) ? 0 : host.dice_.between(1, 5));
    host.worlds_.push_back(std::make_unique<World>(PF_PixelFormat_ARGB32, wider, height,
                                                   standalone::MemoryStyle{.guarded = host.dice_.oneIn(4)}));
    *world = host.worlds_.back()->record();
    world->width = width;
    std::memset(world->data, 0xFF,
                static_cast<std::size_t>(world->rowbytes) * static_cast<std::size_t>(height));
    return PF_Err_NONE;
}

PF_Err WorldHost::disposeWorld(PF_ProgPtr ref, PF_EffectWorld* world) {
    auto& host = *reinterpret_cast<WorldHost*>(ref);
    const auto found = std::find_if(host.worlds_.begin(), host.worlds_.end(),
                                    [&](const auto& lent) { return lent->record().data == world->data; });
    if (found == host.worlds_.end()) {
        host.damaged_ = true;
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    host.damaged_ = host.damaged_ || !(*found)->guardsIntact();
    host.worlds_.erase(found);
    return PF_Err_NONE;
}

PF_Err WorldHost::copy(PF_ProgPtr /*ref*/, PF_EffectWorld* src, PF_EffectWorld* dst, PF_Rect* srcRect,
                       PF_Rect* dstRect) {
    if (srcRect != nullptr || dstRect != nullptr) return PF_Err_BAD_CALLBACK_PARAM;
    const World& from = WorldOf(src);
    World& to = WorldOf(dst);
    const std::ptrdiff_t rowSize = std::ptrdiff_t{from.width()} * standalone::PixelBytes(from.format());
    for (A_long y = 0; y < from.height(); ++y) std::copy_n(from.row<char>(y), rowSize, to.row<char>(y));
    return PF_Err_NONE;
}

#include "bench/bench_host.h"

#include <algorithm>
#include <cassert>
#include <cstring>
#include <string_view>

namespace {

PF_Err NewWorld(PF_ProgPtr effectRef, A_long width, A_long height, A_long, PF_EffectWorld* world) {
    *world = {};
    world->width = width;
    world->height = height;
    world->rowbytes = width * A_long{sizeof(PF_Pixel)};
    auto* host = reinterpret_cast<BenchHost*>(effectRef);
    world->data =
        host->scratch(static_cast<std::size_t>(world->rowbytes) * static_cast<std::size_t>(height));
    return PF_Err_NONE;
}

PF_Err DisposeWorld(PF_ProgPtr, PF_EffectWorld* world) {
    world->data = nullptr;
    return PF_Err_NONE;
}

constexpr PF_WorldSuite1 worldSuite{NewWorld, DisposeWorld};
constexpr PF_WorldTransformSuite1 transformSuite{nullptr, nullptr, nullptr, CopyWorld, {}};

A_long AcquireSuite(const char* name, A_long, const void** suite) {
    *suite = nullptr;
    if (name == std::string_view(kPFWorldSuite)) *suite = &worldSuite;
    if (name == std::string_view(kPFWorldTransformSuite)) *suite = &transformSuite;
    return *suite != nullptr ? 0 : 1;
}

A_long ReleaseSuite(const char*, A_long) { return 0; }

SPBasicSuite basicSuite{AcquireSuite, ReleaseSuite, {}};

}  // namespace

BenchHost::BenchHost() {
    inData_.effect_ref = reinterpret_cast<PF_ProgPtr>(this);
    inData_.pica_basicP = &basicSuite;
}

std::byte* BenchHost::scratch(std::size_t bytes) {
    if (bytes > poolSize_) {
        pool_.reset(new std::byte[bytes]);
        poolSize_ = bytes;
    }
    return pool_.get();
}

PF_Err CopyWorld(PF_ProgPtr, PF_EffectWorld* from, PF_EffectWorld* to, PF_Rect*, PF_Rect*) {
    assert(from->width == to->width && from->height == to->height);
    const auto* source = static_cast<const std::byte*>(from->data);
    auto* target = static_cast<std::byte*>(to->data);
    const auto rowBytes = static_cast<std::size_t>(std::min(from->rowbytes, to->rowbytes));
    for (A_long y = 0; y < from->height; ++y) {
        std::memcpy(target, source, rowBytes);
        source += from->rowbytes;
        target += to->rowbytes;
    }
    return PF_Err_NONE;
}

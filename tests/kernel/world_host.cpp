#include "tests/kernel/world_host.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace {

constexpr unsigned char guardByte = 0xA5;
thread_local WorldHost* currentHost = nullptr;

std::size_t Size(int n) { return static_cast<std::size_t>(n); }

int RandomPitch(int rowSize, int channelSize, Dice& dice) {
    return rowSize + (dice.oneIn(3) ? 0 : channelSize * dice.between(1, 9)) + (dice.oneIn(8) ? rowSize : 0);
}

}  // namespace

GuardedBytes::GuardedBytes(std::size_t size, std::size_t guard, std::size_t misalignment, int fill,
                           Dice& dice)
    : size_(size),
      front_(guard + misalignment),
      back_(guard),
      block_(new unsigned char[front_ + size + back_]) {
    std::fill_n(block_.get(), front_ + size + back_, guardByte);
    for (std::size_t i = 0; i < size; ++i)
        data()[i] = static_cast<unsigned char>(fill < 0 ? dice.below(256) : fill);
}

bool GuardedBytes::guardsIntact() const {
    const auto intact = [](unsigned char b) { return b == guardByte; };
    return std::all_of<const unsigned char*>(block_.get(), data(), intact) &&
           std::all_of(data() + size_, data() + size_ + back_, intact);
}

HostImage::HostImage(int width, int height, int pixelSize, int channelSize, Dice& dice)
    : rowSize_(width * pixelSize),
      pitch_(RandomPitch(rowSize_, channelSize, dice)),
      bytes_(Size(pitch_) * Size(height - 1) + Size(rowSize_), dice.oneIn(2) ? 64 : 0,
             Size(channelSize * dice.below(4)), guardByte, dice) {
    const bool bottomUp = dice.oneIn(4);
    world_.rowbytes = bottomUp ? -pitch_ : pitch_;
    world_.width = width;
    world_.height = height;
    world_.data = bytes_.data() + (bottomUp ? Size(pitch_) * Size(height - 1) : 0);
}

bool HostImage::paddingIntact() const {
    for (int y = 0; y + 1 < world_.height; ++y) {
        const unsigned char* row = bytes_.data() + Size(pitch_) * Size(y);
        if (!std::all_of(row + rowSize_, row + pitch_, [](unsigned char b) { return b == guardByte; }))
            return false;
    }
    return bytes_.guardsIntact();
}

WorldHost::WorldHost(int pixelSize, std::uint64_t seed) : pixelSize_(pixelSize), dice_(seed) {
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

/// The world holds noise, has at times a larger pitch than asked for, and never a byte more than that.
PF_Err WorldHost::newWorld(PF_ProgPtr ref, A_long width, A_long height, A_long flags, PF_EffectWorld* world) {
    auto& host = *reinterpret_cast<WorldHost*>(ref);
    host.worldsAsked_.emplace_back(width, height);
    *world = {};
    if (flags != 0) return PF_Err_BAD_CALLBACK_PARAM;
    world->data = &host;  // a refusal leaves something behind that is no world
    if (host.worldCode_ != PF_Err_NONE) return host.worldCode_;
    world->width = width;
    world->height = height;
    world->rowbytes = 4 * (width + (host.dice_.oneIn(2) ? 0 : host.dice_.between(1, 5)));
    host.worlds_.push_back(std::make_unique<GuardedBytes>(Size(world->rowbytes) * Size(height),
                                                          host.dice_.oneIn(2) ? 64 : 0, 0, -1, host.dice_));
    world->data = host.worlds_.back()->data();
    return PF_Err_NONE;
}

PF_Err WorldHost::disposeWorld(PF_ProgPtr ref, PF_EffectWorld* world) {
    auto& host = *reinterpret_cast<WorldHost*>(ref);
    const auto found = std::find_if(host.worlds_.begin(), host.worlds_.end(),
                                    [&](const auto& bytes) { return bytes->data() == world->data; });
    if (found == host.worlds_.end()) {
        host.damaged_ = true;
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    host.damaged_ = host.damaged_ || !(*found)->guardsIntact();
    host.worlds_.erase(found);
    return PF_Err_NONE;
}

PF_Err WorldHost::copy(PF_ProgPtr ref, PF_EffectWorld* src, PF_EffectWorld* dst, PF_Rect* srcRect,
                       PF_Rect* dstRect) {
    const auto& host = *reinterpret_cast<WorldHost*>(ref);
    if (srcRect != nullptr || dstRect != nullptr) return PF_Err_BAD_CALLBACK_PARAM;
    const auto* from = static_cast<const unsigned char*>(src->data);
    auto* to = static_cast<unsigned char*>(dst->data);
    for (std::ptrdiff_t y = 0; y < src->height; ++y)
        std::memcpy(to + y * dst->rowbytes, from + y * src->rowbytes, Size(src->width * host.pixelSize_));
    return PF_Err_NONE;
}

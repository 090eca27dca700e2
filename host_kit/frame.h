// One frame on its way through the smart-render pair.
#pragma once

#include <map>
#include <optional>

#include "host_kit/instance.h"

namespace host_kit {

/// Belongs to one thread; several frames of one instance may be under way at once. May be
/// pre-rendered and never rendered, or pre-rendered again: the pre-render data is deleted as a host
/// does it.
class Frame {
  public:
    /// A frame of `input`, of which the host wants the area `wanted` (all of it when empty).
    Frame(Instance& instance, World& input, const FrameTime& time = {},
          std::optional<PF_LRect> wanted = {});
    ~Frame();
    Frame(const Frame&) = delete;
    Frame& operator=(const Frame&) = delete;

    CommandResult preRender();
    /// Renders what was pre-rendered; `output` has the size of the pre-render output's
    /// `result_rect`.
    CommandResult render(World& output);
    void deletePreRenderData();

    /// What `preRender` starts from, to be set before it.
    PF_PreRenderOutput blankOutput{};
    /// The effect's answer to the last `preRender`.
    [[nodiscard]] const PF_PreRenderOutput& preRenderOutput() const { return output_; }
    /// What the effect asked of its layer, if it did.
    [[nodiscard]] std::optional<PF_RenderRequest> layerRequest(A_long checkoutId) const;

    // For the host's callbacks.
    [[nodiscard]] bool requestLayer(A_long checkoutId, const PF_RenderRequest& request,
                                    PF_CheckoutResult& result);
    /// The pixels of a layer asked for before; null when there are none or they are out already.
    [[nodiscard]] PF_EffectWorld* checkOut(A_long checkoutId);
    /// The pixels that come back; null when they were not out.
    [[nodiscard]] PF_EffectWorld* checkIn(A_long checkoutId);
    [[nodiscard]] PF_EffectWorld* outputRecord() { return &target_->record(); }

  private:
    struct Layer {
        PF_RenderRequest request{};
        PF_EffectWorld pixels{};  // no data when the area asked for misses the layer
        bool out = false;
    };

    [[nodiscard]] PF_RenderRequest request() const;
    [[nodiscard]] A_short bitDepth() const;

    Instance& instance_;
    World& input_;
    World* target_ = nullptr;
    FrameTime time_;
    PF_LRect wanted_;
    PF_PreRenderOutput output_{};
    std::map<A_long, Layer> layers_;
};

/// Pre-renders and renders a whole image.
CommandResult SmartRender(Instance& instance, World& input, World& output,
                          const FrameTime& time = {});

}  // namespace host_kit

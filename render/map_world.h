// The edge map's memory, borrowed from the host for one kernel call.
#pragma once

#include <cassert>
#include <cstddef>
#include <cstdint>

#include "host/suite_handler.h"
#include "kernel/edges/edge_map.h"

/// A host scratch image large enough for an edge map; given back when it goes.
class MapWorld {
  public:
    /// The suites must outlive the object.
    MapWorld(SuiteHandler& suites, PF_ProgPtr effectRef) : suites_(suites), effectRef_(effectRef) {}
    ~MapWorld() {
        if (world_.data != nullptr)
            suites_.get<PF_WorldSuite1>().dispose_world(effectRef_, &world_);
    }
    MapWorld(const MapWorld&) = delete;
    MapWorld& operator=(const MapWorld&) = delete;

    /// Asks the host for the memory, which comes uncleared. Returns the host's code, or
    /// PF_Err_OUT_OF_MEMORY when it reports success without memory. Throws a PF_Err when the host
    /// lacks the suite.
    [[nodiscard]] PF_Err allocate(int width, int height) {
        assert(world_.data == nullptr && width > 0 && height > 0);
        // A byte for each pixel, and margins, of which the map uses about half.
        const A_long pixelWidth = (width + 5 + 3) / A_long{sizeof(PF_Pixel)};
        assert(EdgeMap::byteCount(width, height) <= sizeof(PF_Pixel) *
                                                        static_cast<std::size_t>(pixelWidth) *
                                                        (static_cast<std::size_t>(height) + 2));
        const PF_Err err =
            suites_.get<PF_WorldSuite1>().new_world(effectRef_, pixelWidth, height + 2, 0, &world_);
        if (err != PF_Err_NONE) {
            world_.data = nullptr;  // nothing was lent, whatever the record says
            return err;
        }
        return world_.data != nullptr ? PF_Err_NONE : PF_Err_OUT_OF_MEMORY;
    }

    [[nodiscard]] std::uint8_t* memory() const { return static_cast<std::uint8_t*>(world_.data); }

  private:
    SuiteHandler& suites_;
    PF_ProgPtr effectRef_;
    PF_EffectWorld world_{};
};

#include "render/param_index_map.h"

#include <atomic>
#include <cassert>

namespace {

constexpr ParamIndexMap flatLayout{{0, 1, 2, 3, noParam, 4, 5, 6, 7, noParam}};
constexpr ParamIndexMap groupedLayout{{0, 1, 2, 3, 4, 5, 6, 7, 8, 9}};

// Both layouts are constants, so whoever sees the pointer sees every entry.
std::atomic<const ParamIndexMap*> currentMap{nullptr};

}  // namespace

const ParamIndexMap* CurrentParamIndexMap() { return currentMap.load(std::memory_order_acquire); }

const ParamIndexMap& ChooseParamIndexMap(PF_ParamType layoutParamType) {
    const ParamIndexMap* chosen =
        layoutParamType == PF_Param_CHECKBOX ? &flatLayout : &groupedLayout;
    const ParamIndexMap* earlier = nullptr;
    return currentMap.compare_exchange_strong(earlier, chosen, std::memory_order_acq_rel)
               ? *chosen
               : *earlier;
}

const ParamIndexMap& ParamIndexMapOf(PF_ParamDef* const params[]) {
    assert(params != nullptr);
    const ParamIndexMap* map = CurrentParamIndexMap();
    return map != nullptr ? *map : ChooseParamIndexMap(params[layoutParam]->param_type);
}

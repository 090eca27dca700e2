// Where each control sits in the host's parameter array.
#pragma once

#include <array>
#include <cstddef>

#include "sdk/effect_api.h"

/// What a parameter is for, in the order of the host's array.
enum class ParamRole : std::size_t {
    InputLayer,
    ColorThreshold,
    Softness,
    Bias,
    GroupStart,
    ColorKeyEnable,
    KeyColor,
    KeyThreshold,
    KeyInvert,
    GroupEnd,
};

/// The index of a role that the layout does not have.
inline constexpr PF_ParamIndex noParam = -1;

/// The input layer, which the host puts first in every layout.
inline constexpr PF_ParamIndex inputLayerParam = 0;

/// The parameter whose type tells the layouts apart.
inline constexpr PF_ParamIndex layoutParam = 4;

/// The indices of one of the two layouts, with or without the colour-key group.
class ParamIndexMap {
  public:
    constexpr explicit ParamIndexMap(const std::array<PF_ParamIndex, 10>& indices)
        : indices_(indices) {}

    /// The role's index, or noParam.
    [[nodiscard]] constexpr PF_ParamIndex operator[](ParamRole role) const {
        return indices_[static_cast<std::size_t>(role)];
    }

  private:
    std::array<PF_ParamIndex, 10> indices_;
};

/// The process's map: all instances have one layout, so it is chosen once and never changes. Null
/// until then.
[[nodiscard]] const ParamIndexMap* CurrentParamIndexMap();

/// The process's map, chosen now if it is not yet, from the type of the parameter at layoutParam.
const ParamIndexMap& ChooseParamIndexMap(PF_ParamType layoutParamType);

/// The process's map, chosen now if it is not yet, from the host's parameter array.
[[nodiscard]] const ParamIndexMap& ParamIndexMapOf(PF_ParamDef* const params[]);

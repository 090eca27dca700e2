from typing import Optional, SupportsIndex, Tuple, TypeVar

import numpy as np
from numpy.typing import NDArray

__version__: str

_Sample = TypeVar("_Sample", np.uint8, np.uint16, np.float16, np.float32)

def smooth(
    array: NDArray[_Sample],
    *,
    out: Optional[NDArray[_Sample]] = None,
    color_threshold: SupportsIndex = 10,
    softness: SupportsIndex = 70,
    bias: SupportsIndex = 0,
    color_key_enable: bool = False,
    key_color: Tuple[SupportsIndex, SupportsIndex, SupportsIndex] = (255, 255, 255),
    key_color_threshold: SupportsIndex = 0,
    invert: bool = False,
) -> NDArray[_Sample]:
    """Smooths the stair-stepped edges of a picture; help(nevrel.smooth) tells of shapes, units and errors."""

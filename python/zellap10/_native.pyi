from os import PathLike
from types import TracebackType
from typing import overload

import numpy as np
from numpy.typing import ArrayLike, NDArray

__version__: str

# Functions of scalars return floats, functions of arrays return arrays.
_Doubles = NDArray[np.float64]

class ChartError(Exception): ...

class Chart:
    def __init__(self, path: str | PathLike[str]) -> None: ...
    def __enter__(self) -> Chart: ...
    def __exit__(
        self, kind: type[BaseException] | None, error: BaseException | None, trace: TracebackType | None, /
    ) -> None: ...
    def close(self) -> None: ...
    @property
    def closed(self) -> bool: ...
    @property
    def path(self) -> str: ...
    @property
    def name(self) -> str: ...
    @property
    def size(self) -> tuple[int, int]: ...
    @property
    def palette(self) -> NDArray[np.uint8]: ...
    @property
    def inset_names(self) -> list[str]: ...
    def pixels(
        self, left: int = 0, top: int = 0, width: int | None = None, height: int | None = None
    ) -> NDArray[np.uint8]: ...

class Projection:
    def __init__(
        self,
        kind: str,
        latitude: float = 0.0,
        longitude: float = 0.0,
        parallel1: float | None = None,
        parallel2: float | None = None,
        datum: int = 117,
    ) -> None: ...
    @overload
    def forward(self, latitude: float, longitude: float) -> tuple[float, float]: ...
    @overload
    def forward(self, latitude: ArrayLike, longitude: ArrayLike) -> tuple[_Doubles, _Doubles]: ...
    @overload
    def inverse(self, x: float, y: float) -> tuple[float, float]: ...
    @overload
    def inverse(self, x: ArrayLike, y: ArrayLike) -> tuple[_Doubles, _Doubles]: ...

@overload
def datum_to_wgs84(
    latitude: float, longitude: float, height: float = 0.0, *, datum: int
) -> tuple[float, float, float]: ...
@overload
def datum_to_wgs84(
    latitude: ArrayLike, longitude: ArrayLike, height: ArrayLike = 0.0, *, datum: int
) -> tuple[_Doubles, _Doubles, _Doubles]: ...
@overload
def wgs84_to_datum(
    latitude: float, longitude: float, height: float = 0.0, *, datum: int
) -> tuple[float, float, float]: ...
@overload
def wgs84_to_datum(
    latitude: ArrayLike, longitude: ArrayLike, height: ArrayLike = 0.0, *, datum: int
) -> tuple[_Doubles, _Doubles, _Doubles]: ...
@overload
def geodetic_to_cartesian(
    latitude: float, longitude: float, height: float = 0.0, *, datum: int = 117
) -> tuple[float, float, float]: ...
@overload
def geodetic_to_cartesian(
    latitude: ArrayLike, longitude: ArrayLike, height: ArrayLike = 0.0, *, datum: int = 117
) -> tuple[_Doubles, _Doubles, _Doubles]: ...
@overload
def cartesian_to_geodetic(
    x: float, y: float, z: float, *, datum: int = 117
) -> tuple[float, float, float]: ...
@overload
def cartesian_to_geodetic(
    x: ArrayLike, y: ArrayLike, z: ArrayLike, *, datum: int = 117
) -> tuple[_Doubles, _Doubles, _Doubles]: ...
@overload
def shift_cartesian(
    x: float, y: float, z: float, *, from_datum: int, to_datum: int
) -> tuple[float, float, float]: ...
@overload
def shift_cartesian(
    x: ArrayLike, y: ArrayLike, z: ArrayLike, *, from_datum: int, to_datum: int
) -> tuple[_Doubles, _Doubles, _Doubles]: ...
@overload
def course_and_distance(
    latitude1: float, longitude1: float, latitude2: float, longitude2: float
) -> tuple[float, float]: ...
@overload
def course_and_distance(
    latitude1: ArrayLike, longitude1: ArrayLike, latitude2: ArrayLike, longitude2: ArrayLike
) -> tuple[_Doubles, _Doubles]: ...
@overload
def advance(latitude: float, longitude: float, distance: float, course: float) -> tuple[float, float]: ...
@overload
def advance(
    latitude: ArrayLike, longitude: ArrayLike, distance: ArrayLike, course: ArrayLike
) -> tuple[_Doubles, _Doubles]: ...
@overload
def meridional_parts(latitude: float) -> float: ...
@overload
def meridional_parts(latitude: ArrayLike) -> _Doubles: ...

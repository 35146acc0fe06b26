"""Where the tiles of a map come from."""

import math
import queue
import threading
from collections import OrderedDict
from pathlib import Path
from typing import Any, Protocol

from ._native import Catalogue, Tiler
from .charts import centre_of, extent_of
from .mbtiles import MbtilesReader, TilesError

SCHEMES = ("day", "dusk", "night")


class TileSource(Protocol):
    """Encoded tiles, for several threads at a time."""

    @property
    def config(self) -> dict[str, Any]:
        """What the page needs to know, as plain values for JSON."""

    def tile(self, scheme: str, zoom: int, x: int, y: int) -> bytes | None:
        """An encoded tile, counted from the north; None if it is empty."""

    def close(self) -> None:
        """Ends the drawing of tiles. A thread that runs C++ when Python ends would abort the process."""


class ChartSource:
    """Draws tiles on demand and keeps the latest.

    Args:
        catalogue: the charts.
        jobs: how many tiles are drawn at a time.
        memory: bytes of decoded chart data for each of these.
        cache: bytes of encoded tiles.
    """

    def __init__(self, catalogue: Catalogue, jobs: int, memory: int, cache: int = 64 << 20) -> None:
        south, west, north, east = extent_of(catalogue)
        self.config: dict[str, Any] = {
            "name": catalogue.entries()[0].name if len(catalogue) == 1 else f"{len(catalogue)} charts and insets",
            "bounds": [[south, west], [north, east]],
            "centre": centre_of(catalogue),
            "zooms": [0, 18],
            "tile_size": 256,
            "schemes": SCHEMES,
            "attribution": "",
        }
        self._tilers: queue.SimpleQueue[Tiler] = queue.SimpleQueue()
        self._jobs = jobs
        for _ in range(jobs):
            self._tilers.put(Tiler(catalogue, memory=memory))
        self._cache = _Cache(cache)

    def tile(self, scheme: str, zoom: int, x: int, y: int) -> bytes | None:
        key = (scheme, zoom, x, y)
        try:
            return self._cache.get(key)
        except KeyError:
            pass
        tiler = self._tilers.get()
        try:
            data = tiler.tile(zoom, x, y, scheme)
        finally:
            self._tilers.put(tiler)
        self._cache.put(key, data)
        return data

    def close(self) -> None:
        for _ in range(self._jobs):
            self._tilers.get()


class _Cache:
    """The values that were used last, up to a number of bytes."""

    def __init__(self, limit: int) -> None:
        self._limit = limit
        self._size = 0
        self._values: OrderedDict[object, bytes | None] = OrderedDict()
        self._lock = threading.Lock()

    def get(self, key: object) -> bytes | None:
        with self._lock:
            self._values.move_to_end(key)
            return self._values[key]

    def put(self, key: object, value: bytes | None) -> None:
        with self._lock:
            if key in self._values:
                return
            self._values[key] = value
            self._size += _cost(value)
            while self._size > self._limit:
                self._size -= _cost(self._values.popitem(last=False)[1])


def _cost(value: bytes | None) -> int:
    return 200 + len(value or b"")


class MbtilesSource:
    """The tiles of an MBTiles file, in its own colours.

    Raises:
        TilesError: the file is no tile database, or its metadata are not those of one.
    """

    def __init__(self, path: Path) -> None:
        self._reader = MbtilesReader(path)
        self._lock = threading.Lock()
        try:
            self.config = _config(self._reader.metadata, path.stem)
        except ValueError as error:
            raise TilesError(f"{path}: The metadata are not valid: {error}.") from error

    def tile(self, scheme: str, zoom: int, x: int, y: int) -> bytes | None:
        with self._lock:
            return self._reader.tile(zoom, x, y)

    def close(self) -> None:
        with self._lock:
            self._reader.close()


def _config(metadata: dict[str, str], name: str) -> dict[str, Any]:
    west, south, east, north = _numbers(metadata.get("bounds", "-180,-85,180,85"), 4)
    middle = f"{(west + east) / 2},{(south + north) / 2},0"
    longitude, latitude, _ = _numbers(metadata.get("center", middle), 3)
    return {
        "name": metadata.get("name", name),
        "bounds": [[south, west], [north, east]],
        "centre": [latitude, longitude],
        "zooms": [int(metadata.get("minzoom", 0)), int(metadata.get("maxzoom", 18))],
        "tile_size": int(metadata.get("tile_size", 256)),
        "schemes": SCHEMES[:1],
        "attribution": metadata.get("attribution", ""),
    }


def _numbers(text: str, count: int) -> list[float]:
    numbers = [float(part) for part in text.split(",")]
    if len(numbers) != count or not all(map(math.isfinite, numbers)):
        raise ValueError(f"{text!r}")
    return numbers

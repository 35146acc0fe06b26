"""Writes the quilt of charts as a GeoTIFF in EPSG:3857."""

import itertools
import math
import os
import threading
import zlib
from collections import deque
from collections.abc import Callable, Iterator
from concurrent.futures import Future, ThreadPoolExecutor
from dataclasses import dataclass
from pathlib import Path

import numpy as np
from tqdm import tqdm

from ._native import Catalogue, ChartError, MapView, Quilt
from .charts import catalogue_of, extent_of

RADIUS = 6378137.0  # metres, of the sphere of EPSG:3857
MOST_LATITUDE = 85.0511  # degrees, of web maps
RESOLUTIONS = 0.01, 1e6  # metres; from there on the view has other limits
TILE = 512  # pixels
MOST_TILES = 4_000_000  # a terapixel
BIG = 3_000_000_000  # bytes that need BigTIFF; overviews add a third

# TIFF tags and types of a GeoTIFF.
PIXEL_SCALE, TIE_POINT, GEO_KEYS, GEO_TEXTS = 33550, 33922, 34735, 34737
TEXT = "WGS 84 / Pseudo-Mercator|"
KEYS = (
    (1024, 0, 1, 1),  # a projected model
    (1025, 0, 1, 1),  # the tie point is the corner of a pixel
    (1026, GEO_TEXTS, len(TEXT), 0),
    (3072, 0, 1, 3857),  # the EPSG code
    (3076, 0, 1, 9001),  # metres
)


@dataclass(frozen=True)
class Grid:
    """Pixels on the plane of EPSG:3857, in metres; the origin is the upper left corner."""

    left: float
    top: float
    resolution: float  # metres of the plane per pixel
    width: int
    height: int

    def overview(self, level: int) -> "Grid":
        """The grid with pixels that are 2 to the power of `level` times as large."""
        factor = 1 << level
        return Grid(
            self.left, self.top, self.resolution * factor, -(-self.width // factor), -(-self.height // factor)
        )

    def count(self) -> int:
        """The number of tiles."""
        return -(-self.width // TILE) * -(-self.height // TILE)

    def tiles(self) -> Iterator[tuple[int, int]]:
        """The upper left pixels of the tiles of the file, in its order."""
        return ((column, row) for row in range(0, self.height, TILE) for column in range(0, self.width, TILE))

    def view(self, column: int, row: int) -> MapView:
        """The view of the part of a tile that is in the grid. The rest may be beyond the end of the map."""
        width, height = min(TILE, self.width - column), min(TILE, self.height - row)
        x = self.left + (column + width / 2) * self.resolution
        y = self.top - (row + height / 2) * self.resolution
        latitude = math.degrees(math.atan(math.sinh(y / RADIUS)))
        metres = self.resolution * math.cos(math.radians(latitude))
        return MapView(latitude, math.degrees(x / RADIUS), metres, width, height)


def grid_of(catalogue: Catalogue, resolution: float) -> Grid:
    """The grid around all charts, on multiples of its resolution.

    Charts on both sides of the 180th meridian lie together: their eastings may be past 20037508 metres.

    Raises:
        ValueError: a resolution out of range, too many pixels, or charts beyond the latitudes of web maps.
    """
    if not RESOLUTIONS[0] <= resolution <= RESOLUTIONS[1]:
        raise ValueError("the resolution is from 0.01 to 1000000 metres")
    south, west, north, east = extent_of(catalogue)
    south, north = max(south, -MOST_LATITUDE), min(north, MOST_LATITUDE)
    if south >= north:
        raise ValueError("the charts are beyond 85 degrees of latitude, where the projection ends")
    left = math.floor(math.radians(west) * RADIUS / resolution)
    right = math.ceil(math.radians(east) * RADIUS / resolution)
    bottom = math.floor(_northing(south) / resolution)
    top = math.ceil(_northing(north) / resolution)
    grid = Grid(left * resolution, top * resolution, resolution, right - left, top - bottom)
    if grid.count() > MOST_TILES:
        raise ValueError(f"{grid.width} x {grid.height} pixels are too many: take a larger resolution")
    return grid


def _northing(latitude: float) -> float:
    return RADIUS * math.asinh(math.tan(math.radians(latitude)))


def write_geotiff(
    charts: list[str], out: Path, resolution: float, scheme: str = "day", jobs: int = 1, memory: int = 256 << 20
) -> dict[str, str]:
    """Writes a tiled, compressed GeoTIFF with overviews, transparent outside the charts.

    Args:
        charts: chart files and folders.
        out: the file, which is replaced when all is written.
        resolution: metres of the map plane per pixel, 0.01 to 1e6; on the ground they are fewer by the cosine of
            the latitude.
        scheme: "day", "dusk" or "night".
        jobs: threads that draw.
        memory: bytes of decoded chart data per thread.

    Returns:
        Why charts could not be shown, by chart file.

    Raises:
        ChartError: there is no chart, one cannot be opened, or tifffile is missing.
        ValueError: a resolution out of range.
    """
    try:
        import tifffile
    except ImportError as error:
        raise ChartError("Install python3-tifffile to write a GeoTIFF.") from error
    catalogue = catalogue_of(charts)
    grid = grid_of(catalogue, resolution)
    levels = max(0, math.ceil(math.log2(max(grid.width, grid.height) / TILE)))
    grids = [grid.overview(level) for level in range(levels + 1)]
    unfinished = out.with_name(out.name + ".part")
    problems: dict[str, str] = {}
    draw = _drawer(catalogue, scheme, memory, problems)
    try:
        with (
            tifffile.TiffWriter(unfinished, bigtiff=grid.width * grid.height * 4 > BIG) as file,
            tqdm(total=sum(each.count() for each in grids), unit=" tiles") as bar,
            ThreadPoolExecutor(jobs) as pool,
        ):
            for level, each in enumerate(grids):
                file.write(
                    _in_order(pool, jobs, draw, each, bar),
                    shape=(each.height, each.width, 4),
                    dtype=np.uint8,
                    tile=(TILE, TILE),
                    photometric="rgb",
                    extrasamples=["unassalpha"],
                    compression="adobe_deflate",
                    subfiletype=1 if level else 0,
                    metadata=None,
                    extratags=() if level else _geo_tags(grid),
                )
        os.replace(unfinished, out)
    finally:
        unfinished.unlink(missing_ok=True)
    return problems


def _drawer(
    catalogue: Catalogue, scheme: str, memory: int, problems: dict[str, str]
) -> Callable[[Grid, int, int], bytes]:
    """A function that draws and compresses a tile; each thread has a quilt of its own."""
    of_thread = threading.local()
    empty = zlib.compress(bytes(TILE * TILE * 4), 6)

    def draw(grid: Grid, column: int, row: int) -> bytes:
        view = grid.view(column, row)
        if not catalogue.overlapping(*view.extent):
            return empty
        if not hasattr(of_thread, "quilt"):
            of_thread.quilt = Quilt(catalogue, memory)
        image = of_thread.quilt.draw(view, scheme)
        problems.update(of_thread.quilt.problems())
        tile = np.zeros((TILE, TILE, 4), np.uint8)
        tile[: image.shape[0], : image.shape[1]] = image
        return zlib.compress(tile.tobytes(), 6)

    return draw


def _in_order(
    pool: ThreadPoolExecutor, jobs: int, draw: Callable[[Grid, int, int], bytes], grid: Grid, bar: "tqdm[int]"
) -> Iterator[bytes]:
    """The compressed tiles of a grid; a few are drawn ahead."""
    running: deque[Future[bytes]] = deque()
    for column, row in grid.tiles():
        running.append(pool.submit(draw, grid, column, row))
        if len(running) > 2 * jobs:
            bar.update()
            yield running.popleft().result()
    for future in running:
        bar.update()
        yield future.result()


def _geo_tags(grid: Grid) -> list[tuple[int, str, int, object, bool]]:
    keys = (1, 1, 0, len(KEYS), *itertools.chain.from_iterable(KEYS))
    return [
        (PIXEL_SCALE, "d", 3, (grid.resolution, grid.resolution, 0.0), True),
        (TIE_POINT, "d", 6, (0.0, 0.0, 0.0, grid.left, grid.top, 0.0), True),
        (GEO_KEYS, "H", len(keys), keys, True),
        (GEO_TEXTS, "s", 0, TEXT, True),
    ]

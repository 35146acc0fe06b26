"""Catalogues from command lines, and what they cover."""

import hashlib
from collections.abc import Iterable
from pathlib import Path

from ._native import Catalogue, ChartError, diagnose_chart, diagnose_georeference

Extent = tuple[float, float, float, float]


def catalogue_of(paths: Iterable[str | Path]) -> Catalogue:
    """The charts in files and folders.

    Raises:
        ChartError: a file is not a chart, has no georeference, or a folder has no chart, with the reason in words.
    """
    catalogue = Catalogue()
    for path in map(Path, paths):
        if catalogue.add(path) == 0:
            raise ChartError(f"{path}: {_reason(path)}")
    if len(catalogue) == 0:
        raise ChartError("There is no chart.")
    return catalogue


def _reason(path: Path) -> str:
    if path.is_dir():
        return "The folder has no chart with a georeference file."
    return diagnose_chart(path) or diagnose_georeference(path) or "The georeference covers nothing."


def georeference_file(chart: str) -> Path:
    """The path of the georeference file of a chart."""
    dot = chart.rfind(".")  # of a folder, if the file's name has none
    return Path((chart[:dot] if dot > 0 else chart) + ".GEO")


def state_of(catalogue: Catalogue) -> bytes:
    """A digest of which charts and insets a catalogue has, and of the sizes of their files."""
    digest = hashlib.blake2b(digest_size=16)
    for entry in catalogue.entries():
        sizes = [path.stat().st_size for path in (Path(entry.path), georeference_file(entry.path))]
        digest.update(repr((entry.path, entry.inset, sizes)).encode())
    return digest.digest()


def extent_of(catalogue: Catalogue) -> Extent:
    """South, west, north and east around all charts, degrees, with the smallest range of longitudes.

    West is from -180 to 180. East is above 180 if the range crosses the 180th meridian.
    """
    souths, _, norths, _ = zip(*(entry.extent for entry in catalogue.entries()))
    west, east = _longitudes([(entry.extent[1], entry.extent[3]) for entry in catalogue.entries()])
    return min(souths), west, max(norths), east


def _longitudes(ranges: list[tuple[float, float]]) -> tuple[float, float]:
    """The smallest range around all; it begins after the widest gap."""
    ranges = sorted(ranges)
    reach = max(east for _, east in ranges) - 360  # of those across the 180th meridian
    gaps = []
    for i, (west, east) in enumerate(ranges):
        gaps.append((west - reach, i))
        reach = max(reach, east)
    widest, first = max(gaps)
    if widest <= 0:
        return -180.0, 180.0
    turned = ranges[first:] + [(west + 360, east + 360) for west, east in ranges[:first]]
    return turned[0][0], max(east for _, east in turned)


def centre_of(catalogue: Catalogue) -> tuple[float, float]:
    """Latitude and longitude, degrees, of the centre of the chart that is nearest to the middle of all.

    A map that opens there shows a chart, even if charts are far apart.
    """
    south, west, north, east = extent_of(catalogue)
    middle = (south + north) / 2, (west + east) / 2

    def distance(centre: tuple[float, float]) -> float:
        return abs(centre[0] - middle[0]) + abs((centre[1] - middle[1] + 180) % 360 - 180)

    extents = (entry.extent for entry in catalogue.entries())
    centres = (((south + north) / 2, (west + east) / 2) for south, west, north, east in extents)
    latitude, longitude = min(centres, key=distance)
    return latitude, (longitude + 180) % 360 - 180

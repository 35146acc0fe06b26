"""Writes the quilt of charts as web tiles into an MBTiles file."""

import hashlib
import json
from collections.abc import Iterable
from dataclasses import dataclass, field
from pathlib import Path
from typing import NamedTuple

from tqdm import tqdm

from ._native import Catalogue, CatalogueEntry, plan_blocks
from .charts import catalogue_of
from .drawing import Draw, TileSettings
from .mbtiles import Block, MbtilesWriter


class Plan(NamedTuple):
    """A block to draw, the number of its tiles that touch a chart, and a digest of what it is drawn from."""

    block: Block
    tiles: int
    fingerprint: bytes


@dataclass
class Report:
    """What a run did. Tiles are those that touch a chart."""

    tiles: int = 0
    drawn: int = 0
    removed_blocks: int = 0
    problems: dict[str, str] = field(default_factory=dict)


def write_tiles(
    settings: TileSettings,
    out: Path,
    zooms: tuple[int, int],
    draw: Draw,
    attribution: str = "",
    show_progress: bool = False,
) -> Report:
    """Draws what is missing in a tile database or has changed, and removes what no longer belongs to it.

    Args:
        settings: the charts and how they are drawn.
        out: the MBTiles file; it is created if it does not exist.
        zooms: the first and the last.
        draw: on_this_machine or on_cluster.
        attribution: text for the metadata.
        show_progress: whether to show a bar on the standard error output.

    Raises:
        ChartError: there is no chart, or one cannot be opened.
        TilesError: the file cannot be written.
        ValueError: zooms out of range.
    """
    catalogue = catalogue_of(settings.charts)
    with MbtilesWriter(out) as writer:
        plans = list(_plans(catalogue, settings, zooms, writer))
        done = writer.done()
        todo = {plan.block: plan for plan in plans if done.get(plan.block) != plan.fingerprint}
        stale = done.keys() - {plan.block for plan in plans}
        report = Report(tiles=sum(plan.tiles for plan in plans), removed_blocks=len(stale))
        writer.set_metadata(_metadata(catalogue, settings, zooms, out.stem, attribution))
        writer.remove(stale)
        drawn_before = report.tiles - sum(plan.tiles for plan in todo.values())
        with tqdm(
            total=report.tiles, initial=drawn_before, unit=" tiles", smoothing=0.05, disable=not show_progress
        ) as bar:
            for drawn in draw(settings, todo):
                plan = todo[drawn.block]
                writer.write(plan.block, plan.fingerprint, drawn.tiles)
                report.problems.update(drawn.problems)
                report.drawn += plan.tiles
                bar.update(plan.tiles)
        writer.remove_unused_images()
    return report


def _plans(
    catalogue: Catalogue, settings: TileSettings, zooms: tuple[int, int], writer: MbtilesWriter
) -> Iterable[Plan]:
    how = json.dumps([settings.version, settings.tile_size, settings.format, settings.scheme]).encode()
    entries = catalogue.entries()
    digests = [_digest(entry, writer) for entry in entries]
    for zoom, x, y, size, tiles, touched in plan_blocks(catalogue, *zooms):
        fingerprint = hashlib.blake2b(how, digest_size=16)
        for index in touched:
            fingerprint.update(digests[index])
        yield Plan(Block(zoom, x, y, size), tiles, fingerprint.digest())


def _digest(entry: CatalogueEntry, writer: MbtilesWriter) -> bytes:
    chart = Path(entry.path)
    inset = str(entry.inset).encode()
    return writer.digest_of(chart) + writer.digest_of(chart.with_suffix(".GEO")) + inset


def _metadata(
    catalogue: Catalogue, settings: TileSettings, zooms: tuple[int, int], name: str, attribution: str
) -> dict[str, str]:
    south, west, north, east = bounds_of(catalogue)
    metadata = {
        "name": name,
        "format": settings.format,
        "bounds": f"{west:.6f},{south:.6f},{east:.6f},{north:.6f}",
        "center": f"{(west + east) / 2:.6f},{(south + north) / 2:.6f},{zooms[0]}",
        "minzoom": str(zooms[0]),
        "maxzoom": str(zooms[1]),
        "type": "overlay",
        "version": "1",
        "description": f"{len(catalogue)} charts and insets",
        "tile_size": str(settings.tile_size),
    }
    return metadata | ({"attribution": attribution} if attribution else {})


def bounds_of(catalogue: Catalogue) -> tuple[float, float, float, float]:
    """South, west, north and east of all charts, degrees. One across the 180th meridian needs the full turn."""
    souths, wests, norths, easts = zip(*(entry.extent for entry in catalogue.entries()))
    if max(easts) > 180:
        return min(souths), -180.0, max(norths), 180.0
    return min(souths), min(wests), max(norths), max(easts)

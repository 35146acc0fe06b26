"""Writes the quilt of charts as web tiles into an MBTiles file."""

import hashlib
import json
from collections.abc import Iterable
from dataclasses import dataclass, field, replace
from pathlib import Path
from typing import NamedTuple

from tqdm import tqdm

from ._native import Catalogue, CatalogueEntry, diagnose_chart, plan_blocks
from .charts import catalogue_of, centre_of, extent_of, georeference_file, state_of
from .drawing import Draw, TileSettings
from .mbtiles import Block, MbtilesWriter


class Plan(NamedTuple):
    """A block to draw, the number of its tiles that touch a chart, and what it is drawn from."""

    block: Block
    tiles: int
    fingerprint: bytes
    charts: frozenset[str]


@dataclass
class Report:
    """What a run did. Tiles are those that touch a chart. Problems are reasons by chart file."""

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
        digests = [_digest(entry, writer) for entry in catalogue.entries()]
        plans = list(_plans(catalogue, settings, zooms, digests))
        settings = replace(settings, state=state_of(catalogue), content=hashlib.sha256(b"".join(digests)).digest())
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
                problems = {path: reason for path, reason in drawn.problems if path in plan.charts}
                # A chart that opens here could not be read for a while: the next run draws the block again.
                passing = any(diagnose_chart(path) is None for path in problems)
                writer.write(plan.block, b"" if passing else plan.fingerprint, drawn.tiles)
                report.problems.update(problems)
                report.drawn += plan.tiles
                bar.update(plan.tiles)
        writer.remove_unused_images()
    return report


def _plans(
    catalogue: Catalogue, settings: TileSettings, zooms: tuple[int, int], digests: list[bytes]
) -> Iterable[Plan]:
    how = json.dumps([settings.version, settings.tile_size, settings.format, settings.scheme]).encode()
    paths = [entry.path for entry in catalogue.entries()]
    for zoom, x, y, size, tiles, touched in plan_blocks(catalogue, *zooms):
        fingerprint = hashlib.blake2b(how, digest_size=16)
        for index in touched:
            fingerprint.update(digests[index])
        charts = frozenset(paths[index] for index in touched)
        yield Plan(Block(zoom, x, y, size), tiles, fingerprint.digest(), charts)


def _digest(entry: CatalogueEntry, writer: MbtilesWriter) -> bytes:
    inset = str(entry.inset).encode()
    return writer.digest_of(Path(entry.path)) + writer.digest_of(georeference_file(entry.path)) + inset


def _metadata(
    catalogue: Catalogue, settings: TileSettings, zooms: tuple[int, int], name: str, attribution: str
) -> dict[str, str]:
    south, west, north, east = extent_of(catalogue)
    if east > 180:  # across the 180th meridian the format needs the full turn
        west, east = -180.0, 180.0
    latitude, longitude = centre_of(catalogue)
    metadata = {
        "name": name,
        "format": settings.format,
        "bounds": f"{west:.6f},{south:.6f},{east:.6f},{north:.6f}",
        "center": f"{longitude:.6f},{latitude:.6f},{zooms[0]}",
        "minzoom": str(zooms[0]),
        "maxzoom": str(zooms[1]),
        "type": "overlay",
        "version": "1",
        "description": f"{len(catalogue)} charts and insets",
        "tile_size": str(settings.tile_size),
    }
    return metadata | ({"attribution": attribution} if attribution else {})

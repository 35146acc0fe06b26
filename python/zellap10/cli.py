"""The command zellap10."""

import argparse
import json
import os
import sys
import time
from collections.abc import Callable, Mapping
from io import TextIOWrapper
from pathlib import Path

from ._native import ChartError, __version__
from .mbtiles import TilesError


def main(arguments: list[str] | None = None) -> int:
    """Runs a command and returns its exit status: 1 after an error, 130 after an interruption."""
    for stream in (sys.stdout, sys.stderr):
        if isinstance(stream, TextIOWrapper):  # names of files may have any characters
            stream.reconfigure(errors="backslashreplace")
    options = _parser().parse_args(arguments)
    try:
        return int(options.run(options))
    except (ChartError, TilesError, ValueError, OSError) as error:
        print(f"zellap10: {error}", file=sys.stderr)
        return 1
    except KeyboardInterrupt:
        print("zellap10: interrupted", file=sys.stderr)
        return 130


def _parser() -> argparse.ArgumentParser:
    parser = argparse.ArgumentParser(prog="zellap10", description="Raster nautical charts.")
    parser.add_argument("--version", action="version", version=__version__)
    commands = parser.add_subparsers(required=True, metavar="COMMAND")

    info = commands.add_parser("info", help="say what a chart is or why it does not open")
    info.add_argument("files", nargs="+", metavar="FILE")
    info.add_argument("--json", action="store_true", help="for programs")
    info.set_defaults(run=_info)

    tiles = commands.add_parser("tiles", help="write charts as web tiles into an MBTiles file")
    tiles.add_argument("charts", nargs="+", metavar="CHARTS", help="chart files and folders")
    tiles.add_argument("out", type=_file(".mbtiles"), metavar="OUT.mbtiles", help="continued if it exists")
    tiles.add_argument("--zoom", type=_zooms, required=True, metavar="6-14", help="first and last zoom")
    tiles.add_argument("--size", type=int, choices=(256, 512), default=256, help="pixels of a tile")
    tiles.add_argument("--format", choices=("png", "webp"), default="png")
    tiles.add_argument("--attribution", default="", help="text that maps show")
    tiles.add_argument("--scheduler", metavar="tcp://...", help="draw on the workers of this Dask scheduler")
    _add_scheme(tiles)
    _add_drawing(tiles)
    tiles.set_defaults(run=_tiles)

    serve = commands.add_parser("serve", help="show charts or an MBTiles file in a browser")
    serve.add_argument("source", nargs="+", metavar="CHARTS_OR_MBTILES")
    serve.add_argument("--host", default="127.0.0.1", help="address to listen on")
    serve.add_argument("--port", type=_number(0, 65535), default=8010, help="0 takes any that is free")
    _add_drawing(serve)
    serve.set_defaults(run=_serve)

    geotiff = commands.add_parser("geotiff", help="write charts as a GeoTIFF in EPSG:3857")
    geotiff.add_argument("charts", nargs="+", metavar="CHARTS")
    geotiff.add_argument("out", type=_file(".tif", ".tiff"), metavar="OUT.tif", help="replaced if it exists")
    geotiff.add_argument(
        "--resolution", type=float, required=True, metavar="METRES", help="per pixel on the map plane of EPSG:3857"
    )
    _add_scheme(geotiff)
    _add_drawing(geotiff)
    geotiff.set_defaults(run=_geotiff)
    return parser


def _add_scheme(parser: argparse.ArgumentParser) -> None:
    parser.add_argument("--scheme", choices=("day", "dusk", "night"), default="day", help="colours")


def _add_drawing(parser: argparse.ArgumentParser) -> None:
    parser.add_argument("--jobs", type=_number(1, 256), default=os.cpu_count() or 1, help="threads that draw")
    parser.add_argument(
        "--memory", type=_number(1, 1 << 20), default=256, metavar="MIB", help="decoded chart data per thread"
    )


def _number(least: int, most: int) -> Callable[[str], int]:
    def number(text: str) -> int:
        if not least <= int(text) <= most:
            raise argparse.ArgumentTypeError(f"{text} is not from {least} to {most}")
        return int(text)

    return number


def _file(*endings: str) -> Callable[[str], Path]:
    """A file to write: without a name for it, the last chart would be overwritten."""

    def file(text: str) -> Path:
        if not text.endswith(endings):
            raise argparse.ArgumentTypeError(f"{text} does not end with {' or '.join(endings)}")
        return Path(text)

    return file


def _zooms(text: str) -> tuple[int, int]:
    first, _, last = text.partition("-")
    zooms = int(first), int(last or first)
    if not 0 <= zooms[0] <= zooms[1] <= 24:
        raise argparse.ArgumentTypeError("zooms are from 0 to 24, such as 6-14")
    return zooms


def _info(options: argparse.Namespace) -> int:
    from .info import describe, in_words

    facts = [describe(path) for path in options.files]
    if options.json:
        print(json.dumps(facts, indent=2))
    else:
        print("\n".join(line for chart in facts for line in in_words(chart)))
    return 1 if any("error" in chart for chart in facts) else 0


def _tiles(options: argparse.Namespace) -> int:
    from .drawing import TileSettings, on_cluster, on_this_machine
    from .tiles import write_tiles

    settings = TileSettings(
        charts=tuple(os.path.abspath(path) for path in options.charts),
        tile_size=options.size,
        format=options.format,
        scheme=options.scheme,
        memory=options.memory << 20,
    )
    draw = on_cluster(options.scheduler) if options.scheduler else on_this_machine(options.jobs)
    start = time.monotonic()
    report = write_tiles(settings, options.out, options.zoom, draw, options.attribution, show_progress=True)
    seconds = time.monotonic() - start
    _print_problems(report.problems)
    print(f"{report.tiles} tiles, {report.drawn} of them drawn in {seconds:.1f} s, {report.drawn / seconds:.0f} per second")
    return 0


def _serve(options: argparse.Namespace) -> int:
    from .serve import serve

    serve(options.source, options.host, options.port, options.jobs, options.memory << 20)
    return 0


def _geotiff(options: argparse.Namespace) -> int:
    from .geotiff import write_geotiff

    problems = write_geotiff(
        options.charts, options.out, options.resolution, options.scheme, options.jobs, options.memory << 20
    )
    _print_problems(problems)
    return 0


def _print_problems(problems: Mapping[str, str]) -> None:
    for path, reason in problems.items():
        print(f"zellap10: not shown: {path}: {reason}", file=sys.stderr)

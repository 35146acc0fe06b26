"""What a chart is, or why it does not open."""

from collections.abc import Iterator
from pathlib import Path
from typing import Any

from ._native import Chart, ChartError, Georeference, diagnose_georeference

Facts = dict[str, Any]


def describe(path: str | Path) -> Facts:
    """The facts of a chart file as plain values for JSON. With the key "error" it does not open."""
    try:
        with Chart(path) as chart:
            width, height = chart.size
            return {
                "path": str(path),
                "name": chart.name,
                "width": width,
                "height": height,
                "colours": len(chart.palette),
                **{key: value for key, value in chart.texts.items() if value},
                "georeference": _georeference(chart.georeference),
                **({} if chart.georeference else {"georeference_error": _no_georeference(path)}),
                "insets": [
                    {"name": inset.name, "georeference": _georeference(inset.georeference)} for inset in chart.insets
                ],
            }
    except ChartError as error:
        return {"path": str(path), "error": str(error).removeprefix(f"{path}: ")}


def _no_georeference(path: str | Path) -> str:
    return diagnose_georeference(path) or "The georeference file has no points that fit."


def _georeference(georeference: Georeference | None) -> Facts | None:
    if georeference is None:
        return None
    return {
        "metres_per_pixel": georeference.metres_per_pixel,
        "outline": [[round(degrees, 6) for degrees in corner] for corner in georeference.outline.tolist()],
    }


def in_words(facts: Facts) -> Iterator[str]:
    """Lines for people."""
    if "error" in facts:
        yield f"{facts['path']}: {facts['error']}"
        return
    yield f"{facts['path']}: {facts['name']}"
    yield f"  {facts['width']} x {facts['height']} pixels, {facts['colours']} colours"
    for key in ("scale", "projection", "datum"):
        if key in facts:
            yield f"  {key} {facts[key]}"
    yield f"  {facts.get('georeference_error') or _in_words(facts['georeference'])}"
    for inset in facts["insets"]:
        yield f"  inset {inset['name']}: {_in_words(inset['georeference'])}"


def _in_words(georeference: Facts | None) -> str:
    if georeference is None or not georeference["outline"]:
        return "no georeference"
    latitudes, longitudes = zip(*georeference["outline"])
    west = (min(longitudes) + 180) % 360 - 180  # more than the east across the 180th meridian
    east = 180 - (180 - max(longitudes)) % 360
    metres = georeference["metres_per_pixel"]
    return (
        f"latitude {min(latitudes):.4f} to {max(latitudes):.4f}, longitude {west:.4f} to {east:.4f}"
        + (f", {metres:.1f} metres per pixel" if metres else "")
    )

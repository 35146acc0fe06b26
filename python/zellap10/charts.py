"""Catalogues from command lines."""

from collections.abc import Iterable
from pathlib import Path

from ._native import Catalogue, ChartError, diagnose_chart, diagnose_georeference


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

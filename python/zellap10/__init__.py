"""Raster nautical charts: pixels, positions and map tiles.

Positions are degrees, latitude before longitude, north and east positive, in WGS 84 unless an argument says otherwise.
Pixels are x (column) before y (row). Functions take scalars and arrays, which broadcast.
"""

from ._native import (
    Catalogue,
    CatalogueEntry,
    Chart,
    ChartError,
    Georeference,
    Inset,
    MapView,
    Projection,
    Quilt,
    __version__,
    advance,
    cartesian_to_geodetic,
    course_and_distance,
    datum_to_wgs84,
    geodetic_to_cartesian,
    meridional_parts,
    shift_cartesian,
    wgs84_to_datum,
)

__all__ = [
    "Catalogue",
    "CatalogueEntry",
    "Chart",
    "ChartError",
    "Georeference",
    "Inset",
    "MapView",
    "Projection",
    "Quilt",
    "__version__",
    "advance",
    "cartesian_to_geodetic",
    "course_and_distance",
    "datum_to_wgs84",
    "geodetic_to_cartesian",
    "meridional_parts",
    "shift_cartesian",
    "wgs84_to_datum",
]

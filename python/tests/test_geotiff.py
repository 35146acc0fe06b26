"""GeoTIFF files."""

import re
import subprocess
from unittest.mock import Mock

import numpy as np
import pytest
from conftest import need

import zellap10
from zellap10.charts import _longitudes
from zellap10.geotiff import Grid, grid_of, write_geotiff

RESOLUTION = 600.0


@pytest.fixture(scope="module")
def fiji(samples, tmp_path_factory):
    need("tifffile", "listgeo")
    out = tmp_path_factory.mktemp("geotiff") / "fiji.tif"
    write_geotiff([str(samples / "fiji.chart")], out, RESOLUTION, jobs=2)
    return out


def test_an_independent_reader_finds_the_georeference(fiji):
    text = subprocess.run(["listgeo", "-d", fiji], capture_output=True, text=True, check=True).stdout
    assert "WGS 84 / Pseudo-Mercator" in text and "PCS = 3857" in text
    corner = re.search(r"Upper Left +\( *([-\d.]+), *([-\d.]+)\)", text)
    x, y = map(float, corner.groups())
    assert (x % RESOLUTION, y % RESOLUTION) == (0, 0)
    # The chart's own upper left corner, at 15.8 S 176.3 E, is on the first pixel. The latitudes that listgeo prints
    # are for the ellipsoid.
    latitude, longitude = position(x, y)
    assert 0 <= 176.3 - longitude < RESOLUTION / 111319
    assert 0 <= latitude + 15.8 < RESOLUTION / 105000


def test_the_pixels_are_those_of_the_quilt(fiji, samples):
    """Of each level, also past the 180th meridian."""
    import tifffile

    catalogue = zellap10.Catalogue()
    catalogue.add(samples / "fiji.chart")
    quilt = zellap10.Quilt(catalogue)
    with tifffile.TiffFile(fiji) as file:
        assert len(file.pages) > 1
        for level, page in enumerate(file.pages):
            image = page.asarray()
            resolution = RESOLUTION * 2**level
            assert page.is_tiled and page.compression == 8 and page.is_reduced == (level > 0)
            left, top = file.pages[0].tags[33922].value[3:5]
            row, column = image.shape[0] // 2, image.shape[1] * 3 // 4
            latitude, longitude = position(left + (column + 20) * resolution, top - (row + 15) * resolution)
            metres = resolution * np.cos(np.radians(latitude))
            expected = quilt.draw(zellap10.MapView(latitude, longitude, metres, 40, 30))
            found = image[row : row + 30, column : column + 40]
            assert (found == expected[: found.shape[0], : found.shape[1]]).all(axis=-1).mean() > 0.98
        assert (file.pages[0].asarray()[..., 3] == 255).mean() > 0.9


def position(x, y):
    return np.degrees(np.arctan(np.sinh(y / 6378137.0))), np.degrees(x / 6378137.0)


def test_the_grid_of_charts_around_the_180th_meridian(two_charts):
    catalogue = zellap10.Catalogue()
    catalogue.add(two_charts)
    grid = grid_of(catalogue, 1000.0)
    west = np.degrees(grid.left / 6378137.0)
    east = np.degrees((grid.left + grid.width * 1000.0) / 6378137.0)
    assert (round(west, 1), round(east, 1)) == (176.3, 293.8)
    for resolution in (0.0, -1.0, float("nan"), float("inf"), 1e-9, 1.0):
        with pytest.raises(ValueError):
            grid_of(catalogue, resolution)


@pytest.mark.parametrize(
    "ranges, around",
    [
        ([(-175, -160), (170, 190)], (170, 200)),
        ([(-150, -140), (0, 10), (100, 300)], (100, 370)),  # the second gap is partly covered past 180
        ([(-180, 10), (0, 180)], (-180, 180)),
    ],
)
def test_the_smallest_range_of_longitudes(ranges, around):
    assert _longitudes(ranges) == around


def test_only_tiles_that_touch_a_chart_are_drawn(two_charts, tmp_path, monkeypatch):
    """Charts may be far apart."""
    need("tifffile")
    import tifffile

    draw = Mock(side_effect=zellap10.Quilt.draw)
    monkeypatch.setattr(zellap10.Quilt, "draw", lambda *arguments: draw(*arguments))
    write_geotiff([str(two_charts)], tmp_path / "out.tif", 2000.0)
    assert 0 < draw.call_count < 20
    alpha = tifffile.imread(tmp_path / "out.tif")[..., 3]
    assert (alpha[-200:, :200] == 255).mean() > 0.9 and (alpha[:200, -200:] == 255).mean() > 0.9


def test_tiles_of_large_pixels_lie_on_the_map():
    """The unused part of a tile may be beyond the end of the map, which a view cannot be."""
    grid = Grid(left=1.9e7, top=-2e6, resolution=1e5, width=60, height=100)
    x, y = 1.9e7 + 0.5e5, -2e6 - 0.5e5  # the centre of the first pixel
    latitude, longitude = position(x, y)
    assert grid.view(0, 0).to_position(0, 0) == pytest.approx((latitude, longitude), abs=1e-9)


def test_a_chart_that_cannot_be_shown_is_reported(two_charts, tmp_path):
    need("tifffile")
    chart = two_charts / "fiji.chart"
    chart.write_bytes(chart.read_bytes()[:8000])
    assert list(write_geotiff([str(chart)], tmp_path / "out.tif", 9000.0)) == [str(chart)]


def test_a_failure_leaves_the_earlier_file(samples, tmp_path):
    need("tifffile")
    out = tmp_path / "out.tif"
    out.write_text("before")
    with pytest.raises(ValueError, match="none of day"):
        write_geotiff([str(samples / "fiji.chart")], out, 5000.0, scheme="noon")
    assert out.read_text() == "before" and [path.name for path in tmp_path.iterdir()] == ["out.tif"]

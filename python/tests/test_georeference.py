"""Pixels and positions, catalogues and views."""

import math
import time
from concurrent.futures import ThreadPoolExecutor

import numpy as np
import pytest

import zellap10

STEMS = ("english_channel", "western_channel", "channel_lambert", "gulf_of_maine", "fiji")


@pytest.mark.parametrize("stem", STEMS)
def test_positions_lead_back_to_their_pixels(samples, stem):
    """In both datums, and as arrays what scalars give."""
    with zellap10.Chart(samples / f"{stem}.chart") as chart:
        width, height = chart.size
        georeference = chart.georeference
    x = np.linspace(0, width, 5)
    y = np.linspace(0, height, 4)[:, None]
    for datum in ("wgs84", "chart"):
        latitude, longitude = georeference.position(x, y, datum=datum)
        assert latitude.shape == (4, 5)
        assert (latitude[1, 2], longitude[1, 2]) == georeference.position(x[2], y[1, 0], datum=datum)
        back = georeference.pixel(latitude, longitude, datum=datum)
        np.testing.assert_allclose(back, np.broadcast_arrays(x, y), atol=1e-5)


def test_the_chart_datum_is_another_one(samples):
    with zellap10.Chart(samples / "english_channel.chart") as chart:
        georeference = chart.georeference
    wgs84 = np.array(georeference.position(1000.0, 1000.0))
    own = np.array(georeference.position(1000.0, 1000.0, datum="chart"))
    assert 1e-4 < np.abs(wgs84 - own).max() < 1e-2
    np.testing.assert_allclose(georeference.outline - georeference.chart_datum_outline, [wgs84 - own] * 4)
    with pytest.raises(ValueError, match="neither wgs84 nor chart"):
        georeference.position(0, 0, datum="ED50")


def test_positions_that_have_no_pixel_are_nan(samples):
    with zellap10.Chart(samples / "english_channel.chart") as chart:
        georeference = chart.georeference
    x, _ = georeference.pixel([50.0, math.nan], [0.0, 0.0])
    assert np.isnan(x).tolist() == [False, True]
    assert georeference.covers([50.0, 0.0, math.nan], -1.0).tolist() == [True, False, False]
    assert georeference.covers(50.0, -1.0) is True


def test_an_inset_owns_its_pixels(samples):
    with zellap10.Chart(samples / "english_channel.chart") as chart:
        harbour = chart.insets[1].georeference
        x, y = harbour.pixel_outline.mean(axis=0)
        latitude, longitude = chart.georeference_at(x, y).position(x, y)
        assert harbour.covers(latitude, longitude)
        assert chart.georeference_at(0, 0).metres_per_pixel == chart.georeference.metres_per_pixel
        assert harbour.metres_per_pixel < chart.georeference.metres_per_pixel / 10


def test_reduced_colours_are_means_of_blocks(samples):
    with zellap10.Chart(samples / "gulf_of_maine.chart") as chart:
        full = chart.rgb()
        np.testing.assert_array_equal(full, chart.palette[chart.pixels()])
        np.testing.assert_array_equal(chart.rgb(left=7, top=5, width=4, height=3), full[5:8, 7:11])
        reduced = chart.rgb(4)
        assert reduced.shape == (math.ceil(full.shape[0] / 4), math.ceil(full.shape[1] / 4), 3)
        means = full[:400, :400].reshape(100, 4, 100, 4, 3).mean(axis=(1, 3))
        assert np.abs(reduced[:100, :100] - means).mean() < 5
        assert chart.rgb(4, "night").mean() < reduced.mean() / 2
        for reduction in (0, -1):
            with pytest.raises(ValueError, match="1 or more"):
                chart.rgb(reduction)


def test_a_catalogue_answers_most_detailed_first(samples):
    catalogue = zellap10.Catalogue()
    assert catalogue.add(samples) == 5
    assert catalogue.add(samples / "fiji.GEO") == 0
    metres = [entry.metres_per_pixel for entry in catalogue.entries()]
    assert metres == sorted(metres)
    assert len(catalogue) == len(metres) == 7
    assert {entry.name for entry in catalogue.overlapping(-20, 179, -15, 181)} == {"FIJI ISLANDS"}
    assert {entry.name for entry in catalogue.covering(-18, -179.5)} == {"FIJI ISLANDS"}
    with pytest.raises(ValueError, match="south"):
        catalogue.overlapping(1, 0, 0, 1)


def test_a_catalogue_that_a_quilt_draws_does_not_change(samples, tmp_path):
    """A quilt begins before or after another thread adds a folder, but not meanwhile."""
    for number in range(100):
        for file in samples.glob("fiji.*"):
            (tmp_path / f"{number}{file.suffix}").symlink_to(file)
    catalogue = zellap10.Catalogue()
    with pytest.raises(ValueError, match="from 1 to 64"):
        zellap10.Quilt(catalogue, threads=0)
    with ThreadPoolExecutor(1) as pool:
        added = pool.submit(catalogue.add, tmp_path)
        time.sleep(0.002)
        zellap10.Quilt(catalogue)
        count = len(catalogue)
    assert len(catalogue) == count == (0 if added.exception() else 100)
    with pytest.raises(ValueError, match="nothing may be added"):
        catalogue.add(samples)


def test_a_view_and_its_limits():
    view = zellap10.MapView(50, -1, 100, 800, 600, course_up=30)
    x, y = np.meshgrid(np.arange(0, 800, 100), np.arange(0, 600, 100))
    np.testing.assert_allclose(view.to_screen(*view.to_position(x, y)), (x, y), atol=1e-6)
    south, west, north, east = zellap10.MapView.of_tile(1, 1, 0).extent
    assert (south, west, east) == (pytest.approx(0, abs=1e-9), 0, 180) and north == pytest.approx(85.05113)
    for arguments in [(math.nan, 0, 1, 9, 9), (0, math.inf, 1, 9, 9), (0, 0, 0, 9, 9), (0, 0, 1, 0, 9), (91, 0, 1, 9, 9)]:
        with pytest.raises(ValueError):
            zellap10.MapView(*arguments)
    for change in (lambda n: zellap10.MapView(0, 0, n, 9, 9), lambda n: view.zoomed(n, 0, 0), view.turned_to):
        for number in (math.nan, math.inf):
            with pytest.raises(ValueError, match="NaN or infinity"):
                change(number)
    for tile in [(25, 0, 0), (1, 2, 0), (1, 0, -1), (-1, 0, 0)]:
        with pytest.raises(ValueError, match="no such tile"):
            zellap10.MapView.of_tile(*tile)


def test_a_quilt_knows_what_it_shows(catalogue):
    quilt = zellap10.Quilt(catalogue)
    view = zellap10.MapView(51.118, 1.328, 3, 200, 100)
    image = quilt.draw(view, background=(1, 2, 3, 4))
    assert image.shape == (100, 200, 4)
    assert quilt.at(view, 100, 50)[0].name == "DOVER HARBOUR"
    sea = zellap10.MapView(0, 0, 100, 20, 10)
    assert (quilt.draw(sea, background=(1, 2, 3, 4)) == (1, 2, 3, 4)).all()
    assert quilt.at(sea, 5, 5) is None
    assert quilt.draw(view, "night").mean() < image.mean()
    with pytest.raises(ValueError, match="none of day"):
        quilt.draw(view, "noon")

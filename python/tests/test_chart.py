"""Charts and their pixels."""

from concurrent.futures import ThreadPoolExecutor

import numpy as np
import pytest

import zellap10


def test_a_window_of_pixels_is_a_part_of_all(samples):
    with zellap10.Chart(samples / "gulf_of_maine.chart") as chart:
        width, height = chart.size
        everything = chart.pixels()
        assert everything.shape == (height, width)
        np.testing.assert_array_equal(chart.pixels(100, 50, 30, 20), everything[50:70, 100:130])
        np.testing.assert_array_equal(chart.pixels(left=width - 1), everything[:, -1:])
        assert chart.pixels(width, height).shape == (0, 0)
        assert chart.palette.shape[1] == 3
        assert everything.max() < len(chart.palette)


@pytest.mark.parametrize("rectangle", [(-1, 0), (-(2**31), 0), (0, 0, 10**9, 1), (0, 0, -1, 1), (1, 2**31 - 1), (0, 1, 1, 2**31 - 1)])
def test_a_rectangle_outside_is_a_value_error(samples, rectangle):
    with zellap10.Chart(samples / "fiji.chart") as chart:
        with pytest.raises(ValueError, match="2964 x 2223"):
            chart.pixels(*rectangle)


def test_a_chart_closes_itself(samples):
    with zellap10.Chart(samples / "fiji.chart") as chart:
        assert not chart.closed
    assert chart.closed
    chart.close()
    with pytest.raises(ValueError, match="closed"):
        chart.pixels()
    with pytest.raises(ValueError, match="closed"):
        _ = chart.palette


def test_the_reason_why_a_chart_does_not_open(tmp_path, samples):
    broken = tmp_path / "broken.chart"
    broken.write_bytes((samples / "fiji.chart").read_bytes()[:100])
    for path in (tmp_path / "none.chart", tmp_path, broken):
        with pytest.raises(zellap10.ChartError) as caught:
            zellap10.Chart(path)
        assert str(caught.value).startswith(str(path))
        assert str(caught.value).endswith(".")


def test_threads_share_a_chart(samples):
    with zellap10.Chart(samples / "gulf_of_maine.chart") as chart, ThreadPoolExecutor(4) as pool:
        expected = chart.pixels()
        for result in pool.map(lambda _: chart.pixels(), range(4)):
            np.testing.assert_array_equal(result, expected)

"""Functions on scalars and arrays."""

import math

import numpy as np
import pytest

import zellap10

FUNCTIONS = {
    "forward": (zellap10.Projection("lambert", 47, -3, 45, 49).forward, (46.5, -2.0)),
    "inverse": (zellap10.Projection("transverse_mercator", 0, -3).inverse, (1e5, 5e6)),
    "to_wgs84": (lambda *a: zellap10.datum_to_wgs84(*a, datum=30), (50.0, 1.0, 20.0)),
    "from_wgs84": (lambda *a: zellap10.wgs84_to_datum(*a, datum=30), (50.0, 1.0, 20.0)),
    "to_cartesian": (zellap10.geodetic_to_cartesian, (50.0, 1.0, 20.0)),
    "course": (zellap10.course_and_distance, (50.0, 1.0, 51.0, 2.0)),
    "advance": (zellap10.advance, (50.0, 1.0, 30.0, 45.0)),
}


@pytest.mark.parametrize("name", FUNCTIONS)
def test_arrays_give_what_scalars_give(name):
    """Any strides and any broadcast shape, element by element."""
    function, scalars = FUNCTIONS[name]
    first = scalars[0] + np.arange(12).reshape(3, 4)[::-1, ::2] / 16  # negative and skipping strides
    second = np.float32(scalars[1]) + np.zeros((2, 1, 1), np.float32)
    results = function(first, second, *scalars[2:])
    for result in results:
        assert result.shape == (2, 3, 2)
    for index in np.ndindex(2, 3, 2):
        expected = function(float(first[index[1:]]), scalars[1], *scalars[2:])
        assert tuple(result[index] for result in results) == expected
        assert all(isinstance(value, float) for value in expected)


def test_empty_arrays_and_nan_are_handed_on():
    x, y = zellap10.Projection("mercator").forward(np.empty((0, 3)), 1.0)
    assert x.shape == y.shape == (0, 3)
    assert math.isnan(zellap10.course_and_distance(math.nan, 0, 1, 1)[1])


def test_directions_that_undo_each_other():
    latitude, longitude = np.meshgrid(np.linspace(40, 50, 7), np.linspace(-6, 0, 5))
    for kind in ("mercator", "polyconic", "transverse_mercator", "lambert"):
        projection = zellap10.Projection(kind, 45, -3, 42, 48)
        back = projection.inverse(*projection.forward(latitude, longitude))
        np.testing.assert_allclose(back, (latitude, longitude), atol=1e-7)
    there = zellap10.geodetic_to_cartesian(latitude, longitude, 10.0, datum=5)
    np.testing.assert_allclose(zellap10.cartesian_to_geodetic(*there, datum=5)[:2], (latitude, longitude))
    new_latitude, new_longitude = zellap10.advance(latitude, 179.9, 25.0, 120.0)  # over the 180th meridian
    course, distance = zellap10.course_and_distance(latitude, 179.9, new_latitude, new_longitude - 360.0)
    np.testing.assert_allclose(course, 120.0, atol=1e-3)
    np.testing.assert_allclose(distance, 25.0, rtol=1e-3)


@pytest.mark.parametrize(
    "call, words",
    [
        (lambda: zellap10.Projection("gnomonic"), "'gnomonic' is none of"),
        (lambda: zellap10.Projection("mercator", datum=120), "from 0 to 119"),
        (lambda: zellap10.Projection("lambert", 0, 0, -30, 30), "no cone"),
        (lambda: zellap10.Projection("lambert", math.nan), "not a number"),
        (lambda: zellap10.datum_to_wgs84(1, 1, datum=-1), "from 0 to 119"),
        (lambda: zellap10.advance([1, 2], [1, 2, 3], 1, 1), "do not fit"),
    ],
)
def test_invalid_input_is_a_value_error_with_the_reason(call, words):
    with pytest.raises(ValueError, match=words):
        call()

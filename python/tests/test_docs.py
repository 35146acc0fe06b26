"""Examples in docstrings."""

import doctest

import pytest

import zellap10
from zellap10 import _native


def documented():
    """Each public class, method and function of the C++ part."""
    for name, value in vars(_native).items():
        yield name, value
        if isinstance(value, type):
            yield from ((f"{name}.{key}", member) for key, member in vars(value).items())


def test_examples_of_the_native_part(samples, monkeypatch):
    monkeypatch.chdir(samples)
    runner = doctest.DocTestRunner()
    for name, value in documented():
        text = getattr(value, "__doc__", None)
        if isinstance(text, str):
            test = doctest.DocTestParser().get_doctest(text, vars(zellap10).copy(), name, None, 0)
            runner.run(test)
    assert runner.summarize().failed == 0
    assert runner.tries > 3


@pytest.mark.parametrize("name", ["Chart", "Projection"])
def test_each_public_member_has_a_docstring(name):
    for key, member in vars(getattr(zellap10, name)).items():
        if not key.startswith("_"):
            assert member.__doc__, f"{name}.{key}"

"""The sample charts, drawn once per run, and what some tests need besides."""

import importlib
import os
import shutil
import subprocess
from pathlib import Path

import pytest

import zellap10

ROOT = Path(__file__).resolve().parents[2]


@pytest.fixture(scope="session")
def samples(tmp_path_factory):
    """The folder with the sample charts."""
    programs = sorted(ROOT.glob("build/*/samples/make_samples"), key=lambda path: path.stat().st_mtime)
    if not programs:
        pytest.fail("build the program make_samples first")
    folder = tmp_path_factory.mktemp("samples")
    subprocess.run([programs[-1], folder], check=True, stdout=subprocess.DEVNULL)
    return folder


@pytest.fixture(scope="session")
def catalogue(samples):
    """All sample charts."""
    charts = zellap10.Catalogue()
    charts.add(samples)
    return charts


@pytest.fixture
def two_charts(samples, tmp_path):
    """A folder of its own with the charts of the Gulf of Maine and of Fiji."""
    folder = tmp_path / "charts"
    folder.mkdir()
    for stem in ("gulf_of_maine", "fiji"):
        for file in samples.glob(f"{stem}.*"):
            shutil.copy2(file, folder)
    return folder


def need(*names):
    """Skips a test without these modules and programs; ZELLAP10_PYTHON_COMPLETE fails it instead."""
    for name in names:
        try:
            if shutil.which(name) is None:
                importlib.import_module(name)
        except ImportError:
            (pytest.fail if "ZELLAP10_PYTHON_COMPLETE" in os.environ else pytest.skip)(f"{name} is missing")

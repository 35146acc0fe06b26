"""The sample charts, drawn once per run."""

import shutil
import subprocess
from pathlib import Path

import pytest

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


@pytest.fixture
def one_chart(samples, tmp_path):
    """A folder of its own with the chart of the Gulf of Maine."""
    folder = tmp_path / "charts"
    folder.mkdir()
    for file in samples.glob("gulf_of_maine.*"):
        shutil.copy2(file, folder)
    return folder

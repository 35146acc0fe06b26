"""The command."""

import json
import os
import shutil
import subprocess
import sys

import pytest
from test_tiles import tiles_in

from zellap10.cli import main


def test_info_for_programs_and_for_people(samples, tmp_path, capsys):
    bad = tmp_path / "bad.chart"
    bad.write_text("nothing")
    assert main(["info", "--json", str(samples / "english_channel.chart"), str(bad)]) == 1
    good, refused = json.loads(capsys.readouterr().out)
    assert (good["name"], good["width"], good["datum"]) == ("ENGLISH CHANNEL", 6111, "European 1950")
    assert [inset["name"] for inset in good["insets"]] == ["THE SOLENT", "DOVER HARBOUR"]
    assert refused.keys() == {"path", "error"} and "has no end" in refused["error"]
    assert main(["info", str(samples / "fiji.chart")]) == 0
    words = capsys.readouterr().out
    assert "FIJI ISLANDS\n  2964 x 2223 pixels" in words and "longitude 176.3000 to -178.2000" in words


def test_info_names_a_missing_georeference(samples, tmp_path, capsys):
    lone = tmp_path / "lone.chart"
    shutil.copy(samples / "fiji.chart", lone)
    for content in (None, "nothing"):
        if content:
            lone.with_suffix(".GEO").write_text(content)
        assert main(["info", str(lone)]) == 0
        assert "eoreference" in capsys.readouterr().out
        assert main(["info", "--json", str(lone)]) == 0
        (facts,) = json.loads(capsys.readouterr().out)
        assert facts["georeference"] is None and facts["georeference_error"]


def test_tiles(two_charts, tmp_path, capsys):
    out = tmp_path / "out.mbtiles"
    assert main(["tiles", str(two_charts), str(out), "--zoom", "4-6", "--size", "512", "--format", "webp"]) == 0
    words = capsys.readouterr()
    assert "tiles/s" in words.err and "per second" in words.out
    assert {zoom for zoom, _, _ in tiles_in(out)} == {4, 5, 6}
    assert all(data[8:12] == b"WEBP" for data in tiles_in(out).values())


@pytest.mark.parametrize(
    "arguments, words",
    [
        (["tiles", "{0}/none.chart", "{0}/x.mbtiles", "--zoom", "1"], "none.chart: There is no such file."),
        (["tiles", "{0}", "{0}/x.mbtiles", "--zoom", "1"], "has no chart"),
        (["tiles", "{1}", "{0}/no/x.mbtiles", "--zoom", "1"], "No such file or directory"),
        (["geotiff", "{1}", "{0}/x.tif", "--resolution", "0"], "from 0.01 to"),
        (["serve", "{0}/none.mbtiles"], "unable to open"),
    ],
)
def test_errors_are_one_line(samples, tmp_path, capsys, arguments, words):
    assert main([argument.format(tmp_path, samples) for argument in arguments]) == 1
    error = capsys.readouterr().err
    assert words in error and error.count("\n") == 1


@pytest.mark.parametrize(
    "arguments",
    [
        *(f"tiles charts out.mbtiles --zoom={zoom}" for zoom in ("7-6", "25", "x", "-1")),
        "tiles a.chart b.chart --zoom 3",  # the file to write is missing
        "geotiff a.chart b.chart --resolution 100",
        "serve charts --port 65536",
        "serve charts --jobs 0",
        "serve charts --memory 99999999999999",
    ],
)
def test_usage_errors(arguments):
    with pytest.raises(SystemExit) as caught:
        main(arguments.split())
    assert caught.value.code == 2


def test_names_may_have_any_bytes(samples, tmp_path):
    """Also in messages."""
    folder = os.fsencode(tmp_path) + b"/\xff"
    os.mkdir(folder)
    chart, georeference = folder + b"/fiji.", folder + b"/fiji.GEO"  # nothing needs to follow the dot
    shutil.copy(samples / "fiji.chart", chart)

    def run(*arguments):
        command = [sys.executable, "-m", "zellap10", *arguments]
        result = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
        return result.returncode, result.stdout

    status, words = run("info", chart)
    assert status == 0 and "FIJI ISLANDS" in words and r"There is no georeference file" in words
    status, words = run("info", folder + b"/none")
    assert status == 1 and words.endswith(r"/\udcff/none: There is no such file." + "\n")
    shutil.copy(samples / "fiji.GEO", georeference)
    status, words = run("tiles", folder, folder + b"/out.mbtiles", "--zoom", "5")
    assert status == 0 and "not shown" not in words, words
    os.truncate(chart, 8000)
    status, words = run("tiles", folder, folder + b"/out.mbtiles", "--zoom", "5")
    assert status == 0 and r"not shown: " in words and "The line table" in words, words

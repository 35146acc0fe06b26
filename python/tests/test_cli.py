"""The command."""

import json
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
    assert "FIJI ISLANDS\n  2964 x 2223 pixels" in capsys.readouterr().out


def test_info_names_a_missing_georeference(samples, tmp_path, capsys):
    lone = tmp_path / "lone.chart"
    lone.write_bytes((samples / "fiji.chart").read_bytes())
    assert main(["info", str(lone)]) == 0
    assert "georeference" in capsys.readouterr().out


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
        (["geotiff", "{1}", "{0}/x.tif", "--resolution", "0"], "above 0"),
        (["serve", "{0}/none.mbtiles"], "unable to open"),
    ],
)
def test_errors_are_one_line(samples, tmp_path, capsys, arguments, words):
    assert main([argument.format(tmp_path, samples) for argument in arguments]) == 1
    error = capsys.readouterr().err
    assert words in error and error.count("\n") == 1


def test_usage_errors(samples):
    for zoom in ("7-6", "25", "x", "-1"):
        with pytest.raises(SystemExit) as caught:
            main(["tiles", str(samples), "out", f"--zoom={zoom}"])
        assert caught.value.code == 2


def test_the_module_is_the_command():
    run = subprocess.run([sys.executable, "-m", "zellap10", "--version"], capture_output=True, text=True)
    assert run.returncode == 0 and run.stdout[0].isdigit()

"""Tiles and their database."""

import io
import os
import signal
import shutil
import sqlite3
import subprocess
import sys
from collections import Counter
from dataclasses import replace

import numpy as np
import pytest
from conftest import ROOT, need

import zellap10
from zellap10 import mbtiles
from zellap10._native import Tiler, plan_blocks
from zellap10.drawing import Drawn, TileSettings, draw_block, on_this_machine
from zellap10.mbtiles import Block, MbtilesReader, MbtilesWriter, Tile, TilesError
from zellap10.tiles import write_tiles


def pixels_of(data):
    """The decoded pixels of a tile, rows x columns x 4."""
    image = pytest.importorskip("PIL.Image").open(io.BytesIO(data))
    return np.asarray(image.convert("RGBA")), image


def tiles_in(path):
    """All tiles of a database by zoom, column and row."""
    with sqlite3.connect(path) as database:
        return {row[:3]: row[3] for row in database.execute("SELECT * FROM tiles")}


def settings_of(folder, **options):
    return TileSettings(charts=(str(folder),), **options)


def test_a_tile_has_the_pixels_of_the_quilt(catalogue):
    """Byte for byte, whether drawn in a block or alone, in each format, size and kind of PNG."""
    need("PIL")
    quilt = zellap10.Quilt(catalogue)
    modes = set()
    for size, format in ((256, "png"), (512, "png"), (256, "webp")):
        tiler = Tiler(catalogue, size, format)
        for zoom, x, y, count, _, _ in plan_blocks(catalogue, 0, 11)[:: 9 if format == "png" else 30]:
            block = tiler.block(zoom, x, y, count)
            for column, row, data in block[:: max(1, len(block) // 8)]:
                pixels, image = pixels_of(data)
                modes.add(image.mode)
                expected = quilt.draw(zellap10.MapView.of_tile(zoom, column, row, size))
                np.testing.assert_array_equal(pixels, expected)
                assert tiler.tile(zoom, column, row) == data
    assert {"P", "RGBA"} <= modes


def test_no_tile_of_a_chart_is_left_out(catalogue):
    """The plan has each tile that shows something, across the 180th meridian too."""
    tiler = Tiler(catalogue)
    zoom = 7
    planned = Counter()
    shown = set()
    for _, x, y, size, tiles, _ in plan_blocks(catalogue, zoom, zoom):
        planned[zoom] += tiles
        shown |= {(column, row) for column, row, _ in tiler.block(zoom, x, y, size)}
    everything = {(x, y) for x in range(128) for y in range(128) if tiler.tile(zoom, x, y) is not None}
    assert shown == everything
    assert len(shown) <= planned[zoom] < 1.5 * len(shown)
    assert {x for x, y in shown if y > 64} == {126, 127, 0}
    for block in [(7, 127, 70, 0), (7, 0, 0, 3), (7, 8, 0, 16), (2, 0, 0, 8), (7, -1, 0, 16), (7, 0, 0, 2**31 - 1)]:
        with pytest.raises(ValueError, match="no such block"):
            tiler.block(*block)


@pytest.mark.parametrize("zoom, x, y", [(7, 127, 69), (8, 255, 139), (11, 2047, 1121), (7, 63, 43), (9, 254, 173), (14, 8252, 5475)])
def test_neighbours_meet_without_a_seam(catalogue, zoom, x, y):
    """A view across the borders of four tiles has their pixels, at the 180th meridian too."""
    need("PIL")
    tiler = Tiler(catalogue)
    tiles = [
        [pixels_of(tiler.tile(zoom, column % 2**zoom, row))[0] for column in (x, x + 1)] for row in (y, y + 1)
    ]
    across = zellap10.MapView.of_tile(zoom, x, y).moved_by(128, 128)
    four = np.vstack([np.hstack(row) for row in tiles])
    picture = zellap10.Quilt(catalogue).draw(across)
    assert len(np.unique(picture[:, 127:129].reshape(-1, 4), axis=0)) > 1  # the border is not empty
    np.testing.assert_array_equal(picture, four[128:384, 128:384])


CHANNEL, FIJI = "english_channel", "fiji"
PLACES = [(50, -2), (50, -2), (50, -1.5), (50.3, -1.5), (50.5, -1), (50.7, -1.3), (49.66, -1.62), (49.66, -1.62)]
PLACES += [(50.755, -1.53), (51.12, 1.328)]  # from zoom 5 on


@pytest.mark.parametrize(
    "stem, zoom, latitude, longitude",
    [
        *((CHANNEL, zoom, *place) for zoom, place in enumerate(PLACES, 5)),
        *((FIJI, zoom, -16.8, 180.0) for zoom in range(6, 12)),
    ],
)
def test_coasts_lie_where_the_coast_data_is(catalogue, stem, zoom, latitude, longitude):
    """The dark lines of the picture match the data best without a shift."""
    need("PIL")
    quilt = zellap10.Quilt(catalogue)
    metres = 156543.034 * np.cos(np.radians(latitude)) / 2**zoom
    size = (300, 300) if zoom > 6 else (100, 60)
    view = zellap10.MapView(latitude, longitude, metres, *size)
    picture = quilt.draw(view)
    entry, _, _ = quilt.at(view, size[0] / 2, size[1] / 2)
    line = coast_line(view, entry, stem)
    dark = 255.0 - picture[..., :3].max(axis=2)
    matches = {
        (dx, dy): (np.roll(line, (dy, dx), (0, 1))[4:-4, 4:-4] * dark[4:-4, 4:-4]).sum()
        for dx in range(-2, 3)
        for dy in range(-2, 3)
    }
    assert max(matches, key=matches.get) == (0, 0)


def coast_line(view, entry, stem):
    """The coast data as a line of the width that the charts have, 2 pixels of theirs; 0 to 255."""
    from PIL import Image, ImageDraw

    finer = 8
    width = max(1, 2 * entry.metres_per_pixel / view.metres_per_pixel)
    image = Image.new("L", (view.size[0] * finer, view.size[1] * finer))
    for block in (ROOT / f"samples/coast/{stem}.txt").read_text().split("\n\n")[1:]:
        ring = np.array([row.split() for row in block.splitlines()], float)[:, ::-1]
        points = (np.array(view.to_screen(*ring.T)) + 0.5) * finer
        ImageDraw.Draw(image).line(list(map(tuple, points.T)), fill=255, width=int(width * finer))
    return np.asarray(image.resize(view.size, Image.Resampling.BOX), float)


def test_a_run_and_what_a_later_one_renews(two_charts, tmp_path):
    out = tmp_path / "out.mbtiles"
    draw = on_this_machine(2)
    first = write_tiles(settings_of(two_charts), out, (3, 8), draw, attribution="nobody")
    before = tiles_in(out)
    assert first.drawn == first.tiles >= len(before) > 50
    assert write_tiles(settings_of(two_charts), out, (3, 8), draw).drawn == 0
    os.utime(two_charts / "fiji.chart")  # touched but not changed
    assert write_tiles(settings_of(two_charts), out, (3, 8), draw).drawn == 0
    chart = two_charts / "fiji.chart"
    chart.write_bytes(chart.read_bytes().replace(b"245,230,182", b"145,230,182"))
    again = write_tiles(settings_of(two_charts), out, (3, 8), draw)
    after = tiles_in(out)
    assert 0 < again.drawn < first.drawn
    changed = {key for key in before if before[key] != after[key]}
    fresh = tmp_path / "fresh.mbtiles"
    write_tiles(settings_of(two_charts), fresh, (3, 8), draw)
    assert changed and after == tiles_in(fresh)
    for file in two_charts.glob("fiji.*"):
        file.unlink()
    fewer = write_tiles(settings_of(two_charts), out, (3, 7), draw)
    assert fewer.removed_blocks > 0
    assert {zoom for zoom, _, _ in tiles_in(out)} == {3, 4, 5, 6, 7}
    assert all(column < 2**zoom / 2 for zoom, column, _ in tiles_in(out))


def test_the_database_is_one_of_mbtiles(two_charts, catalogue, tmp_path):
    out = tmp_path / "out.mbtiles"
    write_tiles(settings_of(two_charts), out, (2, 7), on_this_machine(1), attribution="© nobody")
    with sqlite3.connect(out) as database:
        metadata = dict(database.execute("SELECT name, value FROM metadata"))
        assert database.execute("PRAGMA application_id").fetchone()[0] == 0x4D504258
        assert database.execute("PRAGMA journal_mode").fetchone()[0] == "delete"
        assert database.execute("PRAGMA integrity_check").fetchone()[0] == "ok"
    assert metadata["format"] == "png" and metadata["attribution"] == "© nobody"
    assert (metadata["minzoom"], metadata["maxzoom"]) == ("2", "7")
    west, south, east, north = map(float, metadata["bounds"].split(","))
    assert (west, east) == (-180, 180) and -20 < south < -19 and 45 < north < 46
    longitude, latitude, _ = map(float, metadata["center"].split(","))
    assert catalogue.covering(latitude, longitude) and abs(longitude) <= 180
    assert [path.name for path in tmp_path.glob("out*")] == ["out.mbtiles"]
    reader = MbtilesReader(out)
    south_row = 2**7 - 1 - 70  # rows count from the south in the file
    assert tiles_in(out)[(7, 127, south_row)] == reader.tile(7, 127, 70)
    assert reader.tile(7, 64, 70) is None


def test_a_worker_that_stays_sees_new_charts(samples, two_charts, tmp_path):
    """As the threads of a Dask worker do, this one keeps its charts from run to run."""
    here = lambda settings, blocks: (draw_block(settings, block) for block in blocks)
    settings = settings_of(two_charts)
    write_tiles(settings, tmp_path / "out.mbtiles", (3, 6), here)
    for file in samples.glob("english_channel.*"):
        shutil.copy2(file, two_charts)
    write_tiles(settings, tmp_path / "out.mbtiles", (3, 6), here)
    write_tiles(settings, tmp_path / "fresh.mbtiles", (3, 6), on_this_machine(1))
    assert tiles_in(tmp_path / "out.mbtiles") == tiles_in(tmp_path / "fresh.mbtiles")
    with pytest.raises(TilesError, match="other charts"):
        draw_block(replace(settings, state=b"of another machine"), Block(3, 0, 0, 8))


def test_a_chart_that_a_worker_cannot_read_for_a_while_is_drawn_again(two_charts, tmp_path):
    chart = str(two_charts / "fiji.chart")

    def failing(settings, blocks):
        for drawn in on_this_machine(1)(settings, blocks):
            yield Drawn(drawn.block, [], [(chart, "The folder is gone.")])

    settings = settings_of(two_charts)
    first = write_tiles(settings, tmp_path / "out.mbtiles", (6, 6), failing)
    assert first.problems == {chart: "The folder is gone."}
    second = write_tiles(settings, tmp_path / "out.mbtiles", (6, 6), on_this_machine(1))
    assert 0 < second.drawn < second.tiles and not second.problems


def test_an_interruption_leaves_a_complete_file(tmp_path):
    out = tmp_path / "out.mbtiles"

    with pytest.raises(KeyboardInterrupt), MbtilesWriter(out) as writer:
        writer.write(Block(4, 0, 0, 16), b"1", [Tile(0, 0, b"sea")])
        writer._database.execute("BEGIN IMMEDIATE")
        writer._remove(Block(4, 0, 0, 16))
        raise KeyboardInterrupt
    assert tiles_in(out) == {(4, 0, 15): b"sea"}
    assert [path.name for path in tmp_path.iterdir()] == ["out.mbtiles"]


def test_equal_tiles_are_stored_once_and_unused_ones_removed(tmp_path):
    """A reader does not disturb the writer."""
    with MbtilesWriter(tmp_path / "out.mbtiles") as writer:
        block = Block(4, 0, 0, 16)
        writer.write(block, b"1", [Tile(0, 0, b"sea"), Tile(1, 0, b"sea"), Tile(2, 0, b"land")])
        reader = MbtilesReader(tmp_path / "out.mbtiles")
        writer.write(block, b"2", [Tile(5, 0, b"sea"), Tile(6, 0, b"sea")])
        writer.remove_unused_images()
        assert writer.done() == {block: b"2"}
    with sqlite3.connect(tmp_path / "out.mbtiles") as database:
        assert database.execute("SELECT data FROM images").fetchall() == [(b"sea",)]
    assert tiles_in(tmp_path / "out.mbtiles") == {(4, 5, 15): b"sea", (4, 6, 15): b"sea"}
    assert (reader.tile(4, 0, 0), reader.tile(4, 5, 0)) == (None, b"sea")


def test_files_that_are_refused(tmp_path):
    """Also the file of another writer, until it is closed."""
    text = tmp_path / "text.mbtiles"
    text.write_text("no database" * 100)
    other = tmp_path / "other.mbtiles"
    with sqlite3.connect(other) as database:
        database.execute("CREATE TABLE tiles (zoom_level)")
    for path, words in [(text, "not a database"), (other, "another program"), (tmp_path / "no/x", "No such")]:
        with pytest.raises(TilesError, match=words):
            MbtilesWriter(path)
    with pytest.raises(TilesError):
        MbtilesReader(text)
    damaged = tmp_path / "damaged.mbtiles"
    with MbtilesWriter(damaged), pytest.raises(TilesError, match="Another process"):
        MbtilesWriter(damaged)
    damaged.write_bytes(damaged.read_bytes()[:4096] + b"x" * 50000)
    with pytest.raises(TilesError, match="malformed"), MbtilesWriter(damaged) as writer:
        writer.done()
    assert not list(tmp_path.glob("*-lock"))


def test_a_run_that_was_killed_at_its_start_continues(tmp_path, monkeypatch):
    out = tmp_path / "out.mbtiles"
    with monkeypatch.context() as killed, pytest.raises(TilesError):
        killed.setattr(mbtiles, "SCHEMA", mbtiles.SCHEMA.replace("CREATE TABLE IF NOT EXISTS map", "killed here"))
        MbtilesWriter(out)
    with MbtilesWriter(out) as writer:
        assert writer.done() == {}


KILLED = """
import sys, time
from pathlib import Path
from zellap10.drawing import TileSettings, on_this_machine
from zellap10 import mbtiles, tiles
write = mbtiles.MbtilesWriter.write
def reporting(self, block, fingerprint, drawn):
    write(self, block, fingerprint, drawn)
    print(block.zoom, block.x, block.y, len(list(drawn)), flush=True)
mbtiles.MbtilesWriter.write = reporting
tiles.write_tiles(TileSettings(charts=(sys.argv[1],)), Path(sys.argv[2]), (3, 11), on_this_machine(2))
"""


@pytest.mark.parametrize("blocks", [1, 7])
def test_a_killed_run_keeps_what_it_reported_and_continues(two_charts, tmp_path, blocks):
    out = tmp_path / "out.mbtiles"
    command = [sys.executable, "-c", KILLED, str(two_charts), str(out)]
    with subprocess.Popen(command, stdout=subprocess.PIPE, text=True) as run:
        reported = [run.stdout.readline().split() for _ in range(blocks)]
        run.send_signal(signal.SIGKILL)
        rest = run.stdout.read().splitlines()
    assert run.returncode == -signal.SIGKILL
    reported += [line.split() for line in rest]
    found = Counter(
        (zoom, column // 16, (2**zoom - 1 - row) // 16) for zoom, column, row in tiles_in(out) if zoom >= 4
    )
    for zoom, x, y, tiles in (map(int, line) for line in reported):
        if zoom >= 4:
            assert found[zoom, x, y] == tiles
    settings = settings_of(two_charts)
    continued = write_tiles(settings, out, (3, 11), on_this_machine(2))
    assert 0 < continued.drawn < continued.tiles
    fresh = tmp_path / "fresh.mbtiles"
    write_tiles(settings, fresh, (3, 11), on_this_machine(1))
    assert tiles_in(out) == tiles_in(fresh)

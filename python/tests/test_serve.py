"""The map in a browser."""

import http.client
import json
import os
import signal
import sqlite3
import subprocess
import sys
import threading
import time
from contextlib import contextmanager

import numpy as np
import pytest
from conftest import ROOT, need
from test_tiles import settings_of

import zellap10
from zellap10.drawing import on_this_machine
from zellap10.mbtiles import TilesError
from zellap10.serve import LEAFLET, MapServer, source_of
from zellap10.tiles import write_tiles

COMPLETE = "ZELLAP10_PYTHON_COMPLETE" in os.environ
pytestmark = pytest.mark.skipif(not LEAFLET.is_dir() and not COMPLETE, reason="libjs-leaflet is missing")


@contextmanager
def served(*paths):
    """A server on a port of its own."""
    with MapServer(source_of([str(path) for path in paths], 2, 64 << 20), "127.0.0.1", 0) as server:
        thread = threading.Thread(target=server.serve_forever)
        thread.start()
        try:
            yield server
        finally:
            server.shutdown()
            thread.join()


@pytest.fixture(scope="module")
def server(samples):
    with served(samples) as running:
        yield running


def get(server, path, method="GET"):
    connection = http.client.HTTPConnection(*server.server_address, timeout=10)
    connection.request(method, path)
    answer = connection.getresponse()
    return answer.status, answer.getheader("Content-Type"), answer.read()


def test_the_page_and_tiles(server, catalogue):
    status, kind, page = get(server, "/")
    assert (status, kind) == (200, "text/html; charset=utf-8") and b"leaflet.min.js" in page
    assert json.loads(get(server, "/config.json")[2])["schemes"] == ["day", "dusk", "night"]
    assert get(server, "/leaflet.css")[1] == "text/css"
    assert get(server, "/map.js", "HEAD")[::2] == (200, b"")
    tiler = zellap10._native.Tiler(catalogue)
    for scheme in ("day", "night"):
        assert get(server, f"/tiles/{scheme}/8/127/86?again") == (200, "image/png", tiler.tile(8, 127, 86, scheme))
    empty = get(server, "/tiles/day/8/0/0")
    assert empty[:2] == (200, "image/png") and len(empty[2]) < 100


def take_interruptions():
    """For a child: a shell's jobs in the background ignore them."""
    signal.signal(signal.SIGINT, signal.SIG_DFL)


def test_an_interruption_ends_the_server_while_it_draws(samples):
    command = [sys.executable, "-m", "zellap10", "serve", str(samples), "--port", "0", "--jobs", "4"]
    for _ in range(3):
        with subprocess.Popen(
            command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, preexec_fn=take_interruptions
        ) as run:
            try:
                port = int(run.stdout.readline().split(":")[2].split("/")[0])
                connections = [http.client.HTTPConnection("127.0.0.1", port) for _ in range(8)]
                for i, connection in enumerate(connections):
                    tile = f"{5 + i}/{2 ** (4 + i) - 1}/{round(0.3385 * 2 ** (5 + i))}"
                    connection.request("GET", f"/tiles/day/{tile}")
                time.sleep(0.02)
                run.send_signal(signal.SIGINT)
                assert (run.wait(60), run.stderr.read()) == (0, "")
            finally:
                run.kill()


NO_PATHS = ("/../cli.py", "/%2e%2e/cli.py", "//etc/passwd", "/page/map.js", "/images/")
NO_TILES = ("/tiles/day/8/256/0", "/tiles/day/25/0/0")
BAD_TILES = ("noon/8/1/1", "day/8/1/../1", "day/8/-1/1", "day/8/1/1.png%00", "day/8/123456789012345678901/1")


@pytest.mark.parametrize("path", NO_PATHS + NO_TILES)
def test_unknown_paths(server, path):
    assert get(server, path)[0] == 404


@pytest.mark.parametrize("path", ["/" + "x" * 70000, *("/tiles/" + tile for tile in BAD_TILES)])
def test_bad_requests(server, path):
    assert get(server, path)[0] == 400
    assert get(server, "/", "POST")[0] == 400


def test_a_database_is_served_too(samples, tmp_path):
    out = tmp_path / "fiji.mbtiles"
    write_tiles(settings_of(samples / "fiji.chart", format="webp"), out, (5, 7), on_this_machine(1))
    with served(out) as server:
        config = json.loads(get(server, "/config.json")[2])
        assert (config["name"], config["zooms"]) == ("fiji", [5, 7])
        assert get(server, "/tiles/day/7/127/70")[:2] == (200, "image/webp")
        assert get(server, "/tiles/day/9/127/70")[1] == "image/png"  # the empty one


def foreign_database(path, **metadata):
    """A database of another program, with a photo and something that is no tile."""
    with sqlite3.connect(path) as database:
        database.execute("CREATE TABLE metadata (name, value)")
        database.execute("CREATE TABLE tiles (zoom_level, tile_column, tile_row, tile_data)")
        database.executemany("INSERT INTO metadata VALUES (?, ?)", metadata.items())
        for row, data in enumerate((b"\xff\xd8\xff\xe0", "text", None)):
            database.execute("INSERT INTO tiles VALUES (2, 0, ?, ?)", (row, data))


def test_a_database_of_another_program_is_served(tmp_path):
    path = tmp_path / "other.mbtiles"
    foreign_database(path, name=None, minzoom=1, bounds="-10,40,0,50")
    with served(path) as server:
        config = json.loads(get(server, "/config.json")[2])
        assert config["centre"] == [45, -5] and config["zooms"] == [1, 18]
        kinds = [get(server, f"/tiles/day/2/0/{3 - row}")[:2] for row in range(3)]
        assert kinds == [(200, "image/jpeg"), (200, "image/png"), (200, "image/png")]
        path.write_bytes(b"damaged" * 10000)
        assert get(server, "/tiles/day/2/0/3")[0] == 404
    for i, bounds in enumerate(("here", "1,2,3", "nan,0,0,0")):
        foreign_database(tmp_path / f"{i}.mbtiles", bounds=bounds)
        with pytest.raises(TilesError, match="metadata"):
            source_of([str(tmp_path / f"{i}.mbtiles")], 1, 1)


@pytest.fixture(scope="module")
def browser(tmp_path_factory):
    need("chromium", "chromedriver", "selenium")
    from selenium import webdriver
    from selenium.webdriver.chrome.service import Service

    options = webdriver.ChromeOptions()
    options.binary_location = "/usr/bin/chromium"
    for switch in (
        "headless no-sandbox disable-gpu disable-quic no-first-run disable-background-networking "
        "disable-component-update disable-sync hide-scrollbars window-size=900,640 "
        f"user-data-dir={tmp_path_factory.mktemp('chromium')}"
    ).split():
        options.add_argument(f"--{switch}")
    with webdriver.Chrome(service=Service("/usr/bin/chromedriver"), options=options) as driver:
        yield driver


class Page:
    """The page at an address, once its tiles are there."""

    def __init__(self, browser, server, view):
        self.browser = browser
        browser.get("about:blank")
        browser.get(f"{server.address}{view}")
        self.wait()

    def js(self, code, *arguments):
        return self.browser.execute_script(code, *arguments)

    def wait(self):
        """Until no tile is missing and no animation runs."""
        done = """if (!window.chartMap) return false;
            const {map, tiles} = chartMap, shown = document.querySelectorAll(".leaflet-tile");
            return shown.length > 0 && !tiles.isLoading() && !map._animatingZoom && !map._panAnim?._inProgress
                && [...shown].every((tile) => tile.complete && tile.naturalWidth > 0
                                              && getComputedStyle(tile).opacity === "1");"""
        end = time.monotonic() + 20
        while not self.js(done):
            assert time.monotonic() < end, "the tiles do not appear"
            time.sleep(0.05)

    def picture(self):
        from io import BytesIO

        from PIL import Image

        return np.asarray(Image.open(BytesIO(self.browser.get_screenshot_as_png())).convert("RGB")).astype(int)


def test_coasts_lie_where_markers_are(browser, server):
    """Vertices of the coast data, as markers of Leaflet, lie on the dark line of the picture."""
    need("PIL")
    text = (ROOT / "samples/coast/english_channel.txt").read_text()
    vertices = np.array([row.split() for row in text.splitlines() if row[:1] not in ("", "#")], float)[:, ::-1]
    for name, place in (("Cherbourg", (49.66, -1.62)), ("Dover", (51.13, 1.32))):
        page = Page(browser, server, f"#11/{place[0]}/{place[1]}/day")
        near = vertices[np.abs(vertices - place).max(axis=1) < 0.05]
        assert len(near) > 5, name
        tips = page.js(
            """return arguments[0].map((place) => {
                const marker = L.marker(place).addTo(chartMap.map);
                const box = marker._icon.getBoundingClientRect();
                marker.remove();
                return [box.left + 12, box.top + 41];
            });""",
            near.tolist(),
        )
        brightness = page.picture().max(axis=2)
        dark = [brightness[int(y) - 2 : int(y) + 3, int(x) - 2 : int(x) + 3].min() < 130 for x, y in tips]
        beside = [brightness[int(y) + 18 : int(y) + 23, int(x) + 18 : int(x) + 23].min() < 130 for x, y in tips]
        assert np.mean(dark) > 0.85 > 0.6 > np.mean(beside), name


def test_drag_zoom_and_the_link(browser, server):
    from selenium.webdriver.common.action_chains import ActionChains

    page = Page(browser, server, "#8/50.4/-1.2/day")
    before = page.js("return chartMap.map.getCenter()")
    element = browser.find_element("id", "map")
    drag = ActionChains(browser).move_to_element(element).click_and_hold()
    for _ in range(3):
        drag.move_by_offset(-50, 20).pause(0.1)  # Leaflet moves the map in the next frame
    drag.release().perform()
    page.wait()
    after = page.js("return chartMap.map.getCenter()")
    assert after["lng"] > before["lng"] + 0.3 and after["lat"] > before["lat"] + 0.05
    assert page.js("return location.hash").startswith("#8/")
    browser.find_element("class name", "leaflet-control-zoom-in").click()
    page.wait()
    browser.find_element("class name", "night").click()
    page.wait()
    link = page.js("return location.hash")
    assert link.startswith("#9/") and link.endswith("/night")
    night = page.picture()
    assert night.mean() < 100 and night.max() < 220  # nothing dazzles
    restored = Page(browser, server, link)
    assert np.abs(restored.picture() - night).mean() < 1
    browser.find_element("class name", "day").click()
    page.wait()
    assert page.picture().mean() > 180


def test_the_map_opens_on_a_chart(browser, samples, two_charts, tmp_path):
    """Charts that are far apart, and a database that begins at a zoom at which no screen holds all charts."""
    out = tmp_path / "out.mbtiles"
    write_tiles(settings_of(two_charts), out, (6, 7), on_this_machine(1))
    for path, smallest_zoom in ((samples / "fiji.chart", 6), (two_charts, 1), (out, 6)):
        with served(path) as server:
            page = Page(browser, server, "")
            assert page.js("return chartMap.map.getZoom()") >= smallest_zoom
            sizes = page.js("return [...document.querySelectorAll('.leaflet-tile')].map((e) => e.naturalWidth)")
            assert 256 in sizes


def test_the_pointer_and_the_scale(browser, server):
    from selenium.webdriver.common.action_chains import ActionChains

    page = Page(browser, server, "#9/-18/180/day")
    ActionChains(browser).move_to_element(browser.find_element("id", "map")).perform()
    text = browser.find_element("class name", "pointer").text
    assert text.startswith(("18°00", "17°59")) and text[-1] in "EW" and ("180°00" in text or "179°59" in text)
    bar = browser.find_element("class name", "scale-bar")
    miles = float(bar.text.removesuffix(" NM"))
    metres_per_pixel = 156543.034 * np.cos(np.radians(18)) / 2**9
    assert bar.size["width"] * metres_per_pixel / 1852 == pytest.approx(miles, rel=0.05)
    assert page.js("return performance.getEntriesByType('resource').every((e) => e.name.startsWith(location.origin))")

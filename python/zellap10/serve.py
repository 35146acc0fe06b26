"""A map in the browser."""

import json
import re
import sys
from contextlib import suppress
from functools import partial
from http.server import BaseHTTPRequestHandler, ThreadingHTTPServer
from importlib import resources
from pathlib import Path

from ._native import ChartError
from .charts import catalogue_of
from .mbtiles import TilesError
from .tile_sources import SCHEMES, ChartSource, MbtilesSource, TileSource

LEAFLET = Path("/usr/share/javascript/leaflet")  # of Debian's libjs-leaflet

# A transparent PNG of 1 x 1 pixels, for tiles without a chart.
EMPTY = bytes.fromhex(
    "89504e470d0a1a0a0000000d49484452000000010000000108060000001f15c4890000000b4944415478da6360"
    "00020000050001e9fadcd80000000049454e44ae426082"
)

TYPES = {".html": "text/html; charset=utf-8", ".js": "text/javascript", ".css": "text/css", ".png": "image/png"}
HEADERS = {
    "Content-Security-Policy": "default-src 'self'; img-src 'self' data:; style-src 'self' 'unsafe-inline'",
    "X-Content-Type-Options": "nosniff",
    "Cache-Control": "max-age=60",
}
TILE = re.compile(r"/tiles/(\w{1,8})/(\d{1,2})/(\d{1,8})/(\d{1,8})")


def page_files() -> dict[str, bytes]:
    """The files of the page by the path of their address. Nothing else on the disk is ever read for a request.

    Raises:
        ChartError: libjs-leaflet is missing.
    """
    page = resources.files(__package__) / "page"
    files = {f"/{file.name}": file.read_bytes() for file in page.iterdir() if file.is_file()}
    files["/"] = files.pop("/map.html")
    try:
        for name in ("leaflet.min.js", "leaflet.css"):
            files[f"/{name}"] = (LEAFLET / name).read_bytes()
        for image in (LEAFLET / "images").glob("*.png"):
            files[f"/images/{image.name}"] = image.read_bytes()
    except OSError as error:
        raise ChartError("Install libjs-leaflet to show a map.") from error
    return files


def _image_type(data: bytes) -> str:
    if data[8:12] == b"WEBP":
        return "image/webp"
    return "image/jpeg" if data[:2] == b"\xff\xd8" else "image/png"


class MapHandler(BaseHTTPRequestHandler):
    """Answers requests for tiles and for the files of the page."""

    protocol_version = "HTTP/1.1"  # connections stay open
    timeout = 30  # seconds
    # One packet for header and body: two would wait 40 ms for the browser's acknowledgement.
    wbufsize = -1
    disable_nagle_algorithm = True

    def __init__(self, source: TileSource, files: dict[str, bytes], *arguments: object) -> None:
        self._source = source
        self._files = files
        super().__init__(*arguments)  # type: ignore[arg-type]

    def do_GET(self) -> None:
        """Answers with a file, a tile, the configuration, or 400 or 404."""
        path = self.path.partition("?")[0]
        if path in self._files:
            self._answer(self._files[path], TYPES[Path(path).suffix or ".html"])
        elif path == "/config.json":
            self._answer(json.dumps(self._source.config).encode(), "application/json")
        elif path.startswith("/tiles/"):
            self._answer_with_tile(path)
        else:
            self.send_error(404)

    do_HEAD = do_GET

    def _answer_with_tile(self, path: str) -> None:
        match = TILE.fullmatch(path)
        if match is None or match[1] not in SCHEMES:
            self.send_error(400)
            return
        zoom, x, y = int(match[2]), int(match[3]), int(match[4])
        if zoom > 24 or x >= 1 << zoom or y >= 1 << zoom:
            self.send_error(404)
            return
        try:
            data = self._source.tile(match[1], zoom, x, y) or EMPTY
        except TilesError:
            self.send_error(404)
            return
        self._answer(data, _image_type(data))

    def _answer(self, data: bytes, content_type: str) -> None:
        self.send_response(200)
        self.send_header("Content-Type", content_type)
        self.send_header("Content-Length", str(len(data)))
        for name, value in HEADERS.items():
            self.send_header(name, value)
        self.end_headers()
        if self.command != "HEAD":
            self.wfile.write(data)

    def send_error(self, code: int, message: str | None = None, explain: str | None = None) -> None:
        """Answers 404, or 400 for all that this server does not do, and ends the connection."""
        super().send_error(404 if code == 404 else 400, message, explain)

    def log_message(self, format: str, *arguments: object) -> None:
        """Requests are not logged."""


class MapServer(ThreadingHTTPServer):
    """Serves the map of a source. Port 0 takes any that is free."""

    daemon_threads = True
    request_queue_size = 64

    def __init__(self, source: TileSource, host: str, port: int) -> None:
        self._source = source
        super().__init__((host, port), partial(MapHandler, source, page_files()))

    def server_close(self) -> None:
        """Ends the server and its source."""
        super().server_close()
        self._source.close()

    def handle_error(self, request: object, client_address: object) -> None:
        """A connection that ends early is no error: by the browser, or by Ctrl-C just after it began."""
        if not isinstance(sys.exc_info()[1], OSError):
            super().handle_error(request, client_address)  # type: ignore[arg-type]

    @property
    def address(self) -> str:
        """The address of the page."""
        host, port = self.server_address[:2]
        return f"http://{host!s}:{port}/"


def source_of(paths: list[str], jobs: int, memory: int) -> TileSource:
    """The tiles of one MBTiles file, or of charts.

    Raises:
        ChartError, TilesError: something cannot be opened.
    """
    if len(paths) == 1 and paths[0].endswith(".mbtiles"):
        return MbtilesSource(Path(paths[0]))
    return ChartSource(catalogue_of(paths), jobs, memory)


def serve(paths: list[str], host: str, port: int, jobs: int, memory: int) -> None:
    """Serves until it is interrupted."""
    with MapServer(source_of(paths, jobs, memory), host, port) as server, suppress(KeyboardInterrupt):
        print(f"The map is at {server.address}; Ctrl-C ends the server.", flush=True)
        server.serve_forever()

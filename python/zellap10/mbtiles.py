"""MBTiles 1.3 files: map tiles in an SQLite database.

Equal tiles are stored once. Tiles are written in blocks, each in one transaction and with a fingerprint of what it was
drawn from, so that an interrupted run continues and a later run renews only what changed.
"""

import fcntl
import hashlib
import os
import sqlite3
from collections.abc import Iterable, Iterator, Mapping
from contextlib import ExitStack, contextmanager, suppress
from pathlib import Path
from types import TracebackType
from typing import IO, NamedTuple

APPLICATION_ID = 0x4D504258  # "MPBX"

SCHEMA = f"""
BEGIN IMMEDIATE;
PRAGMA application_id = {APPLICATION_ID};
CREATE TABLE IF NOT EXISTS metadata (name TEXT PRIMARY KEY, value TEXT);
CREATE TABLE IF NOT EXISTS images (id INTEGER PRIMARY KEY, digest BLOB UNIQUE, data BLOB);
CREATE TABLE IF NOT EXISTS map (
    zoom INTEGER, x INTEGER, y INTEGER, image INTEGER, PRIMARY KEY (zoom, x, y)
) WITHOUT ROWID;
CREATE TABLE IF NOT EXISTS blocks (
    zoom INTEGER, x INTEGER, y INTEGER, size INTEGER, fingerprint BLOB, PRIMARY KEY (zoom, x, y)
) WITHOUT ROWID;
CREATE TABLE IF NOT EXISTS chart_files (
    path TEXT PRIMARY KEY, size INTEGER, time INTEGER, digest BLOB
) WITHOUT ROWID;
CREATE VIEW IF NOT EXISTS tiles AS
    SELECT zoom AS zoom_level, x AS tile_column, (1 << zoom) - 1 - y AS tile_row, data AS tile_data
    FROM map JOIN images ON map.image = images.id;
COMMIT;
"""


class TilesError(Exception):
    """A tile database that cannot be read or written, with the reason in words."""


@contextmanager
def _in_words(path: Path) -> Iterator[None]:
    """Makes an error of SQLite a TilesError."""
    try:
        yield
    except sqlite3.Error as error:
        raise TilesError(f"{path}: {error}.") from error


class Tile(NamedTuple):
    """An encoded tile; x counts from the west, y from the north."""

    x: int
    y: int
    data: bytes


class Block(NamedTuple):
    """A square of tiles at one zoom that are drawn and stored together.

    It holds the tiles from x * size to (x + 1) * size - 1, and likewise for y.
    """

    zoom: int
    x: int
    y: int
    size: int


class MbtilesWriter:
    """Writes a tile database. There is one writer at a time. In a `with` block, errors of SQLite are TilesErrors.

    Args:
        path: the file; it is created if it does not exist.

    Raises:
        TilesError: the file is no database of this kind, or another process writes it.
    """

    def __init__(self, path: Path) -> None:
        self.path = path
        self._lock_path = path.with_name(path.name + "-lock")
        with ExitStack() as undo, _in_words(path):
            self._lock = self._locked()
            undo.callback(self._unlock)
            self._database = sqlite3.connect(path, isolation_level=None)
            undo.callback(self._database.close)
            self._open()
            undo.pop_all()

    def _open(self) -> None:
        tables = {name for (name,) in self._database.execute("SELECT name FROM sqlite_master")}
        if tables and "blocks" not in tables:
            raise TilesError(f"{self.path}: This database was written by another program.")
        # A commit to the write-ahead log survives the end of the process at any moment.
        self._database.execute("PRAGMA journal_mode = WAL")
        self._database.execute("PRAGMA synchronous = NORMAL")
        self._database.executescript(SCHEMA)

    def __enter__(self) -> "MbtilesWriter":
        return self

    def __exit__(
        self, kind: type[BaseException] | None, error: BaseException | None, trace: TracebackType | None
    ) -> None:
        self.close()
        with _in_words(self.path):
            if isinstance(error, sqlite3.Error):
                raise error

    def close(self) -> None:
        """Closes the file. It is then a single one, unless another process still reads it."""
        with suppress(sqlite3.Error):
            self._database.rollback()  # of what an interruption has left
            self._database.execute("PRAGMA busy_timeout = 200")
            self._database.execute("PRAGMA journal_mode = DELETE")
        self._database.close()
        self._unlock()

    def done(self) -> dict[Block, bytes]:
        """The blocks in the file and their fingerprints."""
        rows = self._database.execute("SELECT zoom, x, y, size, fingerprint FROM blocks")
        return {Block(zoom, x, y, size): fingerprint for zoom, x, y, size, fingerprint in rows}

    def write(self, block: Block, fingerprint: bytes, tiles: Iterable[Tile]) -> None:
        """Replaces the tiles of a block. They are in the file when this returns."""
        with self._transaction():
            self._remove(block)
            for tile in tiles:
                row = (block.zoom, tile.x, tile.y, self._image(tile.data))
                self._database.execute("INSERT INTO map VALUES (?, ?, ?, ?)", row)
            self._database.execute("INSERT INTO blocks VALUES (?, ?, ?, ?, ?)", (*block, fingerprint))

    def remove(self, blocks: Iterable[Block]) -> None:
        """Removes the tiles of blocks."""
        with self._transaction():
            for block in blocks:
                self._remove(block)

    def set_metadata(self, metadata: Mapping[str, str]) -> None:
        """Replaces all metadata."""
        with self._transaction():
            self._database.execute("DELETE FROM metadata")
            self._database.executemany("INSERT INTO metadata VALUES (?, ?)", metadata.items())

    def remove_unused_images(self) -> None:
        """Removes images that no tile has any more."""
        with self._transaction():
            self._database.execute("DELETE FROM images WHERE id NOT IN (SELECT image FROM map)")

    def digest_of(self, path: Path) -> bytes:
        """A digest of a file's content, computed again only if its size or time has changed."""
        status = path.stat()
        state = (status.st_size, status.st_mtime_ns)
        row = self._database.execute(
            "SELECT size, time, digest FROM chart_files WHERE path = ?", (os.fsencode(path),)
        ).fetchone()
        if row is not None and row[:2] == state:
            return bytes(row[2])
        with path.open("rb") as file:
            digest = hashlib.file_digest(file, "sha256").digest()
        with self._transaction():
            row = (os.fsencode(path), *state, digest)
            self._database.execute("REPLACE INTO chart_files VALUES (?, ?, ?, ?)", row)
        return digest

    @contextmanager
    def _transaction(self) -> Iterator[None]:
        """Commits at its end. After an error or an interruption nothing of it has happened."""
        try:
            self._database.execute("BEGIN IMMEDIATE")
            yield
            self._database.execute("COMMIT")
        except BaseException:
            if self._database.in_transaction:
                self._database.execute("ROLLBACK")
            raise

    def _remove(self, block: Block) -> None:
        self._database.execute("DELETE FROM blocks WHERE (zoom, x, y) = (?, ?, ?)", block[:3])
        left, top = block.x * block.size, block.y * block.size
        bounds = (block.zoom, left, left + block.size, top, top + block.size)
        self._database.execute("DELETE FROM map WHERE zoom = ? AND x >= ? AND x < ? AND y >= ? AND y < ?", bounds)

    def _image(self, data: bytes) -> int:
        """The number of an image, which is added if it is new."""
        digest = hashlib.blake2b(data, digest_size=16).digest()
        row = self._database.execute("SELECT id FROM images WHERE digest = ?", (digest,)).fetchone()
        if row is None:
            row = self._database.execute(
                "INSERT INTO images (digest, data) VALUES (?, ?) RETURNING id", (digest, data)
            ).fetchone()
        return int(row[0])

    def _locked(self) -> IO[bytes]:
        try:
            lock = self._lock_path.open("wb")
            fcntl.flock(lock, fcntl.LOCK_EX | fcntl.LOCK_NB)
        except BlockingIOError as error:
            lock.close()
            raise TilesError(f"{self.path}: Another process writes this file.") from error
        except OSError as error:
            raise TilesError(f"{self._lock_path}: {error.strerror}.") from error
        if self._lock_path.exists() and self._lock_path.samefile(f"/dev/fd/{lock.fileno()}"):
            return lock
        lock.close()  # its owner removed it meanwhile
        return self._locked()

    def _unlock(self) -> None:
        self._lock_path.unlink(missing_ok=True)
        self._lock.close()


class MbtilesReader:
    """Reads a tile database of any program, one thread at a time.

    Raises:
        TilesError: the file is no tile database.
    """

    def __init__(self, path: Path) -> None:
        self._path = path
        with _in_words(path):
            self._database = sqlite3.connect(f"{path.absolute().as_uri()}?mode=ro", uri=True, check_same_thread=False)
            rows = self._database.execute("SELECT name, value FROM metadata")
            self.metadata = {str(name): str(value) for name, value in rows}
            self._database.execute("SELECT 1 FROM tiles LIMIT 1")

    def tile(self, zoom: int, x: int, y: int) -> bytes | None:
        """An encoded tile, counted from the north; None if there is none.

        Raises:
            TilesError: the file is damaged.
        """
        with _in_words(self._path):
            row = self._database.execute(
                "SELECT tile_data FROM tiles WHERE zoom_level = ? AND tile_column = ? AND tile_row = ?",
                (zoom, x, (1 << zoom) - 1 - y),
            ).fetchone()
        return row[0] if row is not None and isinstance(row[0], bytes) else None

    def close(self) -> None:
        """Closes the file."""
        self._database.close()

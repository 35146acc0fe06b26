"""Drawing blocks of tiles, on the cores of this machine or on a cluster."""

import itertools
import threading
from collections.abc import Callable, Iterable, Iterator
from concurrent.futures import FIRST_COMPLETED, Future, ThreadPoolExecutor, wait
from dataclasses import dataclass
from functools import lru_cache

from ._native import Catalogue, ChartError, Tiler, __version__
from .charts import catalogue_of, state_of
from .mbtiles import Block, Tile, TilesError


@dataclass(frozen=True)
class TileSettings:
    """What tiles are drawn from and how. Workers on other machines receive it."""

    charts: tuple[str, ...]  # files and folders, absolute
    tile_size: int = 256  # pixels, 256 or 512
    format: str = "png"  # or webp
    scheme: str = "day"  # or dusk or night
    memory: int = 256 << 20  # bytes of decoded chart data per thread
    version: str = __version__
    state: bytes = b""  # state_of the charts as the command sees them
    content: bytes = b""  # a digest of their files, so that a worker opens them again after a change


@dataclass(frozen=True)
class Drawn:
    """The tiles of a block that are not empty, and why charts are missing on them."""

    block: Block
    tiles: list[Tile]
    problems: list[tuple[str, str]]


# Draws blocks in any order, a few ahead of the caller.
Draw = Callable[[TileSettings, Iterable[Block]], Iterator[Drawn]]

WORKER_TIMEOUT = 30  # seconds to wait for the first worker

_of_thread = threading.local()
_one_at_a_time = threading.Lock()


@lru_cache(maxsize=1)
def _catalogue(charts: tuple[str, ...], state: bytes, content: bytes) -> Catalogue:
    """The charts, opened again if their files have changed."""
    catalogue = catalogue_of(charts)
    if state_of(catalogue) != state:
        raise TilesError("A worker sees other charts in the folder than this machine.")
    return catalogue


def _tiler(settings: TileSettings) -> Tiler:
    """The tiler of this thread, with its decoded charts."""
    if getattr(_of_thread, "settings", None) != settings:
        with _one_at_a_time:
            catalogue = _catalogue(settings.charts, settings.state, settings.content)
        _of_thread.tiler = Tiler(catalogue, settings.tile_size, settings.format, settings.memory)
        _of_thread.settings = settings
    tiler: Tiler = _of_thread.tiler
    return tiler


def draw_block(settings: TileSettings, block: Block) -> Drawn:
    """Draws and encodes the tiles of a block.

    Raises:
        TilesError: this machine has another version of the package, or sees other charts.
    """
    if settings.version != __version__:
        raise TilesError(f"A worker has version {__version__} and not {settings.version}.")
    tiler = _tiler(settings)
    tiles = [Tile(*tile) for tile in tiler.block(*block, settings.scheme)]
    return Drawn(block, tiles, tiler.problems())


def on_this_machine(jobs: int) -> Draw:
    """Draws on so many threads. The C++ code runs without the interpreter's lock."""

    def draw(settings: TileSettings, blocks: Iterable[Block]) -> Iterator[Drawn]:
        _catalogue.cache_clear()
        waiting = iter(blocks)
        with ThreadPoolExecutor(jobs) as pool:
            try:
                running: set[Future[Drawn]] = {
                    pool.submit(draw_block, settings, block) for block in itertools.islice(waiting, 2 * jobs)
                }
                while running:
                    done, running = wait(running, return_when=FIRST_COMPLETED)
                    running |= {pool.submit(draw_block, settings, block) for block in itertools.islice(waiting, len(done))}
                    yield from (future.result() for future in done)
            finally:
                pool.shutdown(cancel_futures=True)

    return draw


def on_cluster(address: str) -> Draw:
    """Draws on the workers of a Dask scheduler. Blocks of a worker that dies are drawn by another.

    Raises:
        TilesError: python3-distributed is missing, the scheduler does not answer, has no worker, or fails.
    """
    try:
        from distributed import Client, as_completed
    except ImportError as error:
        raise TilesError("Install python3-distributed to draw on a cluster.") from error

    def draw(settings: TileSettings, blocks: Iterable[Block]) -> Iterator[Drawn]:
        waiting = iter(blocks)
        try:
            client = Client(address, timeout=10)
        except (OSError, ValueError) as error:
            raise TilesError(f"The scheduler at {address} does not answer.") from error
        with client:
            try:
                client.wait_for_workers(1, timeout=WORKER_TIMEOUT)
            except TimeoutError as error:
                raise TilesError(f"No worker is connected to {address}.") from error
            threads = sum(client.nthreads().values())

            def submitted(count: int) -> list[Future[Drawn]]:
                # pure=False: another run must not find results of this one.
                return [
                    client.submit(draw_block, settings, block, pure=False)
                    for block in itertools.islice(waiting, count)
                ]

            results = as_completed(submitted(max(8, 3 * threads)))
            for future in results:
                try:
                    drawn = future.result()
                except (ChartError, TilesError):
                    raise
                except Exception as error:  # whatever a worker raises or its end causes
                    raise TilesError(f"The cluster failed: {type(error).__name__}: {error}") from error
                future.release()
                results.update(submitted(1))
                yield drawn

    return draw

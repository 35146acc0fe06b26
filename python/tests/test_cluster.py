"""A Dask scheduler and three workers, one of which is killed."""

import os
import signal
import subprocess
import sys

import pytest
from conftest import need
from test_tiles import settings_of, tiles_in

from zellap10 import drawing
from zellap10.drawing import on_cluster, on_this_machine
from zellap10.mbtiles import TilesError
from zellap10.tiles import write_tiles


@pytest.fixture
def cluster(tmp_path):
    """The address of a scheduler, and its workers."""
    need("distributed")
    address_file = tmp_path / "scheduler.json"
    environment = os.environ | {"DASK_DISTRIBUTED__WORKER__DAEMON": "False"}

    def start(program, *options):
        command = [sys.executable, "-m", f"distributed.cli.dask_{program}", *options, "--no-dashboard"]
        log = (tmp_path / "log").open("a")
        return subprocess.Popen(command, cwd=tmp_path, env=environment, stdout=log, stderr=log)

    scheduler = start("scheduler", "--host", "127.0.0.1", "--port", "0", "--scheduler-file", str(address_file))
    workers = [
        start("worker", "--scheduler-file", str(address_file), "--nthreads", "1", "--no-nanny", "--host", "127.0.0.1")
        for _ in range(3)
    ]
    from distributed import Client

    with Client(scheduler_file=str(address_file), timeout=30) as client:
        client.wait_for_workers(3, timeout=60)
        address = client.scheduler.address
    yield address, workers
    for process in [*workers, scheduler]:
        process.kill()
        process.wait()


def test_a_worker_that_dies_changes_nothing(cluster, samples, tmp_path):
    address, workers = cluster
    zooms = (5, 10)
    drawn = []

    def killing(settings, blocks):
        """Kills a worker when a third of the blocks is done."""
        for result in on_cluster(address)(settings, blocks):
            drawn.append(result.block)
            if len(drawn) == len(blocks) // 3:
                workers[1].send_signal(signal.SIGKILL)
            yield result

    settings = settings_of(samples)
    write_tiles(settings, tmp_path / "cluster.mbtiles", zooms, killing)
    assert workers[1].wait() == -signal.SIGKILL
    assert [worker.poll() for worker in (workers[0], workers[2])] == [None, None]
    assert len(drawn) == len(set(drawn))
    write_tiles(settings, tmp_path / "here.mbtiles", zooms, on_this_machine(1))
    assert tiles_in(tmp_path / "cluster.mbtiles") == tiles_in(tmp_path / "here.mbtiles")


def test_without_a_worker_the_reason_is_in_words(cluster, samples, tmp_path, monkeypatch):
    address, workers = cluster
    for worker in workers:
        worker.kill()
        worker.wait()
    monkeypatch.setattr(drawing, "WORKER_TIMEOUT", 1)
    with pytest.raises(TilesError, match="No worker"):
        write_tiles(settings_of(samples), tmp_path / "out.mbtiles", (3, 3), on_cluster(address))


def test_without_a_scheduler_the_reason_is_in_words(samples, tmp_path, monkeypatch):
    need("distributed")
    import distributed

    real = distributed.Client
    monkeypatch.setattr(distributed, "Client", lambda address, timeout: real(address, timeout=1))
    with pytest.raises(TilesError, match="does not answer"):
        write_tiles(settings_of(samples), tmp_path / "out.mbtiles", (3, 3), on_cluster("tcp://127.0.0.1:9"))

"""Measures the Python package and prints the tables of docs/python.md.

    cmake --build build/release --target zellap10_python make_samples
    build/release/samples/make_samples build/samples
    PYTHONPATH="$PWD/build/release/python" /usr/bin/python3 bench/python_bench.py build/samples

Rates are tiles per second of the clock and, in parentheses, of processor time, which other programs hardly change. For
Dask the processor time includes that of the scheduler and of the writer. It takes three minutes on a quiet machine.
"""

import argparse
import http.client
import itertools
import subprocess
import sys
import tempfile
import threading
import time
from contextlib import contextmanager
from pathlib import Path

import psutil  # a dependency of python3-distributed

from zellap10 import MapView
from zellap10._native import plan_blocks
from zellap10.charts import catalogue_of

COMMAND = [sys.executable, "-m", "zellap10"]
DASK = [sys.executable, "-W", "ignore", "-m", "distributed.cli.dask_"]


def seconds_of(processes):
    """Processor time that processes have used."""
    return sum(sum(process.cpu_times()[:2]) for process in processes)


def measured(command, helpers=()):
    """The seconds of the clock and of processor time of a command and of processes that work for it."""
    before = seconds_of(helpers)
    start = time.perf_counter()
    with psutil.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True) as run:
        line = run.stdout.readline()  # printed at the end
        clock = time.perf_counter() - start
        processor = seconds_of([run, *helpers]) - before
    if run.returncode != 0:
        raise SystemExit(f"{command} failed: {line}")
    return clock, processor


@contextmanager
def cluster(folder, workers):
    """The address of a scheduler, and the processes of it and of its workers."""
    file = folder / f"scheduler{workers}.json"
    common = ["--scheduler-file", str(file), "--no-dashboard", "--host", "127.0.0.1"]

    def start(program, *options):
        command = [*DASK[:-1], DASK[-1] + program, *common, *options]
        return psutil.Popen(command, cwd=folder, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    processes = [start("scheduler", "--port", "0")]
    processes += [start("worker", "--nthreads", "1", "--no-nanny") for _ in range(workers)]
    try:
        from distributed import Client

        with Client(scheduler_file=str(file), timeout=60) as client:
            client.wait_for_workers(workers, timeout=60)
            address = client.scheduler.address
        yield address, processes
    finally:
        for process in processes:
            process.kill()
            process.wait()


def megabytes(process):
    """The most memory that a process has used."""
    status = Path(f"/proc/{process.pid}/status").read_text()
    return int(status.partition("VmHWM:")[2].split()[0]) // 1024


def tiles(folder, charts, zoom):
    """Prints the table of tiles per second."""
    first, last = map(int, zoom.split("-"))
    count = sum(block[4] for block in plan_blocks(catalogue_of(charts), first, last))
    out = folder / "out.mbtiles"
    command = [*COMMAND, "tiles", *charts, str(out), "--zoom", zoom]
    rows = {"threads of one process": [], "Dask workers on the same machine": []}
    memory = []
    for number in (1, 2, 4):
        out.unlink(missing_ok=True)
        rows["threads of one process"].append(measured([*command, "--jobs", str(number)]))
        out.unlink()
        with cluster(folder, number) as (address, processes):
            row = measured([*command, "--scheduler", address], processes)
            memory += map(megabytes, processes[1:])
        rows["Dask workers on the same machine"].append(row)
    print(f"{count} tiles, {out.stat().st_size / 1e6:.0f} MB\n\n| | 1 | 2 | 4 |\n|---|---|---|---|")
    for name, row in rows.items():
        cells = [f"{count / clock:.0f} ({count / processor:.0f})" for clock, processor in row]
        print(f"| {name} | {' | '.join(cells)} |")
    print(f"\nmemory of a worker: at most {max(memory)} MB")


def server(charts, zoom=11):
    """Prints the time of the first tile and the rate of tiles that nobody has asked for before."""
    catalogue = catalogue_of(charts)
    blocks = plan_blocks(catalogue, zoom, zoom)
    all_in_blocks = ((16 * x + i % 16, 16 * y + i // 16) for _, x, y, *_ in blocks for i in range(256))
    touching = (at for at in all_in_blocks if catalogue.overlapping(*MapView.of_tile(zoom, *at).extent))
    addresses = list(itertools.islice(touching, 2001))
    with psutil.Popen([*COMMAND, "serve", *charts, "--port", "0"], stdout=subprocess.PIPE, text=True) as run:
        place = run.stdout.readline().partition("http://")[2].partition("/")[0]

        def fetch(part):
            connection = http.client.HTTPConnection(place)
            for x, y in part:
                connection.request("GET", f"/tiles/day/{zoom}/{x}/{y}")
                connection.getresponse().read()

        start = time.perf_counter()
        fetch([addresses.pop(len(addresses) // 2)])
        print(f"\nfirst tile: {time.perf_counter() - start:.3f} s")
        threads = [threading.Thread(target=fetch, args=(addresses[i::4],)) for i in range(4)]
        before, start = seconds_of([run]), time.perf_counter()
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        clock, processor = time.perf_counter() - start, seconds_of([run]) - before
        number = len(addresses)
        print(f"then {number / clock:.0f} tiles per second ({number / processor:.0f})")
        run.terminate()


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("charts", nargs="+", type=lambda path: str(Path(path).resolve()))
    parser.add_argument("--zoom", default="6-12")
    options = parser.parse_args()
    with tempfile.TemporaryDirectory() as folder:
        tiles(Path(folder), options.charts, options.zoom)
    server(options.charts)


if __name__ == "__main__":
    main()

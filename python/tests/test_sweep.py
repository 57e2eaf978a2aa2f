"""Sweeps: the same bits whoever computes them, and nothing lost or twice whatever happens to them."""

import asyncio
import concurrent.futures
import contextlib
import errno
import itertools
import json
import os
import pathlib
import shutil
import signal
import subprocess
import sys
import time
import types
import weakref

import numpy as np
import pytest

import corvane as cv

pa = pytest.importorskip("pyarrow")
import pyarrow.csv  # noqa: E402
import pyarrow.parquet  # noqa: E402

from corvane import sweep  # noqa: E402
from corvane.sweep import command, coordinate, interrupts, local, runners  # noqa: E402

T, P = np.linspace(180.0, 400.0, 30), np.array([1e5, 2e6, 5e6, np.nan])


def task():
    return sweep.Call(cv.Mixture("PR+vdW1", ["methane", "propane"], kij=0.02), "flash", keep=["rho", "fraction", "x", "tpd"],
                      z=[0.5, 0.5])  # fmt: skip


def go(folder, scheduler="threads:2", **options):
    return sweep.run(task(), sweep.Grid(T=T, p=P), folder, scheduler=scheduler, rows=10, progress=False, **options)


def contents(folder):
    """Every file of the dataset; the journal tells of runs."""
    files = [*pathlib.Path(folder, "data").rglob("*"), pathlib.Path(folder, "summary.json")]
    return {f.name: f.read_bytes() for f in files if f.is_file()}


@pytest.fixture(scope="module")
def reference(tmp_path_factory):
    folder = tmp_path_factory.mktemp("sweep") / "reference"
    report = go(folder, "threads:1")
    assert (report.computed, report.records, report.failed_rows) == (12, 120, 30) and report.complete
    return contents(folder)


def test_designs_have_the_same_rows_in_every_partition(tmp_path):
    grid = sweep.Grid(a=[1, 2, 3], b=[4, 5])
    assert list(zip(*grid.rows(0, 6).values())) == list(itertools.product([1, 2, 3], [4, 5]))
    covariance = [[4.0, 3.0], [3.0, 9.0]]
    random = sweep.Random({"T": (200, 400), "p": ("log", 1e5, 1e7), "k": ("normal", 1.0, 0.1)}, 5000, 7,
                          normal={"names": ["m", "e"], "mean": [1, 2], "covariance": covariance})  # fmt: skip
    whole = random.rows(0, 5000)
    for a, b in ((0, 1), (1000, 1100), (1023, 3000), (4999, 5000)):
        for name, values in random.rows(a, b).items():
            assert np.array_equal(values, whole[name][a:b]), name
    assert 199 < whole["T"].min() < whole["T"].max() < 400 and np.median(whole["p"]) == pytest.approx(1e6, rel=0.1)
    # standard errors of 5000 covariances are below 2.5 %
    assert np.allclose(np.cov(whole["m"], whole["e"]), covariance, rtol=0.1)
    table = pa.table({"T": T, "name": [f"n{i}" for i in range(len(T))]})
    pa.parquet.write_table(table, tmp_path / "t.parquet", row_group_size=7)
    pa.csv.write_csv(table, tmp_path / "t.csv")
    for file in ("t.parquet", "t.csv"):
        rows = sweep.Rows(tmp_path / file).rows(5, 23)
        assert np.array_equal(rows["T"], T[5:23]) and rows["name"][0] == "n5"


def test_rows_are_those_of_the_call_and_failed_ones_have_a_reason(tmp_path, reference):
    go(tmp_path)
    assert contents(tmp_path) == reference  # two threads, another folder
    table = sweep.read(tmp_path).to_table().to_pandas()
    direct = task().model.flash([0.5, 0.5], T=T[:, None], p=P, errors="nan")
    for name, values in (("rho", direct.rho), ("fraction_1", direct.fraction[..., 0]), ("x_2_propane", direct.x[..., 1, 1]),
                         ("T", np.broadcast_to(T[:, None], (30, 4)))):  # fmt: skip
        assert np.array_equal(table[name], np.ravel(values), equal_nan=True), name
    assert (table.reason[np.isnan(table.p)] == "invalid").all() and table.reason[~np.isnan(table.p)].isna().all()
    assert sweep.status(tmp_path).done == 12 and "12 of 12" in repr(sweep.status(tmp_path))


def test_damaged_files_are_computed_again(tmp_path, reference):
    go(tmp_path)
    files = sorted((tmp_path / "data").glob("*"))
    flipped = bytearray(files[2].read_bytes())
    flipped[len(flipped) // 3] ^= 1
    files[2].write_bytes(flipped)
    files[5].write_bytes(files[5].read_bytes()[:-100])
    files[7].write_bytes(files[8].read_bytes())
    files[9].write_bytes(b"")
    files[11].unlink()
    report = go(tmp_path)
    assert report.repaired == [2, 5, 7, 9] and (report.kept, report.computed) == (7, 5)
    assert contents(tmp_path) == reference


def test_every_byte_of_a_file_counts(tmp_path):
    go(tmp_path)
    plan = coordinate.Plan.read(tmp_path)
    whole = plan.file(3).read_bytes()
    for i in range(0, len(whole), len(whole) // 97):
        plan.file(3).write_bytes(whole[:i] + bytes([whole[i] ^ 16]) + whole[i + 1 :])
        with pytest.raises(sweep.Damaged):
            plan.verify(3)


def test_a_full_disk_stops_it_and_leaves_whole_files(tmp_path, reference, monkeypatch):
    calls, fsync = itertools.count(), os.fsync

    def full(descriptor):
        if next(calls) > 8:
            raise OSError(errno.ENOSPC, os.strerror(errno.ENOSPC))
        fsync(descriptor)

    monkeypatch.setattr(os, "fsync", full)
    with pytest.raises(OSError, match="No space left"):
        go(tmp_path)
    monkeypatch.undo()
    done = sweep.status(tmp_path).done
    assert 0 < done < 12 and not [f for f in (tmp_path / "data").iterdir() if f.name.startswith(".")]
    assert go(tmp_path).kept == done and contents(tmp_path) == reference


def test_one_sweep_a_folder(tmp_path):
    go(tmp_path)
    with coordinate.locked(tmp_path), pytest.raises(RuntimeError, match=f"another sweep .* process {os.getpid()}"):
        go(tmp_path)
    with pytest.raises(ValueError, match="another sweep"):
        sweep.run(task(), sweep.Grid(T=T, p=P[:3]), tmp_path)
    manifest = tmp_path / "manifest.json"
    d = json.loads(manifest.read_text())
    manifest.write_text(json.dumps({**d, "task": {**d["task"], "fingerprint": "0" * 32}}))
    with pytest.raises(sweep.Mismatch):
        runners._plan(str(tmp_path), "")


FUNCTION = """
import os, pathlib, time
def slow(i, folder, kill):
    marker = pathlib.Path(folder, "killed")
    if kill == "worker" and i == 5 and not marker.exists():
        marker.touch()
        os._exit(1)
    if kill == "held" and i == 6:  # until the test has seen it
        pathlib.Path(folder, "begun").touch()
        while not pathlib.Path(folder, "released").exists():
            time.sleep(0.01)
    if i == 7:
        raise ValueError("seven")
    if kill == "always" and i == 9:
        return {"other": 1.0}
    return [{"y": i * k, "text": str(k)} for k in range(int(i) % 3)]
"""


def until(true, process=None, seconds=3600.0):
    """Waits for it, however slow the machine, while the process lives."""
    end = time.monotonic() + seconds
    while not true():
        assert (process is None or process.poll() is None) and time.monotonic() < end
        time.sleep(0.01)


def own(folder, kill=""):
    folder.joinpath("own.py").write_text(FUNCTION)
    return sweep.Function(f"{folder / 'own.py'}:slow", folder=str(folder), kill=kill), sweep.Grid(i=np.arange(40))


def test_functions_rows_and_a_partition_that_always_fails(tmp_path):
    def rows(folder):
        return sweep.read(folder).to_table().to_pandas()

    report = sweep.run(*own(tmp_path), tmp_path / "a", rows=2, scheduler="threads:4")
    table = rows(tmp_path / "a")
    assert report.complete and table.reason[table.i == 7].tolist() == ["ValueError: seven"]
    assert table[table.i == 8][["y", "text"]].values.tolist() == [[0.0, "0"], [8.0, "1"]]
    assert table.reason[table.i == 6].tolist() == ["nothing found"]
    report = sweep.run(*own(tmp_path, "always"), tmp_path / "b", rows=2, scheduler="threads:4", retries=1)
    assert list(report.failed) == [4] and "other" in report.failed[4] and not report.complete
    assert set(table.row) - set(rows(tmp_path / "b").row) == {8, 9}
    attempts = [e["attempt"] for e in coordinate._journal(tmp_path / "b") if "error" in e]
    assert attempts == [1, 2] and "partition 4 failed" in repr(sweep.status(tmp_path / "b"))


def test_processes_of_dask_and_a_worker_that_dies(tmp_path, reference):
    pytest.importorskip("distributed")
    with local.processes(2, interrupts.Interruption()) as client:
        go(tmp_path / "flash", client)
        assert contents(tmp_path / "flash") == reference
        sweep.run(*own(tmp_path, "worker"), tmp_path / "own", rows=2, scheduler=client, progress=False)
    assert (tmp_path / "killed").exists()
    sweep.run(*own(tmp_path, "worker"), tmp_path / "again", rows=2, scheduler="threads:2")
    assert contents(tmp_path / "own") == contents(tmp_path / "again")


def test_a_worker_that_takes_its_time_to_end(monkeypatch):
    process = pytest.importorskip("distributed.process")

    async def late(self, timeout=None):
        raise asyncio.TimeoutError

    with local.processes(1, interrupts.Interruption()) as client:
        number, = client.run(os.getpid).values()
        monkeypatch.setattr(process.AsyncProcess, "join", late)
    until(lambda: not os.path.exists(f"/proc/{number}"))  # it was killed, and nothing was raised


def test_a_scheduler_that_died_unnoticed():
    """The client need not know of it yet when an answer is fetched, workers are counted, or a partition is given away."""
    def gone(*_, **__):
        raise ConnectionResetError

    future = types.SimpleNamespace(status="finished", result=gone, add_done_callback=lambda f: None)
    client = types.SimpleNamespace(status="running", nthreads=lambda: {"a": 2, "b": 1}, submit=lambda *_, **__: future,
                                   register_plugin=lambda plugin: None)  # fmt: skip
    dask = runners._Dask(types.SimpleNamespace(identity="x", folder="x"), client)
    assert dask.slots == 3
    client.nthreads, dask._counted = gone, -1e9
    assert dask.slots == 3
    dask.submit(0, avoid="a")
    dask._done.put((0, future))
    assert dask.next(0.1) is None is dask.next(0.1)
    client.status, client.submit = "closed", gone
    with pytest.raises(sweep.Lost):
        [dask.next(0.1) for _ in range(3)]
    with pytest.raises(sweep.Lost):
        dask.submit(1)


def test_a_scheduler_that_dies(tmp_path, monkeypatch):
    pytest.importorskip("distributed")
    scheduler_file = tmp_path / "scheduler.json"
    dask = [sys.executable, "-m", "distributed.cli.dask_"]
    start = lambda what, *more: subprocess.Popen(  # noqa: E731
        [*dask[:2], f"{dask[2]}{what}", "--scheduler-file", str(scheduler_file), *more], stdout=subprocess.DEVNULL,
        stderr=subprocess.DEVNULL)  # fmt: skip
    scheduler = start("scheduler", "--port", "0", "--no-dashboard")
    worker = start("worker", "--nworkers", "1", "--nthreads", "1", "--no-dashboard")
    try:
        until(lambda: scheduler_file.exists() and scheduler_file.read_text().endswith("}"), scheduler)
        address = json.loads(scheduler_file.read_text())["address"]
        count = itertools.count(1)

        def third(progress, rows):
            if next(count) == 3:
                scheduler.kill()
                monkeypatch.setattr(runners, "_PATIENCE", 2.0)

        monkeypatch.setattr(coordinate._Progress, "__call__", third)
        with pytest.raises(sweep.Lost):
            sweep.run(*own(tmp_path), tmp_path / "own", rows=2, scheduler=address, progress=False)
        monkeypatch.undo()
    finally:
        for process in (scheduler, worker):
            process.kill()
            process.wait()
    assert sweep.run(*own(tmp_path), tmp_path / "own", scheduler="threads:2").kept >= 3
    sweep.run(*own(tmp_path), tmp_path / "again", rows=2, scheduler="threads:2")
    assert contents(tmp_path / "own") == contents(tmp_path / "again")


TOML = """
folder = "out"
[function]
name = "own.py:slow"
folder = "{}"
kill = "{}"
[grid]
i = {{from = 0, to = 39, points = 40}}
[partitions]
rows = 2
"""


@contextlib.contextmanager
def handling(handler):
    before = signal.signal(signal.SIGINT, handler)
    try:
        yield
    finally:
        signal.signal(signal.SIGINT, before)


def run_command(*arguments):
    return subprocess.Popen([sys.executable, "-c", "import sys; from corvane.sweep.command import main; sys.exit(main())",
                             *map(str, arguments)], stderr=subprocess.PIPE, text=True, start_new_session=True,
                            # where the tests run in the background of a script it is ignored
                            preexec_fn=lambda: signal.signal(signal.SIGINT, signal.SIG_DFL))  # fmt: skip


@pytest.mark.parametrize("killed_by, code, scheduler", [
    (signal.SIGINT, 130, "threads:1"), (signal.SIGKILL, -9, "threads:1"), (signal.SIGINT, 130, "local:1")])  # fmt: skip
def test_the_command_goes_on_where_it_was_killed(tmp_path, killed_by, code, scheduler, capsys):
    own(tmp_path)
    file = tmp_path / "s.toml"
    file.write_text(TOML.format(tmp_path, "held"))
    process = run_command(file, "--scheduler", scheduler)
    until((tmp_path / "begun").exists, process)
    os.killpg(process.pid, killed_by)  # as a terminal does: to all its processes
    (tmp_path / "released").touch()
    words = process.communicate()[1]
    assert process.returncode == code and words.count("\n") == (code == 130), words
    assert "the same command goes on" in words or code != 130
    assert command.main([str(file), "--status"]) == 0 and " of 20 partitions" in capsys.readouterr().out
    assert 3 <= sweep.status(tmp_path / "out").done < 20
    process = run_command(file, "--scheduler", scheduler.replace("1", "2"))
    assert process.communicate()[1] == "" and process.returncode == 0  # an end of its own is as quiet
    sweep.run(*own(tmp_path, "held"), tmp_path / "again", rows=2)
    assert contents(tmp_path / "again") == contents(tmp_path / "out")


def test_processes_that_begin_do_not_hear_an_interruption():
    masks = []
    with handling(signal.default_int_handler), pytest.raises(KeyboardInterrupt), interrupts.deaf():
        signal.raise_signal(signal.SIGINT)
        masks.append(subprocess.check_output(["grep", "SigBlk", "/proc/self/status"], text=True).split()[1])
    assert [int(mask, 16) >> (signal.SIGINT - 1) & 1 for mask in masks] == [1]
    assert signal.SIGINT not in signal.pthread_sigmask(signal.SIG_BLOCK, [])


LOUD = """
import contextlib, logging, signal
import distributed
from corvane.sweep.interrupts import heard
from corvane.sweep.local import processes

def say(what):
    for name in ("distributed.worker.state_machine", "distributed.scheduler", "asyncio"):
        logging.getLogger(name).error(what)

class Loud(distributed.WorkerPlugin):
    def teardown(self, worker):
        say("a worker ends")

class LoudScheduler(distributed.SchedulerPlugin):
    async def close(self):
        say("the scheduler ends")

if __name__ == "__main__":
    signal.signal(signal.SIGINT, signal.default_int_handler)
    for interrupted in (False, True):
        with contextlib.suppress(KeyboardInterrupt), heard() as interruption, processes(1, interruption) as client:
            client.register_plugin(Loud())
            client.register_plugin(LoudScheduler())
            client.run(say, "a worker warns")
            say("the scheduler warns")
            with contextlib.suppress(KeyboardInterrupt):
                signal.raise_signal(signal.SIGINT) if interrupted else None
            say("it is interrupted" if interrupted else "the scheduler lives")
    say("all is over")
"""


def test_what_dask_logs_is_told_until_it_is_interrupted_or_closed(tmp_path):
    pytest.importorskip("distributed")
    (tmp_path / "loud.py").write_text(LOUD)
    said = subprocess.run([sys.executable, tmp_path / "loud.py"], stderr=subprocess.PIPE, text=True).stderr
    told = [line.rpartition(" - ")[2] for line in said.splitlines()]
    warned = ["a worker warns"] * 3 + ["the scheduler warns"] * 3
    assert told == [*warned, *["the scheduler lives"] * 3, *warned, *["all is over"] * 3], said


class Dying:
    """Ctrl-C comes while this is destroyed: Python prints what its handler raises, and goes on."""

    def __del__(self):
        signal.raise_signal(signal.SIGINT)


def swallowed():
    with contextlib.suppress(KeyboardInterrupt):
        signal.raise_signal(signal.SIGINT)


def made_another():
    try:
        signal.raise_signal(signal.SIGINT)
    except KeyboardInterrupt:
        raise RuntimeError("cancelled") from None


@pytest.mark.filterwarnings("error::pytest.PytestUnraisableExceptionWarning")  # it is not told as a fault, either
@pytest.mark.parametrize("happens", [
    Dying, lambda: weakref.finalize(type("Thing", (), {})(), signal.raise_signal, signal.SIGINT), swallowed, made_another])
@pytest.mark.parametrize("after", [2, 4])  # of 4 partitions: also while it ends
def test_an_interruption_that_is_lost_on_its_way(tmp_path, happens, after, monkeypatch, capsys):
    def go(handler):
        """Exit code, and whether the handler is there afterwards."""
        count = itertools.count(1)
        monkeypatch.setattr(coordinate._Progress, "__call__", lambda self, rows: happens() if next(count) == after else None)
        with handling(handler):
            ended = command.main([str(tmp_path / "s.toml"), "--quiet"]), signal.getsignal(signal.SIGINT) is handler
        capsys.readouterr()
        return ended

    own(tmp_path)
    (tmp_path / "s.toml").write_text(TOML.format(tmp_path, "").replace("39, points = 40", "7, points = 8"))
    assert go(signal.default_int_handler) == (130, True)
    assert after <= sweep.status(tmp_path / "out").done <= 4
    for handler in (signal.SIG_IGN, lambda *_: None):  # who ignores it, or takes it himself, is not interrupted
        shutil.rmtree(tmp_path / "out")
        assert go(handler) == (0, True)


def test_a_sweep_in_another_thread(tmp_path):
    with concurrent.futures.ThreadPoolExecutor(1) as pool:
        assert pool.submit(sweep.run, *own(tmp_path), tmp_path / "out", rows=2).result().complete


@pytest.mark.parametrize("text, code, words", [
    ("folder = 1", 2, "folder"), ("x = 1\nfolder = 'a'", 2, "unknown: x"), ("folder = ", 2, "Invalid"),
    ("folder = 'a'\n[call]\nmethod = 'flash'\n[model]\nfluid = 'CO2'\n[grid]\nT = [300]", 1, "no sweep over flash"),
    ("folder = 'a'\n[call]\nmethod = 'state'\n[model]\nfluid = 'nosuch'\n[grid]\nT = [300]", 1, "nosuch"),
    ("folder = 'a'\n[call]\nmethod = 'state'\n[model]\nfluid = 'CO2'\n[grid]\nT = {from = 1}", 2, "points"),
    ("folder = 'a'\n[call]\nmethod = 'state'\n[model]\nfluid = 'CO2'\n[grid]\nT = [300]", 1, "give two of"),
])  # fmt: skip
def test_misuse_is_one_sentence(tmp_path, text, code, words, capsys):
    (tmp_path / "s.toml").write_text(text)
    assert command.main([str(tmp_path / "s.toml")]) == code
    said = capsys.readouterr().err
    assert words in said and said.count("\n") == 1

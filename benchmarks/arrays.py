"""Arrays of the Python package beside the C++ loop that they replace, in pairs.

    PYTHONPATH=build/test/python CORVANE_DATA=build/test/home \\
        build/venv/bin/python benchmarks/arrays.py build/test/benchmarks/bench_arrays [rounds [part]]

Processor time of one core (other programs do not count, but they slow caches and the shared core): so both are measured
one right after the other, in either order by turns, and what counts is the median of the ratios of the pairs. The checksum
of both must be equal but for rounding (arrays are calculated many at a time). The loops PR and MEOS drop what they have added;
PR_kept and MEOS_kept keep all properties of all states, as arrays do.
"""

import statistics
import subprocess
import sys
import time

import numpy as np

import corvane as cv

rounds = int(sys.argv[2]) if len(sys.argv) > 2 else 20
n = 10**6 // (int(sys.argv[3]) if len(sys.argv) > 3 else 1)


def spread(count, irrational):
    x = np.arange(1, count + 1) * irrational
    return x - np.floor(x)


GOLDEN, ROOT2 = 0.6180339887498949, 0.4142135623730951
T, rho = 300 + 600 * spread(n, GOLDEN), 1 + 9999 * spread(n, ROOT2)
fluids = {"PR": cv.Fluid("propane", "PR"), "MEOS": cv.Fluid("water", "MEOS")}
gas = cv.Mixture("PR+vdW1", ["methane", "propane"])
flash_p, flash_T = 1e5 + 7.9e6 * spread(n // 10, GOLDEN), 200 + 150 * spread(n // 10, ROOT2)
loop = subprocess.Popen([sys.argv[1]], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)


def native(name):
    loop.stdin.write(f"{name} {n // 10 if name == 'flash' else n}\n")
    loop.stdin.flush()
    seconds, checksum = loop.stdout.readline().split()
    return float(seconds), float(checksum)


def python(name):
    start = time.process_time()
    if name == "flash":
        result = gas.flash([0.5, 0.5], T=flash_T, p=flash_p)
        return time.process_time() - start, np.sum(result.phases)
    s = fluids[name.partition("_")[0]].phase(T, rho)
    used = time.process_time() - start
    return used, np.sum(s.p / 1e6 + s.h + s.s + s.cp)


print("            C++ s  Python s  ratio: quarter, median, three quarters")
for name in ("PR", "PR_kept", "MEOS", "MEOS_kept", "flash"):
    pairs = []
    for turn in range(rounds):
        order = (native, python) if turn % 2 else (python, native)
        found = {f: f(name) for f in order}
        assert np.isclose(found[native][1], found[python][1], rtol=1e-9), (name, found)
        pairs.append((found[native][0], found[python][0]))
    ratios = statistics.quantiles([b / a for a, b in pairs], n=4)
    print(f"{name:<10}{statistics.median(a for a, _ in pairs):7.3f}{statistics.median(b for _, b in pairs):10.3f}  ",
          *(f"{r:.3f}" for r in ratios), flush=True)  # fmt: skip

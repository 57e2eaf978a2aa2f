"""Arrays of the Python package beside the C++ loop that they replace, in turns.

    PYTHONPATH=build/test/python CORVANE_DATA=build/test/home \\
        build/venv/bin/python benchmarks/arrays.py build/test/benchmarks/bench_arrays [part]

Processor time of one core (other programs do not count), the least of five runs each; the checksum of both must be
equal, as both add the same numbers in the same order.
"""

import subprocess
import sys
import time

import numpy as np

import corvane as cv

part = int(sys.argv[2]) if len(sys.argv) > 2 else 1
n = 10**6 // part


def spread(count, irrational):
    x = np.arange(1, count + 1) * irrational
    return x - np.floor(x)


GOLDEN, ROOT2 = 0.6180339887498949, 0.4142135623730951
T, rho = 300 + 600 * spread(n, GOLDEN), 1 + 9999 * spread(n, ROOT2)
fluids = {"PR": cv.Fluid("propane", "PR"), "MEOS": cv.Fluid("water", "MEOS")}
gas = cv.Mixture("PR+vdW1", ["methane", "propane"])
flash_p, flash_T = 1e5 + 7.9e6 * spread(n // 10, GOLDEN), 200 + 150 * spread(n // 10, ROOT2)


def run(name):
    start = time.process_time()
    if name == "flash":
        result = gas.flash([0.5, 0.5], T=flash_T, p=flash_p)
        return time.process_time() - start, np.sum(result.phases)
    s = fluids[name].phase(T, rho)
    used = time.process_time() - start
    return used, np.sum(s.p / 1e6 + s.h + s.s + s.cp)


native, python = {}, {}
for _ in range(5):
    output = subprocess.run([sys.argv[1], str(part)], check=True, capture_output=True, text=True).stdout
    for line in output.splitlines():
        name, seconds, checksum = line.split()
        used, own = run(name)
        assert np.isclose(own, float(checksum), rtol=1e-9), (name, own, checksum)
        native.setdefault(name, []).append(float(seconds))
        python.setdefault(name, []).append(used)
print("          C++ s  Python s  ratio")
for name in native:
    a, b = min(native[name]), min(python[name])
    print(f"{name:<8}{a:7.3f}{b:10.3f}{b / a:7.2f}")

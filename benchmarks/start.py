"""Times to the package and to the first numbers, of new processes: least and median, on the clock and of the processor.

    PYTHONPATH=build/test/python build/venv/bin/python benchmarks/start.py [rounds]

Run it twice: the first time Python compiles the files.
"""

import statistics
import subprocess
import sys

CASES = {
    "import corvane": "",
    "a state of CO2": "cv.Fluid('CO2').state(T=300.0, p=1e6).rho",
    "a vapour pressure": "cv.Fluid('water').saturation(T=373.15).p",
    "PropsSI": "__import__('corvane.compat.coolprop').compat.coolprop.PropsSI('D', 'T', 300, 'P', 1e5, 'CO2')",
    "an array of states": "cv.Fluid('CO2').state(T=[300.0, 310.0], p=1e6).rho",
    "a bubble point": "cv.Mixture('PR+vdW1', ['methane', 'propane']).bubble([0.3, 0.7], T=260.0).p",
}
RUN = """
import time
clock, used = time.perf_counter(), time.process_time()
import corvane as cv
{}
print(time.perf_counter() - clock, time.process_time() - used)
"""

rounds = int(sys.argv[1]) if len(sys.argv) > 1 else 10
print("                     clock, ms: least, median   processor, ms: least, median")
for name, code in CASES.items():
    pairs = []
    for _ in range(rounds):
        out = subprocess.run([sys.executable, "-c", RUN.format(code)], capture_output=True, text=True, check=True).stdout
        pairs.append([1e3 * float(x) for x in out.split()])
    print(f"{name:<20}", *(f"{min(x):14.0f} {statistics.median(x):8.0f}" for x in zip(*pairs)), flush=True)

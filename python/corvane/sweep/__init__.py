"""Sweeps: one calculation over a grid, a random design or a table, on the threads of one machine or on a cluster.

>>> from corvane import sweep
>>> task = sweep.Call(corvane.Fluid("CO2"), "state", keep=["rho", "h"])
>>> design = sweep.Grid(T=np.linspace(250, 400, 151), p=np.geomspace(1e5, 3e7, 200))
>>> report = sweep.run(task, design, "co2_table", scheduler="threads:4")
>>> sweep.read("co2_table").to_table().to_pandas()

What is done stays done: the same call goes on where another was interrupted.
"""

from .coordinate import Report, State, read, run, status
from .designs import Grid, Random, Rows
from .plan import Damaged
from .runners import Lost
from .tasks import Call, Function, Mismatch

__all__ = ["Call", "Damaged", "Function", "Grid", "Lost", "Mismatch", "Random", "Report", "Rows", "State", "read", "run",
           "status"]  # fmt: skip

"""A closed tank of ammonia warms up: pressure from density and temperature, and from energy."""
import numpy as np

from corvane.compat.coolprop import PropsSI

gas = PropsSI("P", "T", 275, "Dmolar", 200, "Ammonia")  # before it is filled
rho = PropsSI("D", "T", 273.15, "Q", 0.2, "Ammonia")
T = np.array([273.15, 293.15, 313.15, 333.15])
p, u = PropsSI("P", "T", T, "D", rho, "Ammonia"), PropsSI("U", "T", T, "D", rho, "Ammonia")
back = [PropsSI("T", "D", rho, "U", float(e), "Ammonia") for e in u]
assert np.allclose(back, T, rtol=1e-7) and np.all(np.diff(p) > 0)
print(f"{gas / 1e6:.7f} MPa", *(f"{v / 1e5:.2f} bar" for v in p))

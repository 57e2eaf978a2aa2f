"""A natural gas at a metering station: density, compressibility, speed of sound; its dew point; a throttle."""
import numpy as np

from corvane.compat.coolprop import PropsSI

gas = "HEOS::Methane[0.90]&Ethane[0.05]&Propane[0.02]&Nitrogen[0.02]&CarbonDioxide[0.01]"
for T in (273.15, 288.15):
    D, Z, a = (PropsSI(key, "T", T, "P", 60e5, gas) for key in ("D", "Z", "A"))
    print(f"{T} K: {D:.2f} kg/m3, Z = {Z:.4f}, {a:.1f} m/s")
dew = PropsSI("T", "P", 20e5, "Q", 1, gas)
print(f"dew point {dew:.1f} K at 20 bar")
h = PropsSI("H", "T", 288.15, "P", 60e5, gas)
T = PropsSI("T", "P", np.array([50e5, 30e5, 10e5]), "H", h, gas)
print("throttled:", np.round(T, 1))
assert (np.diff(T) < 0).all() and T[-1] > dew - 20

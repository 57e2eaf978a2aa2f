"""Water heats propane from 250 K to vapour at 320 K: the pinch on a grid of enthalpies."""
import numpy as np

from corvane.compat.coolprop import PropsSI

p, m_propane, m_water = 1.2e6, 1.0, 4.0
h = np.linspace(PropsSI("H", "T", 250, "P", p, "n-Propane"), PropsSI("H", "T", 320, "P", p, "n-Propane"), 40)
T_propane = PropsSI("T", "P", p, "H", h, "n-Propane")
h_water = PropsSI("H", "T", 353.15, "P", 3e5, "Water") - (h[-1] - h) * m_propane / m_water
T_water = PropsSI("T", "P", 3e5, "H", h_water, "Water")
print(f"pinch {np.min(T_water - T_propane):.1f} K")

"""The dome of carbon dioxide in T and s, as arrays."""
import numpy as np

from corvane.compat.coolprop import Props1SI, PropsSI

T = np.linspace(Props1SI("CO2", "TTRIPLE") + 0.1, Props1SI("CO2", "TCRIT") - 0.5, 50)
s_liquid, s_vapour = PropsSI("S", "T", T, "Q", 0, "CO2"), PropsSI("S", "T", T, "Q", 1, "CO2")
assert s_liquid.shape == T.shape and np.all(np.diff(s_liquid) > 0) and np.all(s_vapour > s_liquid)
print(f"widest {np.max(s_vapour - s_liquid):.0f} J/(kg K)")

"""A vapour-compression cycle with R134a: coefficient of performance."""
from corvane.compat.coolprop import PropsSI

fluid, T_evaporator, T_condenser, efficiency = "R134a", 263.15, 313.15, 0.75
p1, p2 = (PropsSI("P", "T", T, "Q", 1, fluid) for T in (T_evaporator, T_condenser))
h1, s1 = (PropsSI(key, "T", T_evaporator, "Q", 1, fluid) for key in "HS")
h2s = PropsSI("H", "P", p2, "S", s1, fluid)
h2 = h1 + (h2s - h1) / efficiency
h3 = PropsSI("H", "P", p2, "Q", 0, fluid)
q4 = PropsSI("Q", "P", p1, "H", h3, fluid)
print(f"T2 = {PropsSI('T', 'P', p2, 'H', h2, fluid):.1f} K, q4 = {q4:.3f}, COP = {(h1 - h3) / (h2 - h1):.2f}")

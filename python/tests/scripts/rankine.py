"""A Rankine cycle: 10 MPa, 500 C, condenser at 10 kPa."""
from corvane.compat.coolprop import PropsSI

p_low, p_high, T3 = 10e3, 10e6, 773.15
h1, s1 = PropsSI("H", "P", p_low, "Q", 0, "Water"), PropsSI("S", "P", p_low, "Q", 0, "Water")
h2 = PropsSI("Hmass", "P", p_high, "Smass", s1, "Water")
h3, s3 = PropsSI("H", "P", p_high, "T", T3, "Water"), PropsSI("S", "P", p_high, "T", T3, "Water")
h4 = PropsSI("H", "P", p_low, "S", s3, "Water")
x4 = PropsSI("Q", "P", p_low, "S", s3, "Water")
print(f"x4 = {x4:.3f}, efficiency = {((h3 - h4) - (h2 - h1)) / (h3 - h2):.4f}")

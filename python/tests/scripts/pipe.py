"""Heat transfer of cold water in a pipe after Dittus and Boelter, and of its steam; a drop's surface tension."""
from math import pi

from corvane.compat.coolprop import PropsSI

T, P, diameter, flow = 300.0, 3e5, 0.025, 0.4  # K, Pa, m, kg/s
mu, k, cp, Pr = (PropsSI(key, "T", T, "P", P, "Water") for key in ("VISCOSITY", "CONDUCTIVITY", "C", "PRANDTL"))
Re = 4 * flow / (pi * diameter * mu)
h = 0.023 * Re**0.8 * Pr**0.4 * k / diameter
print(f"Re = {Re:.0f}, Pr = {Pr:.2f}, viscosity {1e6 * mu:.0f} uPa s, h = {h:.0f} W/(m2 K)")
assert abs(Pr - cp * mu / k) < 1e-9 * Pr
liquid, steam = (PropsSI("V", "T", 373.15, "Q", q, "Water") for q in (0, 1))
print(f"at 100 C: {1e6 * liquid:.1f} and {1e6 * steam:.2f} uPa s, {1e3 * PropsSI('I', 'T', 373.15, 'Q', 0, 'Water'):.1f} mN/m")

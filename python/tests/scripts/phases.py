"""Which phase: along an isobar and an isotherm."""
from corvane.compat.coolprop import PhaseSI

print(*(PhaseSI("P", 101325, "T", T, "Nitrogen") for T in (70, 77, 78, 130)))
print(*(PhaseSI("T", 300, "P", p, "CO2") for p in (1e6, 6e6, 7e6, 1e7)))

"""Speed of sound and heat capacity ratio of gases at 20 C."""
from corvane.compat.coolprop import PropsSI

for fluid in ("Nitrogen", "Helium", "Argon", "CarbonDioxide", "Methane"):
    a = PropsSI("A", "T", 293.15, "P", 101325, fluid)
    gamma = PropsSI("CPMASS", "T", 293.15, "P", 101325, fluid) / PropsSI("CVMASS", "T", 293.15, "P", 101325, fluid)
    print(f"{fluid:<14} {a:7.1f} m/s  {gamma:.3f}")

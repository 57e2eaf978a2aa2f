"""A table of constants."""
from corvane.compat.coolprop import PropsSI, Props1SI

for fluid in ("Water", "Ammonia", "Methane", "R32", "Toluene"):
    row = [PropsSI(key, fluid) for key in ("TCRIT", "PCRIT", "RHOCRIT", "ACENTRIC")] + [Props1SI(fluid, "M")]
    print(fluid, *(f"{v:.5g}" for v in row))

"""Reference equation and cubic equations side by side, molar units, a reference state of choice."""
from corvane.compat.coolprop import PropsSI, set_reference_state

set_reference_state("Isobutane", "IIR")
for backend in ("HEOS", "PR", "SRK"):
    name = f"{backend}::Isobutane"
    print(backend, f"{PropsSI('Dmolar', 'T', 300, 'P', 2e6, name):.1f}", f"{PropsSI('P', 'T', 300, 'Q', 0, name):.0f}")
print(f"{PropsSI('H', 'T', 273.15, 'Q', 0, 'Isobutane'):.0f}")
set_reference_state("Isobutane", "RESET")

"""Boiling point of water at heights above sea level (standard atmosphere)."""
from corvane.compat.coolprop import PropsSI

for height in (0, 1000, 3000, 8848):
    p = 101325 * (1 - 2.25577e-5 * height) ** 5.25588
    print(f"{height:5d} m  {PropsSI('T', 'P', p, 'Q', 0, 'Water') - 273.15:6.2f} C")

"""Published PC-SAFT sets in the joint confidence regions of fits to the reference equations: the table of docs/fit.md.

    PYTHONPATH=build/dev/python python benchmarks/joint_regions.py

Weighted deviations are relative to 1 %, of pressures to 1 % and 20 Pa, as far as manometers told them. Two covariances: by the
number of independent deviations (Bayley & Hammersley 1946), and the block jack-knife of ten blocks of neighbouring temperatures
(Kuensch, Ann. Stat. 17 (1989) 1217), to which data in common error are added, p by 0.3 % and densities by 0.2 %.
"""

import numpy as np

import corvane as cv

FIVE = ["m", "Ts", "vs", "kappaAB", "epsAB"]
CASES = [("methane", 1, 97, 186, ["Ts", "vs"]), ("propane", 1, 90, 365, FIVE[:3]), ("hexane", 1, 180, 500, FIVE[:3]),
         ("toluene", 1, 180, 585, FIVE[:3]), ("carbon_dioxide", 1, 217, 303, FIVE[:3]),
         ("carbon_dioxide", 2, 217, 303, FIVE[:3]), ("ethanol", 1, 230, 510, FIVE), ("ethanol", 3, 230, 510, FIVE)]  # fmt: skip
PLACES = {"Ts": 1, "vs": 2, "m": 3, "kappaAB": 4, "epsAB": 5}
POINTS, BLOCKS = 56, 10


def quantile(n, m):
    """95 % of F with n and m degrees of freedom, by 400,000 samples."""
    random = np.random.default_rng(1)
    return np.quantile(random.chisquare(n, 400_000) / n / (random.chisquare(m, 400_000) / m), 0.95)


def main():
    for substance, number, first, last, names in CASES:
        T = np.linspace(first, last, POINTS)
        s = cv.Fluid(substance, "MEOS").saturation(T=T)
        p, rho, n = np.asarray(s.p), np.asarray(s.rho_liquid), len(names)
        fits = []

        def fit(use=1, p_factor=1.0, rho_factor=1.0):
            table = {"T/K": T, "p/Pa": p * p_factor, "rhoL/(mol/m3)": rho * rho_factor, "use": use}
            table |= {"u_p/%": 100 * np.hypot(0.01, 20.0 / p), "u_rhoL/%": 1.0}
            start = dict(zip(names, found)) if fits else None
            fits.append(cv.fit("PCSAFT", substance, table, names, start=start))
            return np.array([fits[-1].parameters[name] for name in names])

        found = fit()
        r = fits[0]
        delta = cv.Fluid(substance, "PCSAFT", set=number).parameters[[PLACES[name] for name in names]] - found
        error = np.array([r.correlated_errors[name] for name in names])
        shifts = [fit(p_factor=1.003) - found, fit(rho_factor=1.002) - found]
        data = sum(np.outer(d, d) for d in shifts)
        without = np.array([fit((np.arange(POINTS) * BLOCKS // POINTS != k).astype(int)) for k in range(BLOCKS)])
        spread = without - without.mean(axis=0)
        jackknife = (BLOCKS - 1) / BLOCKS * spread.T @ spread

        def F(C):
            return delta @ np.linalg.solve(C, delta) / n

        limit = quantile(n, max(1, round(r.independent - n)))
        jack_limit = (BLOCKS - 1) / (BLOCKS - n) * quantile(n, BLOCKS - n)
        print(f"{substance:15}{number}  independent {r.independent:5.1f}  F {F(np.outer(error, error) * r.correlation):8.2f} of "
              f"{limit:.1f}  jack-knife {F(jackknife + data):8.2f} of {jack_limit:.1f}", flush=True)  # fmt: skip


if __name__ == "__main__":
    main()

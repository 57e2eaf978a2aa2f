// How far two sets of numbers are apart: the package's and the native command's.

/** Largest relative difference; Infinity where one list is longer or a number is missing. */
export function apart(a, b) {
    let most = a.length === b.length ? 0 : Infinity;
    for (let k = 0; k < Math.min(a.length, b.length); ++k) {
        const difference = Math.abs(a[k] - b[k]) / Math.max(Math.abs(a[k]), Math.abs(b[k]), 1e-300);
        if (a[k] !== b[k]) most = Math.max(most, Number.isNaN(difference) ? Infinity : difference);
    }
    return most;
}

export const columns = ['T', 'p', 'rho', 'h', 's', 'u'];
const R = 8.31446;

/**
 * The same of an isoline, columns by name, in units of what an equal relative change of p (of T
 * along an isobar: `running`) does to the number itself: relative to |y| + |dy/dln p|, and of
 * energies to RT and of entropies to R as well, since their zero is anywhere. Slopes are those to
 * the neighbours with as many phases. So one unit is one rounding of the given pressure: within a
 * narrow lens no arithmetic gives densities to more than that (Higham, Accuracy and Stability of
 * Numerical Algorithms, 2nd ed. 2002, section 1.5: mixed forward-backward error).
 */
export function apartOnLine(here, there, running) {
    const r = here[running], q = here.q ?? [], n = r.length;
    const two = (k) => Number.isFinite(q[k] ?? NaN);
    let most = 0;
    for (const name of columns) {
        const a = here[name], b = there[name];
        if (a.length !== n || b.length !== n) return Infinity;
        for (let k = 0; k < n; ++k) {
            if (a[k] === b[k]) continue;
            const slopes = [k - 1, k + 1].filter((j) => j >= 0 && j < n && r[j] !== r[k] && two(j) === two(k))
                .map((j) => Math.abs((a[j] - a[k]) / Math.log(r[j] / r[k])));
            const zero = name === 's' ? R : name === 'h' || name === 'u' ? R * here.T[k] : 0;
            const difference = Math.abs(a[k] - b[k]) / (Math.abs(a[k]) + Math.max(0, ...slopes) + zero);
            most = Math.max(most, Number.isNaN(difference) ? Infinity : difference);
        }
    }
    return most;
}

// The k_ij with which bubble pressures are nearest to measured ones: the least sum of squared relative
// deviations, on a grid and then by golden sections between the neighbours of its best value (Kiefer
// 1953). A second minimum narrower than the grid is not seen.
export interface Fit {
    kij: number;
    /** Root of the mean squared relative deviation. */
    deviation: number;
    /** Points without a bubble pressure at this k_ij. */
    without: number;
}

/** bubble: pressure of point k at a k_ij, or nothing. */
export async function fitKij(
    measured: number[],
    bubble: (k: number, kij: number) => Promise<number | undefined>,
    low: number,
    high: number,
): Promise<Fit> {
    const evaluate = async (kij: number): Promise<Fit> => {
        let sum = 0, without = 0;
        for (const [k, p] of measured.entries()) {
            const computed = await bubble(k, kij);
            if (computed === undefined) ++without;
            // A point that is lost counts as one that is off by 100 %, so that losing it is no gain.
            sum += computed === undefined ? 1 : (computed / p - 1) ** 2;
        }
        return { kij, deviation: Math.sqrt(sum / measured.length), without };
    };
    const steps = 24, grid: Fit[] = [];
    for (let k = 0; k <= steps; ++k) grid.push(await evaluate(low + (k / steps) * (high - low)));
    const best = grid.reduce((least, fit, k) => (fit.deviation < grid[least]!.deviation ? k : least), 0);
    const golden = (Math.sqrt(5) - 1) / 2;
    let a = grid[Math.max(best - 1, 0)]!.kij, b = grid[Math.min(best + 1, steps)]!.kij;
    let left = await evaluate(b - golden * (b - a)), right = await evaluate(a + golden * (b - a));
    while (b - a > 1e-6) {
        if (left.deviation < right.deviation) {
            b = right.kij;
            right = left;
            left = await evaluate(b - golden * (b - a));
        } else {
            a = left.kij;
            left = right;
            right = await evaluate(a + golden * (b - a));
        }
    }
    return [left, right, grid[best]!].reduce((least, fit) => (fit.deviation < least.deviation ? fit : least));
}

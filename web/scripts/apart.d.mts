export const columns: readonly ('T' | 'p' | 'rho' | 'h' | 's' | 'u')[];
export function apart(a: ArrayLike<number>, b: ArrayLike<number>): number;
type Line = Record<string, ArrayLike<number>>;
export function apartOnLine(here: Line, there: Line, running: 'T' | 'p'): number;

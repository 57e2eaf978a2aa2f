// The native command, for numbers to compare with.
import { execFileSync } from 'node:child_process';
import { fileURLToPath } from 'node:url';
import type { Result } from '../dist/index.js';

const command = process.env.CORVANE_COMMAND ?? fileURLToPath(new URL('../../build/page-native/tools/corvane/corvane', import.meta.url));

export type Row = Record<string, number | string>;
export function native(...words: string[]): Row[] {
    const json = execFileSync(command, [...words, '--json'], { encoding: 'utf8', maxBuffer: 1 << 26 });
    return (JSON.parse(json) as { rows: Row[] }).rows;
}

/** Largest relative difference of two lists of numbers, of which one may be 0 to the last bit. */
export function apart(a: ArrayLike<number>, b: ArrayLike<number>): number {
    let most = a.length === b.length ? 0 : Infinity;
    for (let k = 0; k < Math.min(a.length, b.length); ++k) {
        const difference = Math.abs(a[k]! - b[k]!) / Math.max(Math.abs(a[k]!), Math.abs(b[k]!), 1e-300);
        if (a[k] !== b[k]) most = Math.max(most, Number.isNaN(difference) ? Infinity : difference);
    }
    return most;
}

/** The isolines of a property diagram as the page asks for them, and those of the command: every column. */
export function isolines(words: string[], result: Result, symbol: 'T' | 'p', given: number[], Tmin: number): [number[], number[]] {
    const rows = native('property-diagram', ...words, '--kind', symbol === 'T' ? 'ph' : 'Ts',
        symbol === 'T' ? '--isotherms' : '--isobars', given.join(','), '--T-min', String(Tmin)).filter((row) => row.line === symbol);
    const lines = result.lines.filter((line) => line.kind === (symbol === 'T' ? 'isotherm' : 'isobar'));
    const names = ['T', 'p', 'rho', 'h', 's', 'u'] as const;
    const here = lines.flatMap((line) => names.flatMap((name) => Array.from({ length: line.points }, (_, k) => line.whole[name]![k]!)));
    const there = given.flatMap((_, k) => names.flatMap((name) => rows.filter((row) => row.value === given[k]).map((row) => Number(row[name]))));
    return [here, there];
}

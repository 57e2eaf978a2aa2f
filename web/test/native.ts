// The native command, for numbers to compare with.
import { execFileSync } from 'node:child_process';
import { fileURLToPath } from 'node:url';

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

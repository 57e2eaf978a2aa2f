// The native command, for numbers to compare with.
import { execFileSync } from 'node:child_process';
import { fileURLToPath } from 'node:url';
import type { Result } from '../dist/index.js';
import { columns } from '../scripts/apart.mjs';

const command = process.env.CORVANE_COMMAND ?? fileURLToPath(new URL('../../build/page-native/tools/corvane/corvane', import.meta.url));

type Columns = Record<string, number[] | Float64Array>;
export type Row = Record<string, number | string>;
export function native(...words: string[]): Row[] {
    const json = execFileSync(command, [...words, '--json'], { encoding: 'utf8', maxBuffer: 1 << 26 });
    return (JSON.parse(json) as { rows: Row[] }).rows;
}

/** The isolines of a property diagram as the page asks for them, each beside that of the command: columns by name. */
export function isolines(words: string[], result: Result, symbol: 'T' | 'p', given: number[], Tmin: number): [Columns, Columns][] {
    const rows = native('property-diagram', ...words, '--kind', symbol === 'T' ? 'ph' : 'Ts',
        symbol === 'T' ? '--isotherms' : '--isobars', given.join(','), '--T-min', String(Tmin)).filter((row) => row.line === symbol);
    const lines = result.lines.filter((line) => line.kind === (symbol === 'T' ? 'isotherm' : 'isobar'));
    return lines.map((line, i) => {
        const there = rows.filter((row) => row.value === given[i]);
        const of = (get: (name: string) => number[] | Float64Array): Columns => Object.fromEntries([...columns, 'q'].map((name) => [name, get(name)]));
        return [of((name) => ((line.whole as Columns)[name] ?? []).slice(0, line.points)), of((name) => there.map((row) => Number(row[name] ?? NaN)))];
    });
}

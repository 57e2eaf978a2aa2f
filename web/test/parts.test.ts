// What the page does without the library.
import { describe, expect, it } from 'vitest';
import { readTable, writeTable } from '../page/csv.js';
import { fitKij } from '../page/fit.js';
import { first, fromHash, toHash, units } from '../page/state.js';

describe('own data', () => {
    it.each([
        ['x,p\n0.1,1.5\n0.2,2.5\n', [[0.1, 1.5], [0.2, 2.5]]],
        ['# comment\n0.1\t1.5\n\n0.2\t2.5', [[0.1, 1.5], [0.2, 2.5]]],
        ['0,1;1,5\n', [[0.1, 1.5]]],
        ['0,1 1,5\n', [[0.1, 1.5]]],
        ['0.1 1.5 7\r\n', [[0.1, 1.5, 7]]],
        ['nothing\n1\n,\n1,\n', []],
    ])('%j', (text, rows) => expect(readTable(text)).toEqual(rows));

    it('are written with quotes where they are needed', () =>
        expect(writeTable({ header: ['a,b', 'c'], rows: [['say "so"', 1e-300]] })).toBe('"a,b",c\n"say ""so""",1e-300\n'));
});

it('a link brings the view back, and a bad one the first', () => {
    const state = { ...first, tab: 'Ts' as const, a: 'water', b: '', kij: -0.1, T: 300.123456789, unitT: '°C' };
    expect(fromHash(toHash(state))).toEqual(state);
    expect(fromHash('#T=&p=NaN&z=x&tab=none&kij=')).toEqual(first);
});

it('units go there and back', () => {
    const u = units({ ...first, unitT: '°C', unitP: 'bar' });
    expect(u.showT(273.15)).toBe(0);
    expect(u.readP(u.showP(2))).toBe(2);
});

it('a fit finds the k_ij that data were made with, and a lost point is no gain', async () => {
    const bubble = (k: number, kij: number) => Promise.resolve((k + 1) * Math.exp(3 * (kij - 0.07)));
    expect((await fitKij([1, 2, 3], bubble, -0.2, 0.4)).kij).toBeCloseTo(0.07, 3);
    const lost = (k: number, kij: number) => (kij > 0.2 ? Promise.resolve(undefined) : bubble(k, kij));
    expect((await fitKij([1, 2, 3], lost, -0.2, 0.4)).kij).toBeCloseTo(0.07, 3);
});

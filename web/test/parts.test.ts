// What the page does without the library.
import { describe, expect, it } from 'vitest';
import { readTable, writeTable } from '../page/csv.js';
import { fitKij } from '../page/fit.js';
import { matches } from '../page/search.js';
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
    // 14.696 psi and 32 °F are one atmosphere and the ice point; water's 18.015 g/mol.
    const other = units({ ...first, unitT: '°F', unitP: 'psi', unitN: 'kg' });
    expect(other.showP(0.101325)).toBeCloseTo(14.6959, 4);
    expect(other.readT(32)).toBeCloseTo(273.15, 10);
    expect([other.showH(18015, 18.015), other.showS(18.015, 18.015), other.showRho(0.0554, 18.015)]).toEqual([1000, 1, expect.closeTo(998.03, 2)]);
});

it('a fit finds the k_ij that data were made with, and a lost point is no gain', async () => {
    const bubble = (k: number, kij: number) => Promise.resolve((k + 1) * Math.exp(3 * (kij - 0.07)));
    expect((await fitKij([1, 2, 3], bubble, -0.2, 0.4)).kij).toBeCloseTo(0.07, 5);
    // Of two minima the deeper one, also where golden sections alone would take the other.
    const two = (k: number, kij: number) => Promise.resolve((k + 1) * (1 + 4 * (kij + 0.1) ** 2 * ((kij - 0.3) ** 2 + 0.01)));
    expect((await fitKij([1, 2, 3], two, -0.2, 0.4)).kij).toBeCloseTo(-0.1, 4);
    const lost = (k: number, kij: number) => (kij > 0.2 ? Promise.resolve(undefined) : bubble(k, kij));
    expect((await fitKij([1, 2, 3], lost, -0.2, 0.4)).kij).toBeCloseTo(0.07, 5);
});

it('a search finds names, synonyms, CAS numbers and formulas, what the equation has first', () => {
    const substance = (name: string, formula: string, cas: string, aliases: string[], ...equations: string[]) => ({ name, formula, cas, aliases, equations });
    const all = [
        substance('hexane', 'C6H14', '110-54-3', ['n-hexane'], 'PR'), substance('2_methylpentane', 'C6H14', '107-83-5', [], 'PR'),
        substance('cyclohexane', 'C6H12', '110-82-7', [], 'PR'), substance('hexanal', 'C6H12O', '66-25-1', []),
    ];
    const found = (text: string) => matches(all, text, 'PR').map((s) => s.name);
    expect(found('hexan')).toEqual(['hexane', 'cyclohexane', 'hexanal']);
    expect(found('N-Hexane')).toEqual(['hexane']);
    expect(found('c6h14')).toEqual(['hexane', '2_methylpentane']);
    expect(found('107-83-5')).toEqual(['2_methylpentane']);
    expect(found('110-')).toEqual(['hexane', 'cyclohexane']);
    expect(found(' ')).toEqual([]);
});

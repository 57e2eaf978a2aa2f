// The package in Node against the native command, and its refusals.
import { afterAll, beforeAll, describe, expect, it } from 'vitest';
import { CorvaneFailure, load, type Corvane, type Point } from '../dist/index.js';
import { apart, apartOnLine } from '../scripts/apart.mjs';
import { isolines, native, type Row } from './native.js';

let corvane: Corvane;
beforeAll(async () => {
    corvane = await load();
});
afterAll(() => corvane.close());

const numbers = (row: Row, ...names: string[]) => names.map((name) => Number(row[name]));
const close = 1e-12;

describe('numbers are those of the native command', () => {
    it.each([
        ['PR+vdW1', 'methane', 'propane', 250, 2],
        ['SRK+vdW1', 'carbon_dioxide', 'butane', 300, 3],
        ['PCSAFT+LB', 'methane', 'propane', 250, 2],
        ['MEOS+GERG', 'methane', 'ethane', 220, 2],
        ['CPA+vdW1', 'methanol', 'propane', 300, 0.5],
        ['SAFTVRMIE+LB', 'methane', 'propane', 250, 2],
        ['SRK+PSRK', 'ethanol', 'hexane', 340, 0.1],
        ['PR+HV', 'methane', 'propane', 250, 2],
    ])('flash, bubble and dew points of %s, %s + %s', async (model, a, b, T, p) => {
        const mixture = corvane.mixture(model, [a, b]), z = [0.4, 0.6], words = [`${a}=0.4`, `${b}=0.6`];
        const flash = await mixture.flash(z, { p, T });
        const rows = native('flash', model, ...words, '--T', String(T), '--p', String(p));
        expect(flash.phases.length).toBe(rows.length);
        rows.forEach((row, k) => {
            const phase = flash.phases[k]!;
            expect(apart([phase.fraction!, phase.rho!, ...phase.x], numbers(row, 'fraction', 'rho', `x_${a}`, `x_${b}`))).toBeLessThan(close);
            expect(apart([phase.h!, phase.s!], numbers(row, 'h', 's'))).toBeLessThan(1e-11); // differences of large numbers
        });
        expect(flash.certificate).not.toBe('');
        for (const kind of ['bubble', 'dew'] as const) {
            const point: Point = await mixture[kind](z, { T });
            const row = native(kind, model, ...words, '--T', String(T))[0]!;
            const other = kind === 'bubble' ? 'y' : 'x';
            expect(apart([point.p!, ...point.phases[1]!.x], numbers(row, 'p', `${other}_${a}`, `${other}_${b}`)), kind).toBeLessThan(close);
        }
    });

    it.each([['MEOS', 'CO2', 250], ['PCSAFT', 'propane', 300], ['PR', 'water', 400]])('saturation of %s %s', async (equation, substance, T) => {
        const point = await corvane.fluid(substance, equation).saturation({ T });
        const row = native('saturation', equation, substance, '--T', String(T))[0]!;
        expect(apart([point.p!, point.phases[0]!.rho!, point.phases[1]!.rho!], numbers(row, 'p', 'rhoL', 'rhoV'))).toBeLessThan(close);
    });

    it.each([
        ['PR+vdW1', 'methane', 'propane'], ['SRK+vdW1', 'carbon_dioxide', 'butane'], ['PCSAFT+LB', 'ethanol', 'heptane'],
        ['MEOS+GERG', 'methane', 'ethane'],
    ])('critical points of %s, %s + %s', async (model, a, b) => {
        for (const x of [0.1, 0.4, 0.7]) {
            const point = await corvane.mixture(model, [a, b]).criticalPoint([x, 1 - x]).catch(() => undefined);
            if (!point) continue; // a refusal, there too
            const row = native('critical-line', model, `${a}=${x}`, `${b}=${1 - x}`)[0]!;
            // Both are that near the true point; the multi-fluid sums round differently, four terms at a time or one by one.
            const near = Math.max(close, 2 * Number(row['error']));
            expect(near).toBeLessThan(1e-10);
            expect(apart([point.T!, point.p!, point.rho!], numbers(row, 'T', 'p', 'rho')), `x = ${x}`).toBeLessThan(near);
        }
    });

    // The lines of the tabs p-h and T-s; and each state again from its temperature and density.
    it.each([['MEOS', 'carbon_dioxide'], ['PR', 'propane'], ['PR+vdW1', 'methane', 'propane'], ['MEOS+GERG', 'methane', 'ethane'], ['PCSAFT+LB', 'ethanol', 'heptane']] as [string, string, string?][])(
        'isotherms and isobars of %s, %s', async (model, a, b) => {
            const z = [0.4, 0.6];
            const fluid = b ? corvane.mixture(model, [a, b]) : corvane.fluid(a, model);
            const { components } = await fluid.info();
            const of = (name: 'T_critical' | 'p_critical') => (b ? z[0]! * components[0]![name] + z[1]! * components[1]![name] : components[0]![name]);
            const T = [0.8, 0.95, 1.2].map((f) => Math.round(f * of('T_critical'))), p = [0.5, 2, 8];
            for (const [symbol, given] of [['T', T], ['p', p]] as const) {
                const lines = given.map((value) => ({ [symbol]: value }));
                const result = 'flash' in fluid ? await fluid.diagram(z, lines, 120) : await fluid.diagram(lines, 120);
                const both = isolines([model, ...(b ? [`${a}=0.4`, `${b}=0.6`] : [a])], result, symbol, given, 0.55 * of('T_critical'));
                expect(both.length).toBe(given.length);
                for (const [here, there] of both) {
                    expect(here.T!.length).toBeGreaterThan(60);
                    expect(apartOnLine(here, there, symbol === 'T' ? 'p' : 'T'), symbol).toBeLessThan(close);
                }
                for (const { kind, whole, points } of result.lines)
                    for (let k = 0; k < points && /^iso/.test(kind); k += 17) {
                        if (!Number.isNaN(whole.q?.[k] ?? NaN)) continue; // two phases
                        const at: [number, number] = [whole.T![k]!, whole.rho![k]!];
                        const again = 'flash' in fluid ? await fluid.phase(...at, z) : await fluid.phase(...at);
                        const { p: p_, h, s } = again.phases[0]!;
                        expect(apart([p_!], [whole.p![k]!]), `${kind} ${at}`).toBeLessThan(1e-9); // a liquid's p from its density
                        expect(apart([h!, s!], [whole.h![k]!, whole.s![k]!]), `${kind} ${at}`).toBeLessThan(1e-9);
                    }
            }
        });

    it('p-x-y diagrams, also with another k_ij', async () => {
        for (const kij of [undefined, 0.05]) {
            let mixture = corvane.mixture('PR+vdW1', ['methane', 'propane']);
            if (kij !== undefined) mixture = mixture.withPair(0, 1, kij);
            const diagram = await mixture.pxy(250);
            expect(diagram.complete).toBe(true);
            const line = diagram.lines.find((one) => one.kind === 'vapour-liquid')!;
            // The command hides none of the points but takes other steps where p ends: the pure and
            // the critical end are compared.
            const rows = native('pxy', 'PR+vdW1', 'methane', 'propane', '--T', '250', ...(kij === undefined ? [] : ['--kij', String(kij)]));
            const p = line.whole.p ?? line.phases[0]!.p!;
            expect(apart([p[0]!], numbers(rows[0]!, 'p'))).toBeLessThan(close);
            expect(line.end).toBe('a critical point');
            expect(apart([p.at(-1)!], numbers(rows.at(-1)!, 'p'))).toBeLessThan(1e-9); // where the curve is flat
        }
        // The stored parameter is back.
        const info = await corvane.mixture('PR+vdW1', ['methane', 'propane']).info();
        expect(info.pairs[0]!.values[0]).toBe(0.0119);
        expect(info.pairs[0]!.source).toContain('DECHEMA');
    });
});

it('finds substances by name, CAS number, formula and synonym', async () => {
    for (const text of ['carbon_dioxide', 'CO2', '124-38-9', 'carbon dioxide']) expect(await corvane.name(text)).toBe('carbon_dioxide');
    expect(await corvane.search('propan')).toContain('propane');
    expect((await corvane.substances()).find((s) => s.name === 'methane')).toMatchObject({ formula: 'CH4', cas: '74-82-8' });
});

it('refuses in one sentence', async () => {
    const failure = (of: () => Promise<unknown>) => of().then(() => expect.fail('a result'), (error: unknown) => error as CorvaneFailure);
    for (const [of, kind, text] of [
        [() => corvane.fluid('octan').info(), 'not opened', 'octane'],
        [() => corvane.mixture('MEOS+GERG', ['methane', 'ethylene glycol']).info(), 'not opened', 'has no parameters'],
        [() => corvane.mixture('PR+none', ['methane', 'propane']).info(), 'not opened', 'PR+none'],
        [() => corvane.mixture('PR+vdW1', ['methane', 'propane']).bubble([0.5, 0.5], { T: 600 }), 'no solution', '600'],
        [() => corvane.mixture('PR+vdW1', ['methane', 'propane']).flash([0.5, 0.5], { p: 1 }), 'bad argument', 'two quantities'],
        [() => corvane.mixture('PR+vdW1', ['methane', 'propane', 'butane']).pxy(250), 'thermodynamic', 'pxy'],
    ] as const) {
        const error = await failure(of);
        expect(error).toBeInstanceOf(CorvaneFailure);
        expect(error.kind, error.message).toBe(kind);
        expect(error.message).toContain(text);
    }
});

it('tells progress, can be cancelled, and goes on afterwards', async () => {
    const mixture = corvane.mixture('PCSAFT+LB', ['methane', 'propane']);
    const stop = new AbortController();
    const told: number[] = [];
    const long = mixture.pxy(250, {}, { signal: stop.signal, onProgress: (points) => void (told.push(points), stop.abort()) });
    const waiting = mixture.bubble([0.5, 0.5], { T: 250 }); // behind it: is not lost
    await expect(long).rejects.toMatchObject({ kind: 'cancelled' });
    expect(told.length).toBe(1);
    expect((await waiting).p).toBeGreaterThan(0);
    await expect(mixture.info({ signal: AbortSignal.abort() })).rejects.toMatchObject({ kind: 'cancelled' });
});

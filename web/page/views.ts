// What each tab computes and how its curves are drawn.
import type { CallOptions, Corvane, Fluid, Mixture } from '../src/client.js';
import { CorvaneFailure, flagsOf, type Given, type Line, type ModelInfo, type Point, type Result } from '../src/types.js';
import type { Table } from './csv.js';
import type { State, Tab, Units } from './state.js';
import { colourOf } from './plot.js';

export interface Curve {
    name: string;
    /** null: the line is interrupted. */
    x: ArrayLike<number | null>;
    y: ArrayLike<number | null>;
    /** Of the list; -1: that of weak lines, -2: of text. */
    colour: number;
    /** Marks instead of a line. */
    marks?: boolean;
    dashed?: boolean;
    thin?: boolean;
    /** Drawn as a spline through its points. */
    smooth?: boolean;
    hidden?: boolean; // from the legend
    /** Beside the points while the pointer is over them. */
    notes?: string[];
    /** Words that stand at the points. */
    labels?: string[];
}
export interface View {
    title: string;
    xTitle: string;
    yTitle: string;
    logY?: boolean;
    /** x is a mole fraction. */
    fractions?: boolean;
    curves: Curve[];
    /** All values; made when they are asked for. */
    table: () => Table;
    certificate: string[];
    complete: boolean;
    /** Highest y that is shown at first. */
    top?: number;
    labelsAt?: 'top center';
    /** Nothing to draw. */
    tableOnly?: boolean;
}

/** What own data mean in a tab. */
export const ownColumns: Record<Tab, string> = {
    pxy: 'mole fraction of substance 1, pressure, mole fraction in the other phase (may be left out)',
    Txy: 'mole fraction of substance 1, temperature, mole fraction in the other phase (may be left out)',
    projection: 'temperature, pressure', envelope: 'temperature, pressure', ph: 'enthalpy, pressure', Ts: 'entropy, temperature',
    flash: 'nothing is drawn here',
};

/** The fields that a tab computes from. */
export const fieldsOf: Record<Tab, string> = { pxy: 'T', Txy: 'p', projection: '', envelope: 'z', ph: 'z', Ts: 'z', flash: 'Tpz' };

const pure = (state: State) => state.b.trim() === '';

export const equationOf = (state: State) => state.model.split('+')[0]!;
export function fluidOf(corvane: Corvane, state: State, substance = state.a) {
    return corvane.fluid(substance, equationOf(state));
}
/** Has the first number of a pair this meaning? */
export const hasKij = (state: State) => !['MEOS+GERG', 'SRK+PSRK'].includes(state.model);
export function mixtureOf(corvane: Corvane, state: State) {
    const mixture = corvane.mixture(state.model, [state.a, state.b]);
    return state.kij === null || !hasKij(state) ? mixture : mixture.withPair(0, 1, state.kij);
}
const composition = (state: State) => {
    if (!(state.z >= 0 && state.z <= 1)) throw new CorvaneFailure('bad argument', 'A mole fraction is from 0 to 1.');
    return [state.z, 1 - state.z];
};

const values = (line: Line, name: 'T' | 'p'): Float64Array => line.whole[name] ?? line.phases[0]?.[name] ?? new Float64Array(0);
const largest = (column: Float64Array | undefined) => (column ?? new Float64Array(0)).reduce((most, x) => (Number.isNaN(x) ? most : Math.max(most, Math.abs(x))), 0);

function lineName(line: Line, components: string[]): string {
    const solid = /^solid (\d)/.exec(line.kind);
    return solid ? `solid ${components[Number(solid[1])]}` : line.kind;
}

const isoline = (line: Line) => /^(isotherm|isobar|isochore|isentrope|equal q)$/.test(line.kind);

/** The evidence of all lines, in sentences; all: what "complete" means here. */
function evidenceOf(result: Result, all = 'every line is followed to an end that is explained'): string[] {
    const told = [result.complete ? `Complete: ${all}.` : `Not complete: it is not so that ${all}.`];
    for (const line of result.lines) {
        if (isoline(line)) continue; // states, each tested by itself
        const parts = [`${lineName(line, result.components)}: ${line.points} point${line.points === 1 ? '' : 's'}`];
        if (line.begin && line.end) parts.push(`from ${line.begin} to ${line.end}`);
        else if (line.end) parts.push(line.end === 'closed' ? line.end : `up to ${line.end}`);
        // What was not asked for is 0 at all points: a line says what there is.
        const tell = (words: (value: string) => string, column: Float64Array | undefined) => {
            const most = largest(column);
            if (most > 0) parts.push(words(most.toExponential(1)));
        };
        tell((x) => `potentials agree to ${x} (over RT)`, line.whole.dmu);
        tell((x) => `pressures to ${x} (of p)`, line.whole.dp);
        tell((x) => `critical conditions are met to ${x}`, line.whole.conditions);
        tell((x) => `p or T is within ${x} (relative) of the exact curve`, line.whole.value_error);
        tell((x) => `mole fractions within ${x}`, line.whole.x_error);
        const flags = new Set([...line.flags].flatMap(flagsOf));
        flags.delete('bubble');
        if (flags.size) parts.push([...flags].join(', '));
        told.push(`${parts.join('; ')}.`, ...(line.points === 1 ? line.certificates.filter(Boolean) : []));
    }
    const isolines = result.lines.filter(isoline);
    if (isolines.length) told.push(`Isolines: ${isolines.length}, ${isolines.reduce((sum, line) => sum + line.points, 0)} stable states.`);
    return told;
}

/** M: molar masses of the components; whole: that of the mixture, for h and s. */
function tableOf(result: Result, u: Units, M: number[], whole = NaN): Table {
    const names = result.components;
    const rows: (string | number)[][] = [];
    const phases = Math.max(0, ...result.lines.map((line) => line.phases.length));
    const calorific = result.lines.some((line) => line.whole.h);
    const mass = (x: number[]) => x.reduce((sum, xi, i) => sum + xi * M[i]!, 0);
    for (const line of result.lines)
        for (let k = 0; k < line.points; ++k) {
            const T = values(line, 'T')[k], p = values(line, 'p')[k];
            const row: (string | number)[] = [lineName(line, names), T === undefined ? '' : u.showT(T), p === undefined ? '' : u.showP(p)];
            for (let phase = 0; phase < phases; ++phase) {
                const of = line.phases[phase], x = names.map((_, i) => of?.x[i]?.[k] ?? NaN);
                row.push(...x, u.showRho(of?.rho?.[k] ?? NaN, mass(x)));
            }
            if (calorific) row.push(u.showH(line.whole.h?.[k] ?? NaN, whole), u.showS(line.whole.s?.[k] ?? NaN, whole));
            rows.push(row.map((value) => (Number.isNaN(value) ? '' : value)));
        }
    const header = ['line', `T [${u.T}]`, `p [${u.p}]`];
    for (let phase = 1; phase <= phases; ++phase) header.push(...names.map((name) => `x(${name}) ${phase}`), `rho ${phase} [${u.rho}]`);
    return { header: calorific ? [...header, `h [${u.h}]`, `s [${u.s}]`] : header, rows };
}

const phaseNames: Record<string, [string, string]> = {
    'vapour-liquid': ['liquid', 'vapour'], 'liquid-liquid': ['liquid 1', 'liquid 2'], 'fluid-fluid': ['fluid 1', 'fluid 2'],
};

const highest = 100; // MPa, of what is traced

/**
 * Where a diagram is cut off that some line leaves at the highest pressure: `room` times above all
 * other lines and what such a line begins at, unless that is far away itself.
 */
function top(result: Result, room: number): number | undefined {
    const leaves = (line: Line) => line.begin === 'the highest pressure' || line.end === 'the highest pressure';
    if (!result.lines.some(leaves)) return undefined;
    const most = (lines: Line[], of: (p: Float64Array) => number) => Math.max(0, ...lines.map((line) => of(values(line, 'p'))).filter(Number.isFinite));
    const others = most(result.lines.filter((line) => !leaves(line)), (p) => Math.max(...p));
    const begins = most(result.lines.filter(leaves), (p) => Math.min(...p));
    const needed = others > 0 && begins > 10 * others ? others : Math.max(others, begins);
    return needed > 0 ? Math.min(room * needed, highest) : undefined;
}

const cutAt = (result: Result, u: Units, room: number) => {
    const p = top(result, room);
    return p ? { top: u.showP(p) } : {};
};

/** A diagram of a binary at T or at p: what y is. */
function isopleth(result: Result, u: Units, y: 'p' | 'T'): Curve[] {
    const curves: Curve[] = [], ties: Curve = { name: 'tie lines', x: [], y: [], colour: -1, thin: true };
    const regions: Curve = { name: 'regions', x: [], y: [], colour: -2, marks: true, hidden: true, labels: [] };
    const put = (curve: Curve, x: (number | null)[], y: (number | null)[]) => ((curve.x as (number | null)[]).push(...x), (curve.y as (number | null)[]).push(...y));
    for (const line of result.lines) {
        const at = Array.from(values(line, y), y === 'p' ? u.showP : u.showT), colour = colourOf(line.kind);
        if (line.phases.length === 0 || line.points === 0) continue;
        const xs = line.phases.map((phase) => phase.x[0]!);
        if (line.kind === 'azeotropes' || line.kind === 'three-phase' || line.kind === 'open') {
            xs.forEach((x, k) => curves.push({ name: line.kind, x, y: at, colour, marks: true, hidden: k > 0 || line.kind === 'three-phase' }));
            if (line.kind === 'three-phase')
                curves.push({ name: line.kind, colour, x: at.flatMap((_, k) => [...xs.map((x) => x[k]!), null]), y: at.flatMap((v) => [...xs.map(() => v), null]) });
            continue;
        }
        const [one, other] = phaseNames[line.kind] ?? [lineName(line, result.components), ''];
        const step = Math.max(1, Math.ceil(line.points / 14));
        for (let k = 0; k < line.points; k += step) put(ties, [...xs.map((x) => x[k]!), null], [...xs.map(() => at[k]!), null]);
        if (other) {
            const wide = (k: number) => Math.abs(xs[0]![k]! - xs[1]![k]!);
            const low = Math.min(...at), high = Math.max(...at);
            const room = (k: number) => wide(k) * Math.min(at[k]! - low, high - at[k]!); // far from both ends
            const middle = at.reduce((best, _, k) => (room(k) > room(best) ? k : best), 0);
            if (wide(middle) > 0.15) {
                put(regions, [(xs[0]![middle]! + xs[1]![middle]!) / 2], [at[middle]!]);
                regions.labels!.push(`${one} + ${other}`);
            }
        }
        const beside = (k: number, name: string) => at.map((_, i) => `beside it ${name} ${xs[k]![i]!.toPrecision(5)}`);
        curves.push({ name: one, x: xs[0]!, y: at, colour, smooth: true, ...(xs[1] && { notes: beside(1, other) }) });
        if (xs[1]) curves.push({ name: other, x: xs[1], y: at, colour: colour + 1, smooth: true, notes: beside(0, one) });
    }
    return [ties, ...curves, regions]; // tie lines below the curves
}

function pT(result: Result, u: Units, name?: string, colour?: number): Curve[] {
    return result.lines
        .filter((line) => line.points > 0)
        .map((line) => ({
            name: name ?? (line.kind === 'critical' ? `critical ${line.points < 4 ? 'point' : 'line'}` : lineName(line, result.components)),
            x: Float64Array.from(values(line, 'T'), u.showT),
            y: Float64Array.from(values(line, 'p'), u.showP),
            colour: colour ?? colourOf(line.kind),
            smooth: true, marks: line.points === 1 || /cricondenbar|cricondentherm/.test(line.kind) || (line.kind === 'critical' && line.points < 4),
        }));
}

/** About n round numbers between two. */
export function round(low: number, high: number, n: number): number[] {
    const raw = (high - low) / n, ten = 10 ** Math.floor(Math.log10(raw));
    const step = [1, 2, 5, 10].map((k) => k * ten).find((s) => s >= raw)!;
    const list: number[] = [];
    for (let x = Math.ceil(low / step) * step; x <= high; x += step) list.push(Number(x.toPrecision(6)));
    return list;
}

async function property(corvane: Corvane, state: State, u: Units, info: ModelInfo, options: CallOptions): Promise<View> {
    const ph = state.tab === 'ph';
    const z = pure(state) ? [1] : composition(state);
    const model = pure(state) ? fluidOf(corvane, state) : mixtureOf(corvane, state);
    if (!info.ideal) throw new CorvaneFailure('bad argument', 'Enthalpy and entropy need ideal-gas tables, which are missing for this choice.');
    const T = info.components.reduce((sum, c, i) => sum + z[i]! * c.T_critical, 0);
    const p = info.components.reduce((sum, c, i) => sum + z[i]! * c.p_critical, 0);
    // Round in the units that are shown.
    const lines: Given[] = ph
        ? round(u.showT(0.75 * T), u.showT(1.6 * T), 6).map((value) => ({ T: u.readT(value) }))
        : [0.05, 0.25, 1, 4].map((f) => ({ p: u.readP(Number(u.showP(f * p).toPrecision(1))) }));
    const result = 'flash' in model ? await model.diagram(z, lines, 60, options) : await model.diagram(lines, 60, options);
    result.components = info.components.map((c) => c.name);
    const masses = info.components.map((c) => c.M), M = masses.reduce((sum, of, i) => sum + z[i]! * of, 0);
    const xOf = (h: number, s: number) => (ph ? u.showH(h, M) : u.showS(s, M)), yOf = (T: number, p: number) => (ph ? u.showP(p) : u.showT(T));
    const labels: Curve = { name: 'labels', x: [], y: [], colour: -2, marks: true, hidden: true, labels: [] };
    const of = ph ? `isotherms [${u.T}]` : `isobars [${u.p}]`;
    const curves = result.lines
        .filter((line) => line.points > 0)
        .map((line): Curve => {
            const { h = [], s = [] } = line.whole, T = values(line, 'T'), p = values(line, 'p');
            const x = Array.from(T, (_, k) => xOf(h[k]!, s[k]!)), y = Array.from(T, (_, k) => yOf(T[k]!, p[k]!));
            if (!isoline(line)) return { name: line.kind, x, y, colour: colourOf(line.kind), marks: line.points === 1, smooth: true };
            const value = String(Number((ph ? u.showT(T[0]!) : u.showP(p[0]!)).toPrecision(4)));
            const top = y.reduce((best, value, k) => (value > y[best]! ? k : best), 0);
            (labels.x as number[]).push(x[top]!);
            (labels.y as number[]).push(y[top]!);
            labels.labels!.push(value);
            return { name: of, x, y, colour: colourOf(line.kind), thin: true, notes: y.map(() => `${value} ${ph ? u.T : u.p}`) };
        });
    // Bubble and dew points end before the critical point, where they meet.
    const critical = await criticalState(model, z, info, options);
    if (critical) {
        const x = xOf(critical.h!, critical.s!), y = yOf(critical.T!, critical.p!);
        for (const curve of curves) {
            if (curve.name !== 'liquid' && curve.name !== 'vapour') continue;
            const ys = curve.y as number[], last = ys.length - 1;
            const atEnd = Math.abs(ys[last]! - y) < Math.abs(ys[0]! - y);
            (curve.x as number[]).splice(atEnd ? last + 1 : 0, 0, x);
            ys.splice(atEnd ? last + 1 : 0, 0, y);
        }
        curves.push({ name: 'critical point', x: [x], y: [y], colour: colourOf('critical'), marks: true });
    }
    return {
        title: `${ph ? 'Pressure and enthalpy' : 'Temperature and entropy'} of ${title(info, z)}`,
        xTitle: ph ? `h [${u.h}]` : `s [${u.s}]`, yTitle: ph ? `p [${u.p}]` : `T [${u.T}]`, logY: ph,
        curves: [...curves, labels], labelsAt: 'top center', table: () => tableOf(result, u, masses, M),
        certificate: evidenceOf(result, 'no state of the isolines is missing'), complete: result.complete,
    };
}

/** The phase at the critical point; nothing where there is none, or more than the one that counts. */
async function criticalState(model: Fluid | Mixture, z: number[], info: ModelInfo, options: CallOptions): Promise<Point['phases'][number] | undefined> {
    try {
        if ('flash' in model) {
            const found = await model.criticalPoint(z, options);
            if (found.flags.includes('unstable')) return undefined;
            return (await model.phase(found.T!, found.rho!, z, options)).phases[0];
        }
        const { T_critical, rho_critical } = info.components[0]!;
        return (await model.phase(T_critical, rho_critical, options)).phases[0];
    } catch (error) {
        if (error instanceof CorvaneFailure && error.kind !== 'cancelled') return undefined;
        throw error;
    }
}

function title({ components }: ModelInfo, z: number[]): string {
    return components.length === 1 ? components[0]!.written : components.map(({ written }, i) => `${written} (${Number(z[i]!.toPrecision(4))})`).join(' + ');
}

/** As the command names them: by falling density, a single phase and a second dense one by the reduced density. */
function namesOfPhases(point: Point, info: ModelInfo): string[] {
    const reduced = (phase: Point['phases'][number]) => phase.rho! * info.components.reduce((sum, c, i) => sum + phase.x[i]! / c.rho_critical, 0);
    if (point.phases.length === 1) return [reduced(point.phases[0]!) < 1 ? 'vapour' : 'liquid'];
    return point.phases.map((phase, k) => (k === 0 ? 'liquid' : reduced(phase) > 1.5 ? `liquid ${k + 1}` : 'vapour'));
}

async function flash(corvane: Corvane, state: State, u: Units, info: ModelInfo, options: CallOptions): Promise<View> {
    const z = pure(state) ? [1] : composition(state);
    const model = pure(state) ? fluidOf(corvane, state) : mixtureOf(corvane, state);
    const point: Point = 'flash' in model ? await model.flash(z, { p: state.p, T: state.T }, options) : await model.state({ T: state.T, p: state.p }, options);
    const names = info.components.map((c) => c.name);
    const phases = namesOfPhases(point, info);
    type Of = (phase: Point['phases'][number]) => number | undefined;
    const row = (name: string, of: Of, whole?: number) => [name, ...point.phases.map((phase) => of(phase) ?? ''), whole ?? ''];
    const M = info.components.reduce((sum, c, i) => sum + z[i]! * c.M, 0);
    type Show = (value: number, M: number) => number;
    const shown = (name: string, key: 'rho' | 'h' | 's' | 'cp', show: Show, whole?: number) =>
        row(name, (phase) => (phase[key] === undefined ? undefined : show(phase[key], phase.M ?? NaN)), whole === undefined ? undefined : show(whole, M));
    return {
        title: `Flash of ${title(info, z)} at ${Number(u.showT(state.T).toPrecision(6))} ${u.T} and ${Number(u.showP(state.p).toPrecision(6))} ${u.p}: ${point.phases.length} phase${point.phases.length === 1 ? '' : 's'}`,
        xTitle: '', yTitle: '', curves: [], tableOnly: true, complete: true,
        table: () => ({
            header: ['', ...phases, 'whole'],
            rows: [
                row('amount', (phase) => phase.fraction ?? (point.phases.length === 1 ? 1 : undefined), 1),
                ...names.map((name, i) => row(`x(${name})`, (phase) => phase.x[i], z[i])),
                shown(`rho [${u.rho}]`, 'rho', u.showRho, point.rho), row('Z', (phase) => phase.Z),
                shown(`h [${u.h}]`, 'h', u.showH, point.h), shown(`s [${u.s}]`, 's', u.showS, point.s),
                shown(`cp [${u.s}]`, 'cp', u.showS), row('w [m/s]', (phase) => phase.w),
            ],
        }),
        certificate: [point.certificate, ...point.flags].filter(Boolean),
    };
}

/** info: of the model that the state names. */
export async function compute(corvane: Corvane, state: State, u: Units, info: ModelInfo, options: CallOptions): Promise<View> {
    if (!Number.isFinite(state.T) || state.T <= 0) throw new CorvaneFailure('bad argument', 'The temperature must be above absolute zero.');
    if (!Number.isFinite(state.p) || state.p <= 0) throw new CorvaneFailure('bad argument', 'The pressure must be above zero.');
    if (state.tab === 'flash') return flash(corvane, state, u, info, options);
    if (state.tab === 'ph' || state.tab === 'Ts') return property(corvane, state, u, info, options);
    if (pure(state) && state.tab !== 'envelope')
        throw new CorvaneFailure('bad argument', 'This diagram is of two substances: name a second one.');
    const masses = info.components.map((c) => c.M), written = info.components.map((c) => c.written);
    const pTtitles = { xTitle: `T [${u.T}]`, yTitle: `p [${u.p}]` };
    if (pure(state)) {
        const fluid = fluidOf(corvane, state);
        const result = await fluid.diagram([], 0, options);
        result.components = info.components.map((c) => c.name);
        const line = { ...result, lines: result.lines.filter((l) => l.kind === 'liquid') };
        return { title: `Vapour pressure of ${written[0]}`, ...pTtitles, curves: pT(line, u, 'vapour pressure'), table: () => tableOf(result, u, masses), certificate: evidenceOf(result), complete: result.complete };
    }
    const mixture = mixtureOf(corvane, state);
    if (state.tab === 'projection') return projection(corvane, state, u, masses, written, options);
    if (state.tab === 'envelope') {
        const result = await mixture.envelope(composition(state), { all: true }, options);
        return { title: `Phase envelope of ${title(info, composition(state))}`, ...pTtitles, curves: pT(result, u), table: () => tableOf(result, u, masses), certificate: evidenceOf(result), complete: result.complete };
    }
    const atT = state.tab === 'pxy';
    const upTo = `${Number(u.showP(highest).toPrecision(4))} ${u.p}`;
    const result = atT ? await mixture.pxy(state.T, { p_max: highest }, options) : await mixture.Txy(state.p, {}, options);
    return {
        title: `${written.join(' + ')} at ${atT ? `${Number(u.showT(state.T).toPrecision(6))} ${u.T}` : `${Number(u.showP(state.p).toPrecision(6))} ${u.p}`}`,
        xTitle: `x, y (${written[0]})`, fractions: true, yTitle: atT ? `p [${u.p}]` : `T [${u.T}]`,
        curves: isopleth(result, u, atT ? 'p' : 'T'), labelsAt: 'top center', ...(atT && cutAt(result, u, 1.5)),
        table: () => tableOf(result, u, masses), complete: result.complete,
        certificate: evidenceOf(result, `every line is followed to an end that is explained${atT ? `, up to ${upTo}` : ''}`),
    };
}

async function projection(corvane: Corvane, state: State, u: Units, masses: number[], written: string[], options: CallOptions): Promise<View> {
    const mixture = mixtureOf(corvane, state);
    const curves: Curve[] = [], all: Result = { components: [], lines: [], complete: true };
    for (const [k, substance] of [state.a, state.b].entries()) {
        const result = await fluidOf(corvane, state, substance).diagram([], 0, options);
        const lines = result.lines.filter((line) => line.kind === 'liquid');
        curves.push(...pT({ ...result, lines }, u, `vapour pressure of ${written[k]}`, k).map((curve) => ({ ...curve, dashed: true })));
    }
    for (const lines of ['criticalLines', 'threePhaseLines', 'azeotropicLines'] as const) {
        const result = await mixture[lines]({ p_max: highest }, options);
        all.components = result.components;
        all.lines.push(...result.lines);
        all.complete &&= result.complete;
    }
    curves.push(...pT(all, u));
    return {
        title: `p-T projection of ${written.join(' + ')}`, ...cutAt(all, u, 3), xTitle: `T [${u.T}]`, yTitle: `p [${u.p}]`,
        curves, table: () => tableOf(all, u, masses), certificate: evidenceOf(all), complete: all.complete,
    };
}

// What each tab computes and how its curves are drawn.
import type { CallOptions, Corvane } from '../src/client.js';
import { CorvaneFailure, flagsOf, type Given, type Line, type Point, type Result } from '../src/types.js';
import type { Table } from './csv.js';
import type { State, Tab, Units } from './state.js';
import { colourOf } from './plot.js';

export interface Curve {
    name: string;
    x: ArrayLike<number>;
    y: ArrayLike<number>;
    colour: number;
    /** Marks instead of a line. */
    marks?: boolean;
    dashed?: boolean;
    thin?: boolean;
    hidden?: boolean; // from the legend
    text?: string[];
}
export interface View {
    title: string;
    xTitle: string;
    yTitle: string;
    logY?: boolean;
    curves: Curve[];
    table: Table;
    certificate: string[];
    complete: boolean;
    /** Nothing to draw. */
    tableOnly?: boolean;
}

/** What own data mean in a tab. */
export const ownColumns: Record<Tab, string> = {
    pxy: 'mole fraction of substance 1, pressure', Txy: 'mole fraction of substance 1, temperature',
    projection: 'temperature, pressure', envelope: 'temperature, pressure', ph: 'enthalpy in kJ/mol, pressure',
    Ts: 'entropy in J/(mol K), temperature', flash: '—',
};

const pure = (state: State) => state.b.trim() === '';

export function fluidOf(corvane: Corvane, state: State, substance = state.a) {
    return corvane.fluid(substance, state.model.split('+')[0]);
}
export function mixtureOf(corvane: Corvane, state: State) {
    const mixture = corvane.mixture(state.model, [state.a, state.b]);
    return state.kij === null ? mixture : mixture.withPair(0, 1, state.kij);
}
const composition = (state: State) => {
    if (!(state.z >= 0 && state.z <= 1)) throw new CorvaneFailure('bad argument', 'A mole fraction is from 0 to 1.');
    return [state.z, 1 - state.z];
};

const values = (line: Line, name: 'T' | 'p'): Float64Array => line.whole[name] ?? line.phases[0]?.[name] ?? new Float64Array(0);
const largest = (column: Float64Array | undefined) =>
    column ? column.reduce((most, x) => (Number.isNaN(x) ? most : Math.max(most, Math.abs(x))), 0) : undefined;

function lineName(line: Line, components: string[]): string {
    const solid = /^solid (\d)/.exec(line.kind);
    return solid ? `solid ${components[Number(solid[1])]}` : line.kind;
}

/** The evidence of all lines, in sentences. */
function evidenceOf(result: Result): string[] {
    const told = [result.complete ? 'Complete: every line is explained at both ends.' : 'Not complete: a line ends early, or a split was not traced.'];
    for (const line of result.lines) {
        const parts = [`${lineName(line, result.components)}: ${line.points} point${line.points === 1 ? '' : 's'}`];
        if (line.begin || line.end) parts.push(`from ${line.begin || '—'} to ${line.end || '—'}`);
        const dmu = largest(line.whole.dmu), dp = largest(line.whole.dp);
        if (dmu !== undefined) parts.push(`largest |Δμ|/RT ${dmu.toExponential(1)}`);
        if (dp !== undefined) parts.push(`largest |Δp|/p ${dp.toExponential(1)}`);
        const flags = new Set([...line.flags].flatMap(flagsOf));
        flags.delete('bubble');
        if (flags.size) parts.push([...flags].join(', '));
        told.push(`${parts.join('; ')}.`, ...line.certificates.filter(Boolean));
    }
    return told;
}

function tableOf(result: Result): Table {
    const names = result.components;
    const rows: (string | number)[][] = [];
    const phases = Math.max(0, ...result.lines.map((line) => line.phases.length));
    for (const line of result.lines)
        for (let k = 0; k < line.points; ++k) {
            const row: (string | number)[] = [lineName(line, names), values(line, 'T')[k] ?? '', values(line, 'p')[k] ?? ''];
            for (let phase = 0; phase < phases; ++phase) {
                const of = line.phases[phase];
                row.push(...names.map((_, i) => of?.x[i]?.[k] ?? ''), of?.rho?.[k] ?? '');
            }
            for (const extra of ['h', 's'] as const) row.push(line.whole[extra]?.[k] ?? '');
            rows.push(row.map((value) => (Number.isNaN(value) ? '' : value)));
        }
    const header = ['line', 'T [K]', 'p [MPa]'];
    for (let phase = 1; phase <= phases; ++phase) header.push(...names.map((name) => `x(${name}) ${phase}`), `rho ${phase} [mol/cm3]`);
    return { header: [...header, 'h [J/mol]', 's [J/(mol K)]'], rows };
}

function isopleth(result: Result, u: Units, at: 'T' | 'p'): Curve[] {
    const curves: Curve[] = [];
    for (const line of result.lines) {
        const y = Float64Array.from(at === 'T' ? values(line, 'p') : values(line, 'T'), at === 'T' ? u.showP : u.showT);
        if (line.phases.length === 0 || line.points === 0) continue;
        const colour = colourOf(line.kind);
        if (line.kind === 'azeotropes' || line.kind === 'three-phase' || line.kind === 'open') {
            line.phases.forEach((phase, k) => curves.push({ name: line.kind, x: phase.x[0]!, y, colour, marks: true, hidden: k > 0 }));
            if (line.kind === 'three-phase')
                for (let k = 0; k < line.points; ++k)
                    curves.push({ name: line.kind, x: line.phases.map((phase) => phase.x[0]![k]!), y: line.phases.map(() => y[k]!), colour, hidden: true });
            continue;
        }
        // Tie lines first, below the curves.
        const step = Math.max(1, Math.ceil(line.points / 14));
        for (let k = 0; k < line.points; k += step)
            curves.push({ name: 'tie line', x: line.phases.map((phase) => phase.x[0]![k]!), y: line.phases.map(() => y[k]!), colour: -1, thin: true, hidden: true });
        const [one, other] = line.kind === 'vapour-liquid' ? ['liquid', 'vapour'] : line.kind === 'liquid-liquid' ? ['liquid 1', 'liquid 2'] : ['fluid 1', 'fluid 2'];
        curves.push({ name: one!, x: line.phases[0]!.x[0]!, y, colour });
        if (line.phases[1]) curves.push({ name: other!, x: line.phases[1].x[0]!, y, colour: colour + 1 });
    }
    return curves;
}

function pT(result: Result, u: Units, name?: string): Curve[] {
    return result.lines
        .filter((line) => line.points > 0)
        .map((line) => ({
            name: name ?? lineName(line, result.components),
            x: Float64Array.from(values(line, 'T'), u.showT),
            y: Float64Array.from(values(line, 'p'), u.showP),
            colour: colourOf(line.kind),
            marks: line.points === 1 || /cricondenbar|cricondentherm/.test(line.kind) || (line.kind === 'critical' && line.points < 4),
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

async function property(corvane: Corvane, state: State, u: Units, options: CallOptions): Promise<View> {
    const ph = state.tab === 'ph';
    const z = pure(state) ? [1] : composition(state);
    const model = pure(state) ? fluidOf(corvane, state) : mixtureOf(corvane, state);
    const info = await model.info(options);
    if (!info.ideal) throw new CorvaneFailure('bad argument', 'Enthalpy and entropy need ideal-gas tables, which are missing for this choice.');
    const T = info.components.reduce((sum, c, i) => sum + z[i]! * c.T_critical, 0);
    const p = info.components.reduce((sum, c, i) => sum + z[i]! * c.p_critical, 0);
    const lines: Given[] = ph ? round(0.75 * T, 1.6 * T, 6).map((value) => ({ T: value })) : [0.05, 0.2, 0.5, 1, 2, 5].map((f) => ({ p: Number((f * p).toPrecision(1)) }));
    const result = 'flash' in model ? await model.diagram(z, lines, 60, options) : await model.diagram(lines, 60, options);
    result.components = info.components.map((c) => c.name);
    const curves = result.lines
        .filter((line) => line.points > 0)
        .map((line): Curve => {
            const isoline = line.kind !== 'liquid' && line.kind !== 'vapour' && line.kind !== 'critical';
            const name = line.kind === 'isotherm' ? `${u.showT(line.whole.T![0]!).toPrecision(4)} ${u.T}` : line.kind === 'isobar' ? `${u.showP(line.whole.p![0]!).toPrecision(3)} ${u.p}` : line.kind;
            return {
                name,
                x: ph ? Float64Array.from(line.whole.h ?? [], (h) => h / 1000) : (line.whole.s ?? []),
                y: ph ? Float64Array.from(values(line, 'p'), u.showP) : Float64Array.from(values(line, 'T'), u.showT),
                colour: colourOf(line.kind), thin: isoline, hidden: isoline, marks: line.points === 1,
                text: Array<string>(line.points).fill(name),
            };
        });
    return {
        title: `${ph ? 'Pressure and enthalpy' : 'Temperature and entropy'} of ${title(result.components, z)}`,
        xTitle: ph ? 'h [kJ/mol]' : 's [J/(mol K)]', yTitle: ph ? `p [${u.p}]` : `T [${u.T}]`, logY: ph,
        curves, table: tableOf(result), certificate: evidenceOf(result), complete: result.complete,
    };
}

function title(components: string[], z: number[]): string {
    return components.length === 1 ? components[0]! : components.map((name, i) => `${name} (${Number(z[i]!.toPrecision(4))})`).join(' + ');
}

async function flash(corvane: Corvane, state: State, u: Units, options: CallOptions): Promise<View> {
    const z = pure(state) ? [1] : composition(state);
    const model = pure(state) ? fluidOf(corvane, state) : mixtureOf(corvane, state);
    const info = await model.info(options);
    const point: Point = 'flash' in model ? await model.flash(z, { p: state.p, T: state.T }, options) : await model.state({ T: state.T, p: state.p }, options);
    const names = info.components.map((c) => c.name);
    const phases = point.phases.map((_, k) => (point.phases.length === 1 ? 'the only phase' : `phase ${k + 1}`));
    const row = (name: string, of: (phase: Point['phases'][number]) => number | undefined, whole?: number) => [name, ...point.phases.map((phase) => of(phase) ?? ''), whole ?? ''];
    return {
        title: `Flash of ${title(names, z)} at ${Number(u.showT(state.T).toPrecision(6))} ${u.T} and ${Number(u.showP(state.p).toPrecision(6))} ${u.p}: ${point.phases.length} phase${point.phases.length === 1 ? '' : 's'}`,
        xTitle: '', yTitle: '', curves: [], tableOnly: true, complete: true,
        table: {
            header: ['', ...phases, 'the whole'],
            rows: [
                row('amount', (phase) => phase.fraction ?? (point.phases.length === 1 ? 1 : undefined), 1),
                ...names.map((name, i) => row(`x(${name})`, (phase) => phase.x[i], z[i])),
                row('rho [mol/cm3]', (phase) => phase.rho, point.rho), row('Z', (phase) => phase.Z),
                row('h [J/mol]', (phase) => phase.h, point.h), row('s [J/(mol K)]', (phase) => phase.s, point.s),
                row('cp [J/(mol K)]', (phase) => phase.cp), row('w [m/s]', (phase) => phase.w),
            ],
        },
        certificate: [point.certificate, ...point.flags].filter(Boolean),
    };
}

export async function compute(corvane: Corvane, state: State, u: Units, options: CallOptions): Promise<View> {
    if (!Number.isFinite(state.T) || state.T <= 0) throw new CorvaneFailure('bad argument', 'The temperature must be above absolute zero.');
    if (!Number.isFinite(state.p) || state.p <= 0) throw new CorvaneFailure('bad argument', 'The pressure must be above zero.');
    if (state.tab === 'flash') return flash(corvane, state, u, options);
    if (state.tab === 'ph' || state.tab === 'Ts') return property(corvane, state, u, options);
    if (pure(state) && state.tab !== 'envelope')
        throw new CorvaneFailure('bad argument', 'This diagram is of two substances: name a second one.');
    const pTtitles = { xTitle: `T [${u.T}]`, yTitle: `p [${u.p}]` };
    if (pure(state)) {
        const fluid = fluidOf(corvane, state);
        const result = await fluid.diagram([], 0, options);
        result.components = (await fluid.info(options)).components.map((c) => c.name);
        const line = { ...result, lines: result.lines.filter((l) => l.kind === 'liquid') };
        return { title: `Vapour pressure of ${result.components[0]}`, ...pTtitles, curves: pT(line, u, 'vapour pressure'), table: tableOf(result), certificate: evidenceOf(result), complete: result.complete };
    }
    const mixture = mixtureOf(corvane, state);
    if (state.tab === 'projection') return projection(corvane, state, u, options);
    if (state.tab === 'envelope') {
        const result = await mixture.envelope(composition(state), {}, options);
        return { title: `Phase envelope of ${title(result.components, composition(state))}`, ...pTtitles, curves: pT(result, u), table: tableOf(result), certificate: evidenceOf(result), complete: result.complete };
    }
    const atT = state.tab === 'pxy';
    const result = atT ? await mixture.pxy(state.T, {}, options) : await mixture.Txy(state.p, {}, options);
    return {
        title: `${result.components.join(' + ')} at ${atT ? `${Number(u.showT(state.T).toPrecision(6))} ${u.T}` : `${Number(u.showP(state.p).toPrecision(6))} ${u.p}`}`,
        xTitle: `x, y (${result.components[0]})`, yTitle: atT ? `p [${u.p}]` : `T [${u.T}]`,
        curves: isopleth(result, u, atT ? 'T' : 'p'), table: tableOf(result), certificate: evidenceOf(result), complete: result.complete,
    };
}

async function projection(corvane: Corvane, state: State, u: Units, options: CallOptions): Promise<View> {
    const mixture = mixtureOf(corvane, state);
    const curves: Curve[] = [], all: Result = { components: [], lines: [], complete: true };
    for (const substance of [state.a, state.b]) {
        const result = await fluidOf(corvane, state, substance).diagram([], 0, options);
        const lines = result.lines.filter((line) => line.kind === 'liquid');
        curves.push(...pT({ ...result, lines }, u, `vapour pressure of ${substance}`).map((curve) => ({ ...curve, dashed: true })));
    }
    for (const lines of ['criticalLines', 'threePhaseLines', 'azeotropicLines'] as const) {
        const result = await mixture[lines]({ p_max: 100 }, options);
        all.components = result.components;
        all.lines.push(...result.lines);
        all.complete &&= result.complete;
    }
    curves.push(...pT(all, u));
    return {
        title: `p-T projection of ${all.components.join(' + ')}`, xTitle: `T [${u.T}]`, yTitle: `p [${u.p}]`,
        curves, table: tableOf(all), certificate: evidenceOf(all), complete: all.complete,
    };
}

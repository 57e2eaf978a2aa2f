// The library in the thread that calls it: what the worker runs. Models stay open between calls.
import { Frame, type CreateModule, type Module } from './module.js';
import type { Files } from './data.js';
import {
    CorvaneFailure, evidence, lineEnds, lineKinds, phaseProperties, wholeProperties,
    type Branch, type FluidRequest, type Given, type Line, type MixtureRequest, type ModelInfo, type Result,
} from './types.js';

const branches: Branch[] = ['any', 'lower', 'upper'];
const quantities = ['T', 'p', 'rho', 'h', 's', 'u', 'q'] as const;
const kept = 16; // open models
const certified = 16; // points of a line whose certificates are told in words
const number = { M: 0, T_critical: 1, p_critical: 2, rho_critical: 3, set: 4, T_min: 5, T_max: 6, p_max: 7, ideal: 8 };
const text = { model: 0, substance: 1, source: 2 };
const whole = -1, firstEvidence = phaseProperties.length, mole = 1000;

interface Open {
    handle: number;
    /** Binary parameters as they are stored, by "i j k"; of mixtures. */
    stored: Map<string, number>;
}

export class Engine {
    private readonly open = new Map<string, Open>();
    /** Rows of tables by path and name. */
    private readonly tables = new Map<string, Map<string, string>>();
    private constructor(private readonly m: Module) {}

    /** binary: corvane.wasm. */
    static async create(create: CreateModule, binary: BufferSource): Promise<Engine> {
        return new Engine(await create({ wasmBinary: binary }));
    }

    addFiles(files: Files): void {
        for (const [path, content] of Object.entries(files)) {
            this.m.FS.mkdirTree(`/${path.slice(0, path.lastIndexOf('/'))}`);
            this.m.FS.writeFile(`/${path}`, path.endsWith('/collected.tsv') ? this.collected(path, content) : content);
        }
    }
    /** A table whose rows stand for files, with the rows of all packs so far in their order. */
    private collected(path: string, content: string): string {
        const [title, ...rows] = content.split('\n').filter(Boolean);
        const known = this.tables.get(path) ?? new Map<string, string>();
        this.tables.set(path, known);
        for (const row of rows) known.set(row.slice(0, row.indexOf('\t')), row);
        const order = [...known.keys()].sort();
        return [title, ...order.map((name) => known.get(name)), ''].join('\n');
    }
    onProgress(told: ((points: number) => void) | undefined): void {
        this.m.onProgress = told;
    }

    /** The name in the data tree; a failure says what is near. */
    substance(named: string): string {
        return Frame.with(this.m, (f) => f.textOf('corvane_web_substance', f.text(named)));
    }
    search(part: string): string[] {
        return Frame.with(this.m, (f) => f.textOf('corvane_web_search', f.text(part)).split('\n').filter(Boolean));
    }

    // ---- pure fluids

    fluidInfo(request: FluidRequest): ModelInfo {
        const { handle } = this.fluid(request);
        return Frame.with(this.m, (f) => {
            const value = (what: number) => f.call('Corvane_Fluid_number', handle, what);
            const told = (what: number) => f.textOf('Corvane_Fluid_text', handle, what);
            const component = {
                name: told(text.substance), M: value(number.M), T_critical: value(number.T_critical),
                p_critical: value(number.p_critical), rho_critical: value(number.rho_critical),
                set: value(number.set), source: told(text.source), idealSource: f.textOf('corvane_web_ideal_source', handle),
                written: '', file: '', mixingFile: '', mixingSource: '',
            };
            component.written = f.textOf('corvane_web_written', f.text(component.name));
            component.file = this.file(f, told(text.model), component);
            return {
                model: told(text.model), components: [component], pairs: [], T_min: value(number.T_min),
                T_max: value(number.T_max), p_max: value(number.p_max), ideal: value(number.ideal) === 1,
            };
        });
    }
    states(request: FluidRequest, given: Given): Result {
        const [[first, a], [second, b]] = two(given);
        return this.ofFluid(request, 'Corvane_pure_states', quantities.indexOf(first), a, quantities.indexOf(second), b);
    }
    saturation(request: FluidRequest, given: Given): Result {
        const [name, value] = one(given, 'T', 'p');
        return this.ofFluid(request, `Corvane_pure_saturation_${name}`, value);
    }
    phase(request: FluidRequest, T: number, rho: number): Result {
        return this.ofFluid(request, 'Corvane_pure_phase', T, rho);
    }
    diagram(request: FluidRequest, lines: Given[], points = 0): Result {
        const { handle } = this.fluid(request);
        return Frame.with(this.m, (f) =>
            this.result(f, 'Corvane_pure_property_diagram', handle, ...isolines(f, lines), points, this.progress(), 0));
    }

    // ---- mixtures

    mixtureInfo(request: MixtureRequest): ModelInfo {
        const { handle, stored } = this.mixture(request);
        return Frame.with(this.m, (f) => {
            const value = (what: number, i: number) => f.call('Corvane_Mixture_number', handle, what, i);
            const told = (what: number, i: number) => f.textOf('Corvane_Mixture_text', handle, what, i);
            const components = request.components.map((_, i) => ({
                name: told(text.substance, i), M: value(number.M, i), T_critical: value(number.T_critical, i),
                p_critical: value(number.p_critical, i), rho_critical: value(number.rho_critical, i),
                set: value(number.set, i), source: told(text.source, i), idealSource: f.textOf('corvane_web_gas_source', handle, i),
                written: '', file: '', mixingFile: f.textOf('corvane_web_mixing_file', handle, i), mixingSource: f.textOf('corvane_web_mixing_source', handle, i),
            }));
            for (const component of components) {
                component.written = f.textOf('corvane_web_written', f.text(component.name));
                component.file = this.file(f, request.model.split('+')[0]!, component);
            }
            const pairs: ModelInfo['pairs'] = [];
            const count = f.call('corvane_web_pair_count', handle);
            for (let j = 1; j < components.length; ++j)
                for (let i = 0; i < j; ++i) {
                    const each = [...Array(count).keys()];
                    pairs.push({
                        i, j,
                        values: each.map((k) => f.call('corvane_web_pair_get', handle, i, j, k)),
                        stored: each.map((k) => stored.get(`${i} ${j} ${k}`)!),
                        estimated: f.call('Corvane_Mixture_estimated', handle, i, j) === 1,
                        source: count > 0 ? f.textOf('corvane_web_pair_source', handle, i, j) : '',
                        file: count > 0 ? f.textOf('corvane_web_pair_file', handle, i, j) : '',
                    });
                }
            return {
                model: told(text.model, 0), components, pairs, T_min: value(number.T_min, 0),
                T_max: value(number.T_max, 0), p_max: value(number.p_max, 0), ideal: value(number.ideal, 0) === 1,
            };
        });
    }
    private file(f: Frame, equation: string, { name, set }: { name: string; set: number }): string {
        return f.textOf('corvane_web_set_file', f.text(equation), f.text(name), set);
    }
    flash(request: MixtureRequest, z: number[], given: Given): Result {
        const known = new Map(two(given));
        for (const pair of [['p', 'T'], ['p', 'h'], ['p', 's'], ['T', 'rho']] as const)
            if (known.has(pair[0]) && known.has(pair[1]))
                return this.ofMixture(request, `Corvane_flash_${pair.join('')}`, [known.get(pair[0])!, known.get(pair[1])!], z);
        throw new CorvaneFailure('bad argument', 'a flash needs p and T, p and h, p and s, or T and rho');
    }
    bubble(request: MixtureRequest, z: number[], given: Given, branch: Branch = 'any'): Result {
        const [name, value] = one(given, 'T', 'p');
        return this.ofMixture(request, `Corvane_bubble_${name}`, [value], z, branches.indexOf(branch));
    }
    dew(request: MixtureRequest, z: number[], given: Given, branch: Branch = 'any'): Result {
        const [name, value] = one(given, 'T', 'p');
        return this.ofMixture(request, `Corvane_dew_${name}`, [value], z, branches.indexOf(branch));
    }
    mixturePhase(request: MixtureRequest, T: number, rho: number, z: number[]): Result {
        return this.ofMixture(request, 'Corvane_mixture_phase', [T, rho], z);
    }
    envelope(request: MixtureRequest, z: number[], p_start = 0, p_max = 0, all = false): Result {
        return this.ofMixture(request, 'Corvane_envelope', [], z, p_start, p_max, all ? 1 : 0, this.progress(), 0);
    }
    criticalPoint(request: MixtureRequest, z: number[]): Result {
        return this.ofMixture(request, 'Corvane_critical_point', [], z);
    }
    criticalPoints(request: MixtureRequest, z: number[]): Result {
        return this.ofMixture(request, 'Corvane_critical_points', [], z);
    }
    pxy(request: MixtureRequest, T: number, p_max = 0): Result {
        return this.ofBinary(request, 'Corvane_diagram_pxy', T, p_max);
    }
    Txy(request: MixtureRequest, p: number, T_min = 0): Result {
        return this.ofBinary(request, 'Corvane_diagram_Txy', p, T_min);
    }
    criticalLines(request: MixtureRequest, p_max = 0): Result {
        return this.ofBinary(request, 'Corvane_critical_lines', p_max);
    }
    threePhaseLines(request: MixtureRequest, p_max = 0): Result {
        return this.ofBinary(request, 'Corvane_three_phase_lines', p_max);
    }
    azeotropicLines(request: MixtureRequest, p_max = 0): Result {
        return this.ofBinary(request, 'Corvane_azeotropic_lines', p_max);
    }
    ternary(request: MixtureRequest, p: number, T: number, step = 0, mesh = 0): Result {
        return this.ofBinary(request, 'Corvane_ternary', p, T, step, mesh);
    }
    mixtureDiagram(request: MixtureRequest, z: number[], lines: Given[], points = 0): Result {
        const { handle } = this.mixture(request);
        return Frame.with(this.m, (f) =>
            this.result(f, 'Corvane_property_diagram', handle, f.doubles(z), z.length, ...isolines(f, lines), points,
                this.progress(), 0));
    }

    // ---- handles

    private keep(key: string, make: () => Open): Open {
        let model = this.open.get(key);
        if (model) this.open.delete(key); // the newest stands last
        else model = make();
        this.open.set(key, model);
        if (this.open.size > kept) {
            const [oldest, gone] = this.open.entries().next().value!;
            this.open.delete(oldest);
            this.m._Corvane_release!(gone.handle);
        }
        return model;
    }

    private fluid(request: FluidRequest): Open {
        const { equation = '', substance, set = 0 } = request;
        return this.keep(JSON.stringify(['fluid', equation, substance, set]), () =>
            Frame.with(this.m, (f) => ({
                handle: f.call('Corvane_open', f.text(equation), f.text(substance), set, f.text('/')),
                stored: new Map<string, number>(),
            })));
    }

    /** The mixture with the binary parameters that the request names, the others as they are stored. */
    private mixture(request: MixtureRequest): Open {
        const { model, components, sets, pairSet = 0, estimate = true, pairs = [] } = request;
        const open = this.keep(JSON.stringify(['mixture', model, components, sets ?? [], pairSet, estimate]), () =>
            Frame.with(this.m, (f) => {
                const names = f.integers(components.map((name) => f.text(name)));
                const handle = f.call('Corvane_open_mixture', f.text(model), components.length, names,
                    sets ? f.integers(sets) : 0, pairSet, estimate ? 1 : 0, f.text('/'));
                const stored = new Map<string, number>();
                const count = f.call('corvane_web_pair_count', handle);
                for (let j = 1; j < components.length; ++j)
                    for (let i = 0; i < j; ++i)
                        for (let k = 0; k < count; ++k)
                            stored.set(`${i} ${j} ${k}`, f.call('corvane_web_pair_get', handle, i, j, k));
                return { handle, stored };
            }));
        Frame.with(this.m, (f) => {
            const set = (i: number, j: number, k: number, value: number) =>
                f.call('corvane_web_pair_set', open.handle, i, j, k, value);
            for (const [key, value] of open.stored) {
                const [i, j, k] = key.split(' ').map(Number) as [number, number, number];
                set(i, j, k, value);
            }
            for (const { i, j, index = 0, value } of pairs) set(i, j, index, value);
        });
        return open;
    }

    // ---- calls

    private progress(): number {
        return this.m._corvane_web_progress!();
    }
    private ofFluid(request: FluidRequest, name: string, ...values: number[]): Result {
        const { handle } = this.fluid(request);
        return Frame.with(this.m, (f) => this.result(f, name, handle, ...values));
    }
    private ofMixture(request: MixtureRequest, name: string, before: number[], z: number[], ...after: number[]): Result {
        const { handle } = this.mixture(request);
        return Frame.with(this.m, (f) => this.result(f, name, handle, ...before, f.doubles(z), z.length, ...after));
    }
    private ofBinary(request: MixtureRequest, name: string, ...values: number[]): Result {
        const { handle } = this.mixture(request);
        return Frame.with(this.m, (f) => this.result(f, name, handle, ...values, this.progress(), 0));
    }

    private result(f: Frame, name: string, ...values: number[]): Result {
        const r = f.call(name, ...values);
        try {
            const components = this.m._Corvane_Result_components!(r);
            const lines = [...Array(this.m._Corvane_Result_lines!(r)).keys()].map((k) => this.line(f, r, k, components));
            return { components: [], lines, complete: this.m._Corvane_Result_complete!(r) === 1 };
        } finally {
            this.m._Corvane_release!(r);
        }
    }

    private line(f: Frame, r: number, line: number, components: number): Line {
        const points = f.call('Corvane_Result_points', r, line);
        const buffer = f.block(8 * points);
        const column = (phase: number, property: number): Float64Array => {
            f.call('Corvane_Result_column', r, line, phase, property, buffer, points);
            return this.m.HEAPF64.slice(buffer / 8, buffer / 8 + points);
        };
        const columns = (phase: number, names: readonly string[], first: number): Record<string, Float64Array> => {
            const some: Record<string, Float64Array> = {};
            names.forEach((name, k) => {
                const values = column(phase, first + k);
                if (values.some((x) => !Number.isNaN(x))) some[name] = values;
            });
            return some;
        };
        const each = [...Array(points).keys()];
        const phases = Math.max(0, ...each.map((point) => f.call('Corvane_Result_phases', r, line, point)));
        return {
            kind: lineKinds[f.call('Corvane_Result_kind', r, line)]!,
            begin: lineEnds[f.call('Corvane_Result_begin', r, line)]!,
            end: lineEnds[f.call('Corvane_Result_end', r, line)]!,
            points,
            whole: { ...columns(whole, wholeProperties, 0), ...columns(whole, evidence, firstEvidence) },
            phases: [...Array(phases).keys()].map((phase) => ({
                ...columns(phase, phaseProperties, 0),
                x: [...Array(components).keys()].map((i) => column(phase, mole + i)),
            })),
            flags: Int32Array.from(each, (point) => f.call('Corvane_Result_flags', r, line, point)),
            certificates:
                points > certified ? [] : each.map((point) => f.textOf('Corvane_Result_certificate', r, line, point)),
        };
    }
}

type Quantity = keyof Given;

function pairsOf(given: Given): [Quantity, number][] {
    const known = Object.entries(given).filter(([, value]) => value !== undefined) as [Quantity, number][];
    for (const [name, value] of known)
        if (!quantities.includes(name) || typeof value !== 'number')
            throw new CorvaneFailure('bad argument', `${name} = ${String(value)} is not a quantity of a state`);
    return known;
}
function two(given: Given): [[Quantity, number], [Quantity, number]] {
    const known = pairsOf(given);
    if (known.length !== 2) throw new CorvaneFailure('bad argument', 'a state needs two quantities');
    return known as [[Quantity, number], [Quantity, number]];
}
function one(given: Given, ...names: Quantity[]): [Quantity, number] {
    const known = pairsOf(given);
    if (known.length !== 1 || !names.includes(known[0]![0]))
        throw new CorvaneFailure('bad argument', `one of ${names.join(', ')} must be given`);
    return known[0]!;
}
/** Arguments of a property diagram: an isoline for each of the given values. */
function isolines(f: Frame, lines: Given[]): [number, number, number] {
    const known = lines.map((line) => one(line, 'T', 'p', 'rho', 's', 'q'));
    return [f.integers(known.map(([name]) => quantities.indexOf(name))), f.doubles(known.map(([, value]) => value)), known.length];
}

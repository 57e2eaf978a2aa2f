// The library as programs use it: every call is a promise, the work is done in a worker, and a call
// that takes too long can be cancelled.
import { Data, type Files, type Source } from './data.js';
import type { Answer, Call, Worker } from './protocol.js';
import {
    CorvaneFailure, pointOf,
    type Branch, type FluidRequest, type Given, type MixtureRequest, type ModelInfo, type Point, type Result, type Substance,
} from './types.js';

export interface Parts {
    /** corvane.wasm. */
    binary: () => Promise<ArrayBuffer>;
    data: Source;
    worker: () => Worker;
}

/** Of one call. */
export interface CallOptions {
    /** Aborted: the call ends at once, as a failure of the kind "cancelled". */
    signal?: AbortSignal;
    /** Points of a trace so far, ten times a second at most. */
    onProgress?: (points: number) => void;
}

interface Job {
    id: number;
    call: Call;
    values: unknown[];
    options: CallOptions;
    resolve: (result: never) => void;
    reject: (why: Error) => void;
}

const cancelled = () => new CorvaneFailure('cancelled', 'the calculation was cancelled');

export class Corvane {
    private readonly data: Data;
    private worker: Worker | undefined;
    private binary: Promise<ArrayBuffer> | undefined;
    /** Packs that the worker has; a new one gets them again. */
    private readonly packs = new Map<string, Files>();
    private given = new Set<string>();
    private readonly queue: Job[] = [];
    private running: Job | undefined;
    private last = 0;
    private ended = false;

    private constructor(private readonly parts: Parts) {
        this.data = new Data(parts.data);
    }

    /** Fetches the library and the index of substances. */
    static async create(parts: Parts): Promise<Corvane> {
        const corvane = new Corvane(parts);
        corvane.packs.set('core', (await corvane.data.core()).files);
        await corvane.started();
        return corvane;
    }

    /** Ends the worker; every call that is not done fails as cancelled. */
    close(): void {
        this.ended = true;
        this.stop();
        for (const job of this.queue.splice(0)) job.reject(cancelled());
    }

    // ---- names

    substances(): Promise<Substance[]> {
        return this.data.substances();
    }
    /** Mixture models that there are data for. */
    async models(): Promise<string[]> {
        return (await this.data.core()).models;
    }
    /** Substances with the text within their name, CAS number or a synonym, or with this formula. */
    search(part: string): Promise<string[]> {
        return this.run('search', [part], {});
    }
    /** The name in the data of a substance that is named in any way. */
    async name(substance: string): Promise<string> {
        // The worker knows the index, and parameters of the substances that were loaded.
        if ((await this.data.core()).equations[substance]) return substance;
        return this.run('substance', [substance], {});
    }

    // ---- models

    fluid(substance: string | FluidRequest, equation?: string): Fluid {
        const request = typeof substance === 'string' ? { substance, ...(equation ? { equation } : {}) } : substance;
        return new Fluid(this, request);
    }
    mixture(model: string | MixtureRequest, components: string[] = []): Mixture {
        return new Mixture(this, typeof model === 'string' ? { model, components } : model);
    }

    /** @internal Loads what the components need and runs a call with their names resolved. */
    async withFluid<T>(call: Call, request: FluidRequest, values: unknown[], options: CallOptions): Promise<T> {
        const substance = await this.name(request.substance);
        await this.load(substance);
        return this.run(call, [{ ...request, substance }, ...values], options);
    }
    /** @internal */
    async withMixture<T>(call: Call, request: MixtureRequest, values: unknown[], options: CallOptions): Promise<T> {
        const components: string[] = [];
        for (const component of request.components) {
            const name = await this.name(component);
            components.push(name);
            await this.load(name);
        }
        const result = await this.run<T>(call, [{ ...request, components }, ...values], options);
        if (result && typeof result === 'object' && 'lines' in result) (result as unknown as Result).components = components;
        return result;
    }

    // ---- the worker

    private async load(substance: string): Promise<void> {
        if (!this.packs.has(substance)) this.packs.set(substance, await this.data.substance(substance));
    }

    private run<T>(call: Call, values: unknown[], options: CallOptions): Promise<T> {
        return new Promise<T>((resolve, reject) => {
            if (this.ended || options.signal?.aborted) return reject(cancelled());
            const job: Job = { id: ++this.last, call, values, options, resolve: resolve as Job['resolve'], reject };
            options.signal?.addEventListener('abort', () => this.abort(job), { once: true });
            this.queue.push(job);
            void this.next();
        });
    }

    private abort(job: Job): void {
        const waiting = this.queue.indexOf(job);
        if (waiting >= 0) this.queue.splice(waiting, 1);
        else if (this.running !== job) return; // done
        job.reject(cancelled());
        if (this.running === job) {
            this.stop(); // nothing else stops a calculation; the next call starts a worker
            void this.next();
        }
    }

    private stop(): void {
        this.worker?.terminate();
        this.worker = undefined;
        this.given.clear();
        this.running?.reject(cancelled());
        this.running = undefined;
    }

    private async started(): Promise<Worker> {
        this.binary ??= this.parts.binary();
        const binary = await this.binary;
        if (!this.worker) {
            const worker = (this.worker = this.parts.worker());
            worker.onAnswer((answer) => this.take(answer));
            worker.onEnd((why) => {
                if (this.worker !== worker) return;
                this.running?.reject(new CorvaneFailure('unknown', `the worker has ended: ${why}`));
                this.running = undefined;
                this.stop();
                void this.next();
            });
            worker.wait?.(false);
            worker.post({ start: binary });
        }
        return this.worker;
    }

    private async next(): Promise<void> {
        const job = this.running ? undefined : this.queue.shift();
        if (!job) return;
        this.running = job;
        try {
            const worker = await this.started();
            if (this.running !== job) return; // cancelled meanwhile
            for (const [path, files] of this.packs)
                if (!this.given.has(path)) {
                    worker.post({ files });
                    this.given.add(path);
                }
            worker.wait?.(true);
            worker.post({ id: job.id, call: job.call, values: job.values });
        } catch (error) {
            job.reject(error as Error);
            if (this.running === job) this.running = undefined;
            void this.next();
        }
    }

    private take(answer: Answer): void {
        const job = this.running;
        if (!job || job.id !== answer.id) return; // of a call that was cancelled
        if ('points' in answer) return job.options.onProgress?.(answer.points);
        this.running = undefined;
        this.worker?.wait?.(false);
        if ('result' in answer) job.resolve(answer.result as never);
        else job.reject(new CorvaneFailure(answer.failure.kind, answer.failure.message));
        void this.next();
    }
}

const points = (result: Result): Point[] => result.lines.flatMap((line) => [...Array(line.points).keys()].map((k) => pointOf(line, k)));

function only(found: Point[]): Point {
    if (!found[0]) throw new CorvaneFailure('no solution', 'there is no such state');
    return found[0];
}

/** A pure fluid. */
export class Fluid {
    constructor(private readonly corvane: Corvane, readonly request: FluidRequest) {}

    private call<T>(name: Call, values: unknown[], options: CallOptions): Promise<T> {
        return this.corvane.withFluid<T>(name, this.request, values, options);
    }
    info(options: CallOptions = {}): Promise<ModelInfo> {
        return this.call('fluidInfo', [], options);
    }
    /** The stable states with two given quantities, by rising temperature. */
    async states(given: Given, options: CallOptions = {}): Promise<Point[]> {
        return points(await this.call<Result>('states', [given], options));
    }
    /** The only state, or the coldest. */
    async state(given: Given, options: CallOptions = {}): Promise<Point> {
        return only(await this.states(given, options));
    }
    /** Saturation at T or p; phases: liquid, vapour. */
    async saturation(given: Given, options: CallOptions = {}): Promise<Point> {
        return only(points(await this.call<Result>('saturation', [given], options)));
    }
    /** All properties at T and density, stable or not. */
    async phase(T: number, rho: number, options: CallOptions = {}): Promise<Point> {
        return only(points(await this.call<Result>('phase', [T, rho], options)));
    }
    /** Saturation and an isoline for each of the given values; points: of each, about. */
    diagram(lines: Given[], points = 0, options: CallOptions = {}): Promise<Result> {
        return this.call('diagram', [lines, points], options);
    }
}

/** A mixture. */
export class Mixture {
    constructor(private readonly corvane: Corvane, readonly request: MixtureRequest) {}

    private call<T>(name: Call, values: unknown[], options: CallOptions): Promise<T> {
        return this.corvane.withMixture<T>(name, this.request, values, options);
    }
    private async point(name: Call, values: unknown[], options: CallOptions): Promise<Point> {
        return only(points(await this.call<Result>(name, values, options)));
    }
    /** The same with another binary parameter of the pair (i, j). */
    withPair(i: number, j: number, value: number, index = 0): Mixture {
        const others = (this.request.pairs ?? []).filter((p) => !(p.i === i && p.j === j && (p.index ?? 0) === index));
        return new Mixture(this.corvane, { ...this.request, pairs: [...others, { i, j, index, value }] });
    }
    info(options: CallOptions = {}): Promise<ModelInfo> {
        return this.call('mixtureInfo', [], options);
    }
    /** The stable state at p and T, p and h, p and s or T and rho. */
    flash(z: number[], given: Given, options: CallOptions = {}): Promise<Point> {
        return this.point('flash', [z, given], options);
    }
    bubble(z: number[], given: Given, branch: Branch = 'any', options: CallOptions = {}): Promise<Point> {
        return this.point('bubble', [z, given, branch], options);
    }
    dew(z: number[], given: Given, branch: Branch = 'any', options: CallOptions = {}): Promise<Point> {
        return this.point('dew', [z, given, branch], options);
    }
    /** All properties at T, density and composition, stable or not. */
    phase(T: number, rho: number, z: number[], options: CallOptions = {}): Promise<Point> {
        return this.point('mixturePhase', [T, rho, z], options);
    }
    envelope(z: number[], { p_start = 0, p_max = 0, all = false } = {}, options: CallOptions = {}): Promise<Result> {
        return this.call('envelope', [z, p_start, p_max, all], options);
    }
    criticalPoint(z: number[], options: CallOptions = {}): Promise<Point> {
        return this.point('criticalPoint', [z], options);
    }
    async criticalPoints(z: number[], options: CallOptions = {}): Promise<Point[]> {
        return points(await this.call<Result>('criticalPoints', [z], options));
    }
    /** The complete p-x-y diagram at T. */
    pxy(T: number, { p_max = 0 } = {}, options: CallOptions = {}): Promise<Result> {
        return this.call('pxy', [T, p_max], options);
    }
    /** The complete T-x-y diagram at p. */
    Txy(p: number, { T_min = 0 } = {}, options: CallOptions = {}): Promise<Result> {
        return this.call('Txy', [p, T_min], options);
    }
    criticalLines({ p_max = 0 } = {}, options: CallOptions = {}): Promise<Result> {
        return this.call('criticalLines', [p_max], options);
    }
    threePhaseLines({ p_max = 0 } = {}, options: CallOptions = {}): Promise<Result> {
        return this.call('threePhaseLines', [p_max], options);
    }
    azeotropicLines({ p_max = 0 } = {}, options: CallOptions = {}): Promise<Result> {
        return this.call('azeotropicLines', [p_max], options);
    }
    ternary(p: number, T: number, { step = 0, mesh = 0 } = {}, options: CallOptions = {}): Promise<Result> {
        return this.call('ternary', [p, T, step, mesh], options);
    }
    /** Bubble and dew points and an isoline for each of the given values. */
    diagram(z: number[], lines: Given[], points = 0, options: CallOptions = {}): Promise<Result> {
        return this.call('mixtureDiagram', [z, lines, points], options);
    }
}

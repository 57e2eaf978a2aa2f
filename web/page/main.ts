// The page: fields, tabs, and one calculation at a time, of the newest wish.
import { Corvane } from '../src/client.js';
import { CorvaneFailure, type ModelInfo, type Substance } from '../src/types.js';
import { readTable, writeTable, type Table } from './csv.js';
import { fitKij } from './fit.js';
import { parts } from './parts.js';
import { draw, save } from './plot.js';
import { matches, searchField } from './search.js';
import { fromHash, tabNames, tabs, toHash, units, unitsOfN, unitsOfP, unitsOfT, type State, type Tab } from './state.js';
import { compute, equationOf, fieldsOf, fluidOf, hasKij, mixtureOf, ownColumns, type View } from './views.js';
import './style.css';

const modelNames: Record<string, string> = {
    'PR+vdW1': 'Peng–Robinson', 'SRK+vdW1': 'Soave–Redlich–Kwong', 'PCSAFT+LB': 'PC-SAFT', 'MEOS+GERG': 'Multi-fluid',
    'CPA+vdW1': 'Cubic plus association', 'SAFTVRMIE+LB': 'SAFT-VR Mie', 'SRK+PSRK': 'Predictive SRK (groups)',
};
const unlisted = ['PR+HV']; // nothing but k_ij without pairs of its own: PR+vdW1 again

const get = <T extends HTMLElement = HTMLElement>(id: string) => document.getElementById(id) as T;
const input = (id: string) => get<HTMLInputElement>(id);

let state = fromHash(location.hash);
let corvane: Corvane;
let substances: Substance[] = [];
let view: View | undefined;
let model: ModelInfo | undefined; // of the last view
let stored = 0;

// ---- what is shown

function sentence(error: unknown): string {
    if (error instanceof CorvaneFailure && error.kind === 'cancelled') return 'The calculation was cancelled.';
    const text = error instanceof Error ? error.message : String(error);
    return /[.!?]$/.test(text) ? text : `${text}.`;
}
function fail(error: unknown): void {
    get('failure').textContent = sentence(error);
    get('failure').hidden = false;
    get('plot').hidden = true;
    get('status').textContent = 'No result.';
    view = undefined;
}

function list(id: string, sentences: string[]): void {
    get(id).replaceChildren(...sentences.map((text) => Object.assign(document.createElement('p'), { textContent: text })));
}

const shownRows = 500;
function tableElement({ header, rows }: Table): HTMLTableElement {
    const table = document.createElement('table');
    const head = table.createTHead().insertRow();
    for (const word of header) head.append(Object.assign(document.createElement('th'), { textContent: word, scope: 'col' }));
    const body = table.createTBody();
    for (const row of rows.slice(0, shownRows)) {
        const line = body.insertRow();
        for (const value of row) line.insertCell().textContent = typeof value === 'number' ? String(Number(value.toPrecision(8))) : value;
    }
    return table;
}
/** Only where it can be seen: a long table takes longer than a diagram. */
function showValues(): void {
    if (!view || !get<HTMLDetailsElement>('values-part').open) return;
    const table = view.table();
    const rest = table.rows.length > shownRows ? [`The first ${shownRows} of ${table.rows.length} rows; CSV saves all.`] : [];
    get('values').replaceChildren(tableElement(table), ...rest);
}

/** x and y of the points that were pasted; a third number of a row is the x of the other phase. */
function own(): { x: number[]; y: number[] } {
    const rows = readTable(get<HTMLTextAreaElement>('own').value), points = { x: [] as number[], y: [] as number[] };
    for (const [x, y, other] of rows) {
        points.x.push(x!);
        points.y.push(y!);
        if (other === undefined || !Number.isFinite(other) || !ownColumns[state.tab].includes('other phase')) continue;
        points.x.push(other);
        points.y.push(y!);
    }
    return points;
}

async function show(next: View): Promise<void> {
    view = next;
    get('failure').hidden = true;
    get('plot').hidden = !!next.tableOnly;
    get('exports').querySelectorAll<HTMLButtonElement>('[data-export=svg],[data-export=png]').forEach((b) => (b.disabled = !!next.tableOnly));
    list('certificate', next.certificate);
    if (next.tableOnly) get<HTMLDetailsElement>('values-part').open = true;
    showValues();
    if (!next.tableOnly) await draw(get('plot'), next, own());
}

let shownSources = '';
/** A sentence of the source of each parameter set, with the set itself to unfold; only where it can be seen. */
function showSources(): void {
    const info = model;
    if (!info || !get<HTMLDetailsElement>('sources-part').open) return;
    const now = JSON.stringify([info.model, info.components.map((c) => c.name), info.pairs.map((pair) => pair.values)]);
    if (now === shownSources) return; // what is unfolded stays so
    shownSources = now;
    const parts: Node[] = [];
    const tell = (sentence: string, file = '') => {
        parts.push(Object.assign(document.createElement('p'), { textContent: sentence }));
        if (!file) return;
        const details = document.createElement('details');
        details.append(Object.assign(document.createElement('summary'), { textContent: 'Parameters' }), Object.assign(document.createElement('pre'), { textContent: file }));
        parts.push(details);
    };
    for (const c of info.components) {
        const comment = /^text:\s*(.+)$/m.exec(c.file)?.[1] ?? '';
        const groups = /^text:\s*(.+)$/m.exec(c.mixingFile)?.[1];
        tell(`${c.name}, set ${c.set}: ${c.source || comment || 'no source stated'}. Ideal gas: ${info.ideal ? c.idealSource || 'no source stated' : 'no table'}.`, c.file);
        if (c.mixingFile) tell(`${c.name} in mixtures: ${c.mixingSource || groups || 'no source stated'}.`, c.mixingFile);
    }
    for (const pair of info.pairs) {
        if (pair.values.length === 0) continue;
        const value = (list: number[]) => list.map((x) => Number(x.toPrecision(6))).join(', ');
        const changed = pair.values.some((x, k) => x !== pair.stored[k]);
        tell(`Pair ${info.components[pair.i]!.name} + ${info.components[pair.j]!.name}, ${value(pair.values)}: ${changed ? `changed here (stored: ${value(pair.stored)})` : pair.estimated ? 'nothing is published, the estimate of the mixing theory stands in' : pair.source || /^text:\s*(.+)$/m.exec(pair.file)?.[1] || 'no source stated'}.`, pair.file);
    }
    if (!Number.isNaN(info.T_min + info.T_max)) tell(`Published range: ${info.T_min} to ${info.T_max} K${Number.isNaN(info.p_max) ? '' : `, up to ${info.p_max} MPa`}.`);
    get('sources').replaceChildren(...parts);
}

// ---- calculations

/** Asked once, for the parameter files are long; by model and substances. */
const infos = new Map<string, ModelInfo>();
/** What the model is made of, with the k_ij of the view. */
async function infoOf(asked: State, signal: AbortSignal): Promise<ModelInfo> {
    const key = JSON.stringify([asked.model, asked.a, asked.b]), binary = asked.b.trim() !== '';
    let info = infos.get(key);
    if (!info) {
        info = await (binary ? mixtureOf(corvane, { ...asked, kij: null }) : fluidOf(corvane, asked)).info({ signal });
        infos.set(key, info);
    }
    const [pair] = info.pairs;
    if (asked.kij === null || !pair || !hasKij(asked)) return info;
    return { ...info, pairs: [{ ...pair, values: [asked.kij, ...pair.values.slice(1)] }] };
}

let wished = 0;
let busy: AbortController | undefined;

/** Computes what the fields say; while something runs, only the newest wish is kept. */
async function update(): Promise<void> {
    ++wished;
    if (busy) return;
    for (let done = 0; done !== wished; ) {
        done = wished;
        const asked = { ...state }, u = units(asked);
        busy = new AbortController();
        const slow = setTimeout(() => (get('cancel').hidden = false), 400);
        const begin = performance.now();
        const root = document.documentElement;
        get('status').textContent = 'Computing …';
        try {
            if (!asked.a.trim()) throw new CorvaneFailure('bad argument', 'Name a substance.');
            const info = (model = await infoOf(asked, busy.signal));
            if (info.pairs[0]) stored = info.pairs[0].stored[0] ?? 0;
            syncKij(info);
            showSources();
            const next = await compute(corvane, asked, u, info, {
                signal: busy.signal,
                onProgress: (points) => (get('status').textContent = `Computing … ${points} points`),
            });
            const time = performance.now() - begin;
            root.dataset.computed = time.toFixed(1);
            await show(next);
            get('status').textContent = `${next.title}: ${next.complete ? 'certified' : 'not complete'}, ${time.toFixed(0)} ms.`;
            root.dataset.time = (performance.now() - begin).toFixed(1); // with drawing
        } catch (error) {
            fail(error);
        } finally {
            clearTimeout(slow);
            get('cancel').hidden = true;
            busy = undefined;
            root.dataset.done = String(done);
        }
    }
}

let linked: ReturnType<typeof setTimeout> | undefined;
function changed(): void {
    // Not at every step of a slider: browsers bound how often it may change.
    clearTimeout(linked);
    linked = setTimeout(() => history.replaceState(null, '', toHash(state)), 100);
    for (const id of ['T', 'p', 'z']) get(id).closest<HTMLElement>('.field')!.hidden = !fieldsOf[state.tab].includes(id) || (id === 'z' && !state.b.trim());
    get('own-columns').textContent = ownColumns[state.tab];
    get('fit').hidden = state.tab !== 'pxy' || !hasKij(state);
    void update();
}

// ---- fields

function syncKij(info: ModelInfo): void {
    get('kij-field').hidden = info.pairs.length === 0 || !hasKij(state);
    const value = String(Number((state.kij ?? stored).toPrecision(6)));
    for (const id of ['kij', 'kij-slide']) if (document.activeElement !== input(id)) input(id).value = value;
}

function syncFields(): void {
    const u = units(state);
    for (const id of ['a', 'b'] as const) input(id).value = state[id];
    get<HTMLSelectElement>('model').value = state.model;
    get<HTMLSelectElement>('unit-T').value = u.T;
    get<HTMLSelectElement>('unit-p').value = u.p;
    get<HTMLSelectElement>('unit-n').value = state.unitN;
    input('T').value = String(Number(u.showT(state.T).toPrecision(10)));
    input('p').value = String(Number(u.showP(state.p).toPrecision(10)));
    input('z').value = String(state.z);
    for (const element of document.querySelectorAll<HTMLElement>('[data-unit]')) element.textContent = `[${element.dataset.unit === 'T' ? u.T : u.p}]`;
    for (const tab of tabs) {
        const button = get(`tab-${tab}`), selected = tab === state.tab;
        button.setAttribute('aria-selected', String(selected));
        button.tabIndex = selected ? 0 : -1;
    }
    get('panel').setAttribute('aria-labelledby', `tab-${state.tab}`);
    nameSubstances();
}

function nameSubstances(): void {
    get('model-is').textContent = state.model;
    for (const id of ['a', 'b'] as const) {
        const found = substances.find((s) => s.name === state[id]);
        get(`${id}-is`).textContent = found ? `${found.formula}, CAS ${found.cas}, ${found.equations.join(' ')}` : '';
    }
}

function number(id: string, use: (value: number) => void): void {
    input(id).addEventListener('input', () => {
        const value = input(id).valueAsNumber;
        if (!Number.isFinite(value)) return; // half typed
        use(value);
        changed();
    });
}

function listen(): void {
    for (const id of ['a', 'b'] as const)
        searchField(
            input(id),
            (text) => matches(substances, text, equationOf(state)),
            async (typed) => {
                let name = typed.trim();
                if (name || id === 'a')
                    try {
                        name = await corvane.name(name);
                    } catch {
                        // the calculation says what is wrong
                    }
                state = { ...state, [id]: name, kij: null };
                syncFields();
                changed();
            },
            (s) => ` ${s.formula}, ${s.cas}${s.equations.includes(equationOf(state)) ? '' : `, not in ${equationOf(state)}`}`,
        );
    get('model').addEventListener('change', () => {
        state = { ...state, model: get<HTMLSelectElement>('model').value, kij: null };
        syncFields();
        changed();
    });
    for (const id of ['kij', 'kij-slide'])
        number(id, (value) => {
            state.kij = value;
            input(id === 'kij' ? 'kij-slide' : 'kij').value = String(value);
        });
    get('kij-stored').addEventListener('click', () => {
        state.kij = null;
        changed();
    });
    number('T', (value) => (state.T = units(state).readT(value)));
    number('p', (value) => (state.p = units(state).readP(value)));
    number('z', (value) => (state.z = value));
    for (const [id, key, all] of [['unit-T', 'unitT', unitsOfT], ['unit-p', 'unitP', unitsOfP], ['unit-n', 'unitN', unitsOfN]] as const) {
        get(id).append(...all.map((unit) => new Option(key === 'unitN' ? `per ${unit}` : unit, unit)));
        get(id).addEventListener('change', () => {
            state[key] = get<HTMLSelectElement>(id).value;
            syncFields();
            changed();
        });
    }
    get('form').addEventListener('submit', (event) => event.preventDefault());
    get('cancel').addEventListener('click', () => busy?.abort());
    get('own').addEventListener('input', () => view && void show(view));
    get('fit').addEventListener('click', () => void fit());
    get('exports').addEventListener('click', (event) => {
        const format = (event.target as HTMLElement).dataset.export;
        if (format === 'csv' && view) saveText(`${view.title}.csv`, writeTable(view.table()));
        else if ((format === 'svg' || format === 'png') && view) void save(get('plot'), format, view.title);
    });
    get('values-part').addEventListener('toggle', showValues);
    get('sources-part').addEventListener('toggle', showSources);
    get('link').addEventListener('click', async () => {
        await navigator.clipboard?.writeText(location.href).catch(() => undefined);
        get('status').textContent = `The link is in the address line: ${location.href}`;
    });
    get('theme').addEventListener('click', () => {
        const root = document.documentElement;
        const dark = root.dataset.theme ? root.dataset.theme === 'dark' : matchMedia('(prefers-color-scheme: dark)').matches;
        root.dataset.theme = dark ? 'light' : 'dark';
        if (view) void show(view);
    });
    matchMedia('(prefers-color-scheme: dark)').addEventListener('change', () => view && void show(view));
    addEventListener('hashchange', () => {
        state = fromHash(location.hash);
        syncFields();
        changed();
    });
}

function makeTabs(): void {
    for (const tab of tabs) {
        const button = Object.assign(document.createElement('button'), { type: 'button', id: `tab-${tab}`, textContent: tabNames[tab] });
        button.setAttribute('role', 'tab');
        button.setAttribute('aria-controls', 'panel');
        button.addEventListener('click', () => select(tab));
        button.addEventListener('keydown', (event) => {
            const at = tabs.indexOf(tab), last = tabs.length - 1;
            const to = { ArrowRight: at === last ? 0 : at + 1, ArrowLeft: at === 0 ? last : at - 1, Home: 0, End: last }[event.key];
            if (to === undefined) return;
            event.preventDefault();
            const next = tabs[to]!;
            select(next);
            get(`tab-${next}`).focus();
        });
        get('tabs').append(button);
    }
}
function select(tab: Tab): void {
    state.tab = tab;
    syncFields();
    changed();
}

function saveText(name: string, text: string): void {
    const url = URL.createObjectURL(new Blob([text], { type: 'text/csv' }));
    Object.assign(document.createElement('a'), { href: url, download: name }).click();
    setTimeout(() => URL.revokeObjectURL(url), 1000);
}

async function fit(): Promise<void> {
    const { x, y } = own(), u = units(state), asked: State = { ...state };
    const told = get('fit-result');
    if (x.length === 0) return void (told.textContent = 'Paste measured bubble pressures first.');
    told.textContent = 'Fitting …';
    try {
        const best = await fitKij(y.map(u.readP), async (k, kij) => {
            const mixture = mixtureOf(corvane, { ...asked, kij });
            return mixture.bubble([x[k]!, 1 - x[k]!], { T: asked.T }).then((point) => point.p, (error: unknown) => {
                if (error instanceof CorvaneFailure && (error.kind === 'no solution' || error.kind === 'gave up')) return undefined;
                throw error;
            });
        }, -0.2, 0.4);
        state.kij = Number(best.kij.toFixed(5));
        told.textContent = `k_ij = ${state.kij}, deviation ${(100 * best.deviation).toFixed(2)} % (root mean square)${best.without ? `; ${best.without} of ${x.length} points have no bubble pressure there` : ''}.`;
        changed();
    } catch (error) {
        told.textContent = sentence(error);
    }
}

async function start(): Promise<void> {
    makeTabs();
    listen();
    try {
        corvane = await Corvane.create(parts);
        substances = await corvane.substances();
        for (const model of (await corvane.models()).filter((name) => !unlisted.includes(name))) get('model').append(new Option(modelNames[model] ?? model, model));
        syncFields();
        changed();
    } catch (error) {
        fail(error);
    }
}
void start();

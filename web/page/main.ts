// The page: fields, tabs, and one calculation at a time, of the newest wish.
import { Corvane } from '../src/client.js';
import { CorvaneFailure, type ModelInfo, type Substance } from '../src/types.js';
import { readTable, writeTable } from './csv.js';
import { fitKij } from './fit.js';
import { parts } from './parts.js';
import { draw, save } from './plot.js';
import { fromHash, tabNames, tabs, toHash, units, type State, type Tab } from './state.js';
import { compute, fluidOf, mixtureOf, ownColumns, type View } from './views.js';
import './style.css';

const get = <T extends HTMLElement = HTMLElement>(id: string) => document.getElementById(id) as T;
const input = (id: string) => get<HTMLInputElement>(id);

let state = fromHash(location.hash);
let corvane: Corvane;
let substances: Substance[] = [];
let view: View | undefined;
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

function showTable({ header, rows }: View['table']): HTMLTableElement {
    const table = document.createElement('table');
    const head = table.createTHead().insertRow();
    for (const word of header) head.append(Object.assign(document.createElement('th'), { textContent: word, scope: 'col' }));
    const body = table.createTBody();
    for (const row of rows.slice(0, 500)) {
        const line = body.insertRow();
        for (const value of row) line.insertCell().textContent = typeof value === 'number' ? String(Number(value.toPrecision(8))) : value;
    }
    return table;
}

function own(): { x: number[]; y: number[] } {
    const rows = readTable(get<HTMLTextAreaElement>('own').value);
    return { x: rows.map((row) => row[0]!), y: rows.map((row) => row[1]!) };
}

async function show(next: View): Promise<void> {
    view = next;
    get('failure').hidden = true;
    get('plot').hidden = !!next.tableOnly;
    get('exports').querySelectorAll<HTMLButtonElement>('[data-export=svg],[data-export=png]').forEach((b) => (b.disabled = !!next.tableOnly));
    list('certificate', next.certificate);
    get('values').replaceChildren(showTable(next.table));
    get('values').closest('details')!.open ||= !!next.tableOnly;
    if (!next.tableOnly) await draw(get('plot'), next, own());
}

async function showSources(info: ModelInfo): Promise<void> {
    const told = info.components.map((c) => `${c.name}, set ${c.set}: ${c.source || 'no source stated'}.`);
    for (const pair of info.pairs) {
        const value = pair.values.map((x) => Number(x.toPrecision(6))).join(', ');
        const changed = pair.values.some((x, k) => x !== pair.stored[k]);
        told.push(`Pair parameters ${value}: ${changed ? `changed here (stored: ${pair.stored.join(', ')})` : pair.estimated ? 'nothing is published, the estimate of the mixing theory stands in' : pair.source || 'no source stated'}.`);
    }
    if (!Number.isNaN(info.T_min + info.T_max)) told.push(`Published range: ${info.T_min} to ${info.T_max} K.`);
    list('sources', told);
}

// ---- calculations

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
        get('status').textContent = 'Computing …';
        try {
            const model = asked.b.trim() ? mixtureOf(corvane, asked) : fluidOf(corvane, asked);
            const info = await model.info({ signal: busy.signal });
            if (info.pairs[0]) stored = info.pairs[0].stored[0] ?? 0;
            syncKij(info);
            await showSources(info);
            const next = await compute(corvane, asked, u, {
                signal: busy.signal,
                onProgress: (points) => (get('status').textContent = `Computing … ${points} points`),
            });
            const time = performance.now() - begin;
            await show(next);
            get('status').textContent = `${next.title}: ${next.complete ? 'certified' : 'not complete'}, ${time.toFixed(0)} ms.`;
            document.documentElement.dataset.time = time.toFixed(1);
        } catch (error) {
            fail(error);
        } finally {
            clearTimeout(slow);
            get('cancel').hidden = true;
            busy = undefined;
            document.documentElement.dataset.done = String(done);
        }
    }
}

function changed(): void {
    history.replaceState(null, '', toHash(state));
    get('own-columns').textContent = ownColumns[state.tab];
    get('fit').hidden = state.tab !== 'pxy';
    void update();
}

// ---- fields

function syncKij(info: ModelInfo): void {
    get('kij-field').hidden = info.pairs.length === 0 || info.model === 'MEOS+GERG';
    const value = String(Number((state.kij ?? stored).toPrecision(6)));
    for (const id of ['kij', 'kij-slide']) if (document.activeElement !== input(id)) input(id).value = value;
}

function syncFields(): void {
    const u = units(state);
    for (const id of ['a', 'b'] as const) input(id).value = state[id];
    get<HTMLSelectElement>('model').value = state.model;
    get<HTMLSelectElement>('unit-T').value = u.T;
    get<HTMLSelectElement>('unit-p').value = u.p;
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
        input(id).addEventListener('change', async () => {
            let name = input(id).value.trim();
            if (name || id === 'a')
                try {
                    name = await corvane.name(name);
                } catch {
                    // the calculation says what is wrong
                }
            state = { ...state, [id]: name, kij: null };
            syncFields();
            changed();
        });
    get('model').addEventListener('change', () => {
        state = { ...state, model: get<HTMLSelectElement>('model').value, kij: null };
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
    for (const [id, key] of [['unit-T', 'unitT'], ['unit-p', 'unitP']] as const)
        get(id).addEventListener('change', () => {
            state[key] = get<HTMLSelectElement>(id).value;
            syncFields();
            changed();
        });
    get('form').addEventListener('submit', (event) => event.preventDefault());
    get('cancel').addEventListener('click', () => busy?.abort());
    get('own').addEventListener('input', () => view && void show(view));
    get('fit').addEventListener('click', () => void fit());
    get('exports').addEventListener('click', (event) => {
        const format = (event.target as HTMLElement).dataset.export;
        if (format === 'csv' && view) saveText(`${view.title}.csv`, writeTable(view.table));
        else if ((format === 'svg' || format === 'png') && view) void save(get('plot'), format, view.title);
    });
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
            const to = { ArrowRight: 1, ArrowLeft: -1 }[event.key];
            if (!to) return;
            const next = tabs[(tabs.indexOf(tab) + to + tabs.length) % tabs.length]!;
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
        for (const model of await corvane.models()) get('model').append(new Option(model, model));
        get('substances').append(...substances.map((s) => {
            const option = document.createElement('option');
            option.value = s.name;
            option.label = [s.formula, s.cas, ...s.aliases].join(', ');
            return option;
        }));
        syncFields();
        changed();
    } catch (error) {
        fail(error);
    }
}
void start();

// What the page shows, and the link that brings it back.
export const tabs = ['pxy', 'Txy', 'projection', 'envelope', 'ph', 'Ts', 'flash'] as const;
export type Tab = (typeof tabs)[number];
export const tabNames: Record<Tab, string> = {
    pxy: 'p-x-y', Txy: 'T-x-y', projection: 'p-T projection', envelope: 'Envelope', ph: 'p-h', Ts: 'T-s', flash: 'Flash',
};

/** K, MPa; kij null: as it is stored. */
export interface State {
    tab: Tab;
    a: string;
    b: string;
    model: string;
    kij: number | null;
    T: number;
    p: number;
    z: number;
    unitT: string;
    unitP: string;
}

export const first: State = {
    tab: 'pxy', a: 'methane', b: 'propane', model: 'PR+vdW1', kij: null, T: 250, p: 2, z: 0.5, unitT: 'K', unitP: 'MPa',
};

export function toHash(state: State): string {
    const words = new URLSearchParams();
    for (const [key, value] of Object.entries(state)) if (value !== null) words.set(key, String(value));
    return `#${words}`;
}

/** What a link says; what it does not say, or says badly, is as at first. */
export function fromHash(hash: string): State {
    const words = new URLSearchParams(hash.replace(/^#/, ''));
    const state: State = { ...first };
    const number = (key: string): number | undefined => {
        const text = words.get(key);
        return text !== null && text.trim() !== '' && Number.isFinite(Number(text)) ? Number(text) : undefined;
    };
    for (const key of ['a', 'b', 'model', 'unitT', 'unitP'] as const) state[key] = words.get(key) ?? state[key];
    for (const key of ['T', 'p', 'z'] as const) state[key] = number(key) ?? state[key];
    state.kij = number('kij') ?? null;
    const tab = words.get('tab') as Tab;
    if (tabs.includes(tab)) state.tab = tab;
    return state;
}

/** From K and MPa to what is shown, and back. */
export interface Units {
    T: string;
    p: string;
    showT(T: number): number;
    showP(p: number): number;
    readT(T: number): number;
    readP(p: number): number;
}
export function units(state: State): Units {
    const shift = state.unitT === '°C' ? 273.15 : 0;
    const factor = { MPa: 1, bar: 10, kPa: 1000 }[state.unitP] ?? 1;
    return {
        T: shift ? '°C' : 'K',
        p: factor === 1 ? 'MPa' : state.unitP,
        showT: (T) => T - shift,
        showP: (p) => p * factor,
        readT: (T) => T + shift,
        readP: (p) => p / factor,
    };
}

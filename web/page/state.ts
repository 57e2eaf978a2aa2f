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
    /** Of what energies, entropies and densities are: "mol" or "kg". */
    unitN: string;
}

export const first: State = {
    tab: 'pxy', a: 'methane', b: 'propane', model: 'PR+vdW1', kij: null, T: 250, p: 2, z: 0.5, unitT: 'K', unitP: 'MPa', unitN: 'mol',
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
    for (const key of ['a', 'b', 'model', 'unitT', 'unitP', 'unitN'] as const) state[key] = words.get(key) ?? state[key];
    for (const key of ['T', 'p', 'z'] as const) state[key] = number(key) ?? state[key];
    state.kij = number('kij') ?? null;
    const tab = words.get('tab') as Tab;
    if (tabs.includes(tab)) state.tab = tab;
    return state;
}

/** Scale and zero in K; MPa in the unit. */
const temperatures: Record<string, [number, number]> = { K: [1, 0], '°C': [1, 273.15], '°F': [1.8, 459.67 / 1.8] };
const pressures: Record<string, number> = { MPa: 1, bar: 10, kPa: 1000, atm: 1 / 0.101325, psi: 0.0254 ** 2 / (0.45359237 * 9.80665e-6) };
export const unitsOfT = Object.keys(temperatures), unitsOfP = Object.keys(pressures), unitsOfN = ['mol', 'kg'];

/** From K, MPa, J/mol, J/(mol K), mol/cm³ to what is shown, and back. M: molar mass in g/mol. */
export interface Units {
    T: string;
    p: string;
    h: string;
    s: string;
    rho: string;
    showT(T: number): number;
    showP(p: number): number;
    showH(h: number, M: number): number;
    showS(s: number, M: number): number;
    showRho(rho: number, M: number): number;
    readT(T: number): number;
    readP(p: number): number;
}
export function units(state: State): Units {
    const T = temperatures[state.unitT] ? state.unitT : 'K', p = pressures[state.unitP] ? state.unitP : 'MPa';
    const [scale, zero] = temperatures[T]!, factor = pressures[p]!, mass = state.unitN === 'kg';
    return {
        T, p, h: mass ? 'kJ/kg' : 'kJ/mol', s: mass ? 'kJ/(kg K)' : 'J/(mol K)', rho: mass ? 'kg/m³' : 'mol/cm³',
        showT: (T) => scale * (T - zero),
        showP: (p) => p * factor,
        showH: (h, M) => h / (mass ? M : 1000),
        showS: (s, M) => s / (mass ? M : 1),
        showRho: (rho, M) => rho * (mass ? 1000 * M : 1),
        readT: (T) => T / scale + zero,
        readP: (p) => p / factor,
    };
}

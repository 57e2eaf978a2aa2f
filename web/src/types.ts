// What goes in and what comes out. Units: K, MPa, mol/cm³, J/mol, J/(mol K), m/s, g/mol; mole
// fractions.

/** A pure substance by name, synonym, CAS number or formula. */
export interface FluidRequest {
    substance: string;
    /** "MEOS", "PCSAFT", "PR", "SRK"; left out: the best that the substance has. */
    equation?: string;
    /** Number of the parameter set; left out: the first. */
    set?: number;
}

/** A binary parameter that replaces the stored one. */
export interface PairValue {
    i: number;
    j: number;
    /** Its number; 0 (k_ij of the cubic equations and PC-SAFT) if left out. */
    index?: number;
    value: number;
}

export interface MixtureRequest {
    /** Equation and mixing theory: "PR+vdW1", "SRK+vdW1", "PCSAFT+LB", "MEOS+GERG". */
    model: string;
    components: string[];
    sets?: number[];
    /** Left out: the first number under which all pairs are published. */
    pairSet?: number;
    /** false refuses pairs without published parameters; true (default) takes the theory's estimate. */
    estimate?: boolean;
    pairs?: PairValue[];
}

export type Given = Partial<Record<'T' | 'p' | 'rho' | 'h' | 's' | 'u' | 'q', number>>;
export type Branch = 'any' | 'lower' | 'upper';

export const lineKinds = [
    'points', 'envelope', 'cricondentherm', 'cricondenbar', 'critical', 'vapour-liquid', 'liquid-liquid',
    'fluid-fluid', 'azeotropes', 'three-phase', 'open', 'solid 0', 'solid 1', 'liquid', 'vapour', 'isotherm',
    'isobar', 'isochore', 'isentrope', 'equal q',
] as const;
export type LineKind = (typeof lineKinds)[number];

/** Why a line begins or ends where it does, in words. */
export const lineEnds = [
    '', 'closed', 'a pure component', 'a critical point', 'a critical end point', 'three phases', 'a eutectic',
    'the highest pressure', 'the lowest temperature', 'negative pressure', 'a trace', 'the end of the data of the solid',
    'the other solid', 'a point that misses its certificate', 'the bound of the number of points', 'the caller', 'no further point',
] as const;
export type LineEnd = (typeof lineEnds)[number];

/** Properties by number in the interface of the library, in its order. */
export const wholeProperties = ['T', 'p', 'rho', 'h', 's', 'u', 'q'] as const;
export const phaseProperties = [
    'T', 'p', 'rho', 'h', 's', 'u', 'q', 'fraction', 'g', 'a', 'Z', 'cv', 'cp', 'w', 'mu_JT', 'kappa_T', 'alpha_p',
    'dp_dT', 'dp_drho', 'M',
] as const;
export const evidence = [
    'dmu', 'dp', 'target', 'balance', 'tpd', 'value_error', 'x_error', 'rho_error', 'apart_error', 'conditions', 'evaluations',
] as const;

type Columns<Name extends string> = { [key in Name]?: Float64Array };
export type WholeColumns = Columns<(typeof wholeProperties)[number] | (typeof evidence)[number]>;
export interface PhaseColumns extends Columns<(typeof phaseProperties)[number]> {
    /** Mole fractions of all components. */
    x: Float64Array[];
}

export const flagNames = ['near trivial', 'estimated pairs', 'extrapolated', 'below the triple point', 'unstable', 'bubble'] as const;

/** A curve or a list of points. A column that the result does not have is left out; not-a-number: not this point. */
export interface Line {
    kind: LineKind;
    begin: LineEnd;
    end: LineEnd;
    points: number;
    whole: WholeColumns;
    phases: PhaseColumns[];
    /** Bits, in the order of flagNames. */
    flags: Int32Array;
    /** The certificates as text, of lines of few points; "" where there is none. */
    certificates: string[];
}

export interface Result {
    components: string[];
    lines: Line[];
    /** false: a line ends early, or a diagram has splits that were not traced. */
    complete: boolean;
}

export interface Phase extends Partial<Record<(typeof phaseProperties)[number], number>> {
    x: number[];
}
/** One point of a line. */
export interface Point extends Partial<Record<(typeof wholeProperties)[number] | (typeof evidence)[number], number>> {
    phases: Phase[];
    flags: string[];
    certificate: string;
}

const row = (columns: object, k: number): Record<string, number> => {
    const values: Record<string, number> = {};
    for (const [name, column] of Object.entries(columns))
        if (column instanceof Float64Array && !Number.isNaN(column[k])) values[name] = column[k]!;
    return values;
};

/** The words of the flags of a point. */
export function flagsOf(bits: number): string[] {
    return flagNames.filter((_, bit) => bits & (1 << bit));
}

/** Point k of a line as an object. */
export function pointOf(line: Line, k: number): Point {
    const phases = line.phases
        .map((phase) => ({ ...row(phase, k), x: phase.x.map((column) => column[k]!) }))
        .filter((phase) => !phase.x.some(Number.isNaN) && Object.keys(phase).length > 1);
    return { ...row(line.whole, k), phases, flags: flagsOf(line.flags[k] ?? 0), certificate: line.certificates[k] ?? '' };
}

/** What is known of an open model. */
export interface ComponentInfo {
    name: string;
    /** As chemists write it. */
    written: string;
    M: number;
    T_critical: number;
    p_critical: number;
    rho_critical: number;
    set: number;
    /** Where the parameters come from; "" unknown. */
    source: string;
    /** Where the ideal-gas heat capacities come from; "" unknown or not loaded. */
    idealSource: string;
    /** The parameters with their names, as the data tree has them. */
    file: string;
    /** What the mixing theory knows of the component by itself (groups, for example), and its source; "" if nothing. */
    mixingFile: string;
    mixingSource: string;
}
export interface ModelInfo {
    model: string;
    components: ComponentInfo[];
    /** values: in use; stored: as published or estimated; file: as the data tree has them, "" if it has none. */
    pairs: { i: number; j: number; values: number[]; stored: number[]; estimated: boolean; source: string; file: string }[];
    /** Published range, not-a-number where it is not stated. */
    T_min: number;
    T_max: number;
    p_max: number;
    /** Are enthalpies, entropies and heat capacities known? */
    ideal: boolean;
}

export type FailureKind =
    | 'thermodynamic' | 'numerical' | 'null argument' | 'no memory' | 'unknown' | 'no solution' | 'gave up'
    | 'not opened' | 'bad argument' | 'cancelled';
export const failureKinds: FailureKind[] = [
    'unknown', 'thermodynamic', 'numerical', 'null argument', 'no memory', 'unknown', 'no solution', 'gave up', 'not opened', 'bad argument',
];

/** No result: "no solution" is certain, after "gave up" nothing is known. The message is one sentence. */
export class CorvaneFailure extends Error {
    constructor(
        readonly kind: FailureKind,
        message: string,
    ) {
        super(message);
        this.name = 'CorvaneFailure';
    }
}

export interface Substance {
    name: string;
    formula: string;
    cas: string;
    aliases: string[];
    /** Equations that have parameters for it. */
    equations: string[];
}

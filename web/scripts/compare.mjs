// The package's numbers against those of the native command: the largest relative difference of each
// calculation, as rows of a table.
// usage: CORVANE_COMMAND=... node scripts/compare.mjs      after scripts/page
import { execFileSync } from 'node:child_process';
import { load } from '../dist/index.js';
import { apart, apartOnLine, columns } from './apart.mjs';

const native = (words) =>
    JSON.parse(execFileSync(process.env.CORVANE_COMMAND, [...words.split(' '), '--json'], { encoding: 'utf8', maxBuffer: 1 << 26 })).rows;
const report = (what, numbers, expected) =>
    console.log(`| ${what} | ${numbers.length} | ${apart(numbers, expected).toExponential(0)} |`);
const of = (row, names) => names.split(' ').map((name) => row[name]);

/** T, p, rho, h, s, u of all points of the isolines of a property diagram, as apartOnLine and as they are. */
const isolines = (what, words, result, symbol, given, Tmin) => {
    const rows = native(`property-diagram ${words} --kind ${symbol === 'T' ? 'ph --isotherms' : 'Ts --isobars'} ${given} --T-min ${Tmin}`);
    const lines = result.lines.filter((line) => line.kind === (symbol === 'T' ? 'isotherm' : 'isobar'));
    let numbers = 0, most = 0, plain = 0;
    lines.forEach((line, k) => {
        const there = rows.filter((row) => row.line === symbol && row.value === given[k]);
        const of = (get) => Object.fromEntries([...columns, 'q'].map((name) => [name, get(name)]));
        const a = of((name) => [...(line.whole[name] ?? [])].slice(0, line.points)), b = of((name) => there.map((row) => row[name] ?? NaN));
        numbers += columns.length * line.points;
        most = Math.max(most, apartOnLine(a, b, symbol === 'T' ? 'p' : 'T'));
        plain = Math.max(plain, ...columns.map((name) => apart(a[name], b[name])));
    });
    console.log(`| ${what}: ${columns.join(', ')} | ${numbers} | ${most.toExponential(0)} (plain ${plain.toExponential(0)}) |`);
};

const corvane = await load();
for (const [equation, substance] of [['MEOS', 'carbon_dioxide'], ['PR', 'propane']]) {
    const fluid = corvane.fluid(substance, equation), [{ T_critical: Tc }] = (await fluid.info()).components;
    for (const [symbol, given, tab] of [['T', [260, 290, 400], 'p-h'], ['p', [0.5, 2, 8], 'T-s']]) {
        const result = await fluid.diagram(given.map((value) => ({ [symbol]: value })), 120);
        isolines(`isolines of ${tab}, ${equation} ${substance}`, `${equation} ${substance}`, result, symbol, given, 0.55 * Tc);
    }
}
for (const [equation, substance, T] of [['MEOS', 'water', 450], ['PCSAFT', 'propane', 300], ['PR', 'benzene', 400]]) {
    const q = await corvane.fluid(substance, equation).saturation({ T });
    const [row] = native(`saturation ${equation} ${substance} --T ${T}`);
    report(`saturation, ${equation} ${substance}, ${T} K: p, densities`, [q.p, q.phases[0].rho, q.phases[1].rho], of(row, 'p rhoL rhoV'));
}
for (const [equation, substance, T, p] of [['MEOS', 'carbon_dioxide', 320, 10], ['PCSAFT', 'toluene', 400, 1]]) {
    const q = (await corvane.fluid(substance, equation).state({ T, p })).phases[0];
    const [row] = native(`state ${equation} ${substance} --T ${T} --p ${p}`);
    report(`state, ${equation} ${substance}, ${T} K, ${p} MPa: density, h, s, cp, w`, [q.rho, q.h, q.s, q.cp, q.w], of(row, 'rho h s cp w'));
}
for (const [model, a, b, T, p] of [['PR+vdW1', 'methane', 'propane', 250, 2], ['SRK+vdW1', 'carbon_dioxide', 'butane', 300, 3], ['PCSAFT+LB', 'ethanol', 'heptane', 360, 0.15], ['MEOS+GERG', 'methane', 'ethane', 220, 2], ['CPA+vdW1', 'methanol', 'propane', 300, 1], ['SAFTVRMIE+LB', 'methane', 'propane', 250, 2], ['SRK+PSRK', 'ethanol', 'hexane', 340, 0.1]]) {
    const mixture = corvane.mixture(model, [a, b]), z = [0.4, 0.6], words = `${model} ${a}=0.4 ${b}=0.6`;
    const flash = await mixture.flash(z, { p, T });
    const names = `rho x_${a} x_${b} h s`;
    report(`flash, ${model} ${a} + ${b}: densities, compositions, h, s`, flash.phases.flatMap((q) => [q.rho, ...q.x, q.h, q.s]),
        native(`flash ${words} --p ${p} --T ${T}`).flatMap((row) => of(row, names)));
    const bubble = await mixture.bubble(z, { T }), dew = await mixture.dew(z, { T });
    report(`bubble and dew point, the same: p, composition of the other phase`, [bubble.p, ...bubble.phases[1].x, dew.p, ...dew.phases[1].x],
        [...of(native(`bubble ${words} --T ${T}`)[0], `p y_${a} y_${b}`), ...of(native(`dew ${words} --T ${T}`)[0], `p x_${a} x_${b}`)]);
    const critical = await mixture.criticalPoint(z).catch(() => undefined);
    if (critical) {
        const [row] = native(`critical-line ${words}`);
        report(`critical point, the same: T, p, density`, [critical.T, critical.p, critical.rho], of(row, 'T p rho'));
    }
    const { components } = await mixture.info(), Tc = z[0] * components[0].T_critical + z[1] * components[1].T_critical;
    for (const [symbol, given, tab] of [['T', [T, Math.round(1.2 * Tc)], 'p-h'], ['p', [0.5, p, 8], 'T-s']]) {
        const result = await mixture.diagram(z, given.map((value) => ({ [symbol]: value })), 120);
        isolines(`isolines of ${tab}, the same`, words, result, symbol, given, 0.55 * Tc);
    }
    const pxy = await mixture.pxy(T), rows = native(`pxy ${model} ${a} ${b} --T ${T}`);
    const line = pxy.lines[0], p0 = line.whole.p;
    // The command's rows are of all branches; those of one have one kind.
    const branch = rows.slice(0, p0.length);
    report(`p-x-y diagram, the same, ${T} K: p, x, y of the first branch (${p0.length} points)`,
        [...p0, ...line.phases[0].x[0], ...line.phases[1].x[0]],
        ['p', `x_${a}`, `y_${a}`].flatMap((name) => branch.map((row) => row[name])));
}
corvane.close();

// Sizes, and times in Node: of loading, of the first diagram, of further ones (the median of 19, and
// their processor time with all that compiles and collects beside them).
// usage: node scripts/measure.mjs      after scripts/page
import { readFileSync } from 'node:fs';
import { brotliCompressSync, gzipSync } from 'node:zlib';
import { load } from '../dist/index.js';

const root = new URL('..', import.meta.url);
for (const name of ['lib/corvane.wasm', 'lib/corvane.mjs', 'data/core.json', 'data/substances/methane.json']) {
    const file = readFileSync(new URL(name, root));
    console.log(`${name}: ${file.length} bytes, gzip ${gzipSync(file, { level: 9 }).length}, brotli ${brotliCompressSync(file).length}`);
}
const timed = async (work) => {
    const begin = performance.now();
    await work();
    return performance.now() - begin;
};
let corvane;
console.log(`load: ${(await timed(async () => (corvane = await load()))).toFixed(0)} ms`);
for (const [model, a, b, T] of [['PR+vdW1', 'methane', 'propane', 250], ['PR+vdW1', 'carbon_dioxide', 'hexane', 300], ['SRK+vdW1', 'methane', 'propane', 250], ['PCSAFT+LB', 'methane', 'propane', 250], ['MEOS+GERG', 'methane', 'propane', 250], ['CPA+vdW1', 'methanol', 'propane', 300], ['SRK+PSRK', 'ethanol', 'hexane', 340], ['SAFTVRMIE+LB', 'methane', 'propane', 250]]) {
    const mixture = corvane.mixture(model, [a, b]);
    const first = await timed(() => mixture.pxy(T));
    const more = [];
    const before = process.cpuUsage();
    for (let k = 0; k < 19; ++k) more.push(await timed(() => mixture.pxy(T + 0.1 * (k + 1))));
    const { user, system } = process.cpuUsage(before);
    console.log(`p-x-y ${model} ${a} + ${b}, ${T} K: first ${first.toFixed(0)} ms, then ${more.sort((x, y) => x - y)[9].toFixed(0)} ms (processor time ${((user + system) / 19000).toFixed(0)} ms)`);
}
corvane.close();

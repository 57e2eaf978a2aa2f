// Packs the data tree by need: core.json (the index) and one file per substance, with its parameter
// sets, its tables and the pairs that its name begins.
// usage: node scripts/pack.mjs [TREE [OUT]]
import { mkdirSync, readdirSync, readFileSync, rmSync, statSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { fileURLToPath } from 'node:url';

const root = fileURLToPath(new URL('..', import.meta.url));
const tree = process.argv[2] ?? join(root, '../CorvaneS');
const out = process.argv[3] ?? join(root, 'data');
const table = 'collected.tsv'; // its rows stand for further files of the folder

const packs = {}; // substance → path → text
const equations = {}; // substance → equations with parameters
const models = []; // "PR+vdW1"

const read = (path) => readFileSync(join(tree, path), 'utf8');
const folder = (path) => readdirSync(join(tree, path)).sort();
const isFolder = (path) => statSync(join(tree, path)).isDirectory();

/** Puts the files of a folder into the packs of their owners; of a table, its title and the rows that are theirs. */
function take(path, ownerOf) {
    const packOf = (entry) => {
        const owner = ownerOf(entry);
        return owner && (packs[owner] ??= {});
    };
    for (const entry of folder(path)) {
        const file = `CorvaneS/${path}/${entry}`;
        if (isFolder(`${path}/${entry}`)) continue;
        if (entry !== table) {
            const pack = packOf(entry);
            if (pack) pack[file] = read(`${path}/${entry}`);
            continue;
        }
        const [title, ...rows] = read(`${path}/${entry}`).split('\n');
        for (const row of rows.filter(Boolean)) {
            const pack = packOf(row.slice(0, row.indexOf('\t')));
            if (pack) pack[file] = `${pack[file] ?? `${title}\n`}${row}\n`;
        }
    }
}

const name = (entry) => entry.replace(/;\d+$/, '');
for (const equation of folder('parameters')) {
    take(`parameters/${equation}`, (entry) => {
        const owner = name(entry), of = (equations[owner] ??= []);
        if (!of.includes(equation)) of.push(equation);
        return owner;
    });
    for (const theory of folder(`parameters/${equation}`)) {
        if (!isFolder(`parameters/${equation}/${theory}`)) continue;
        models.push(`${equation}+${theory}`);
        // Of a pair its first substance; some theories have files of single ones.
        take(`parameters/${equation}/${theory}`, (entry) => (entry.includes('+') ? entry.slice(0, entry.indexOf('+')) : name(entry)));
    }
}
models.push('PR+HV'); // no pairs of it are published here
// What is of a substance without parameters is of no use. Tables of a further set are called <name>;<set>.
const known = (entry) => (equations[name(entry)] ? name(entry) : '');
for (const kind of ['ideal', 'solid']) {
    take(kind, known);
    for (const of of folder(kind)) if (isFolder(`${kind}/${of}`)) take(`${kind}/${of}`, known);
}

rmSync(out, { recursive: true, force: true });
mkdirSync(join(out, 'substances'), { recursive: true });
for (const [substance, files] of Object.entries(packs)) writeFileSync(join(out, 'substances', `${substance}.json`), JSON.stringify(files));
const core = { files: {}, equations, models: models.sort() };
for (const file of ['substances.tsv', 'fusion.tsv']) core.files[`CorvaneS/${file}`] = read(file);
writeFileSync(join(out, 'core.json'), JSON.stringify(core));
console.log(`pack: ${Object.keys(packs).length} substances, ${models.length} mixture models in ${out}`);

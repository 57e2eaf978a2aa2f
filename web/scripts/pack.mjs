// Packs the data tree by need: core.json (the index), one file per substance, one per mixture model.
// usage: node scripts/pack.mjs [TREE [OUT]]
import { mkdirSync, readdirSync, readFileSync, rmSync, statSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { fileURLToPath } from 'node:url';

const root = fileURLToPath(new URL('..', import.meta.url));
const tree = process.argv[2] ?? join(root, '../CorvaneS');
const out = process.argv[3] ?? join(root, 'data');

const substances = {}; // name → path → text
const models = {}; // "PR+vdW1" → path → text
const equations = {}; // name → equations with parameters

const read = (path) => readFileSync(join(tree, path), 'utf8');
const folder = (path) => readdirSync(join(tree, path)).sort();
const isFolder = (path) => statSync(join(tree, path)).isDirectory();
const put = (packs, name, path) => ((packs[name] ??= {})[`CorvaneS/${path}`] = read(path));

for (const equation of folder('parameters')) {
    for (const entry of folder(`parameters/${equation}`)) {
        const path = `parameters/${equation}/${entry}`;
        if (isFolder(path)) {
            for (const pair of folder(path)) put(models, `${equation}+${entry}`, `${path}/${pair}`);
            continue;
        }
        const name = entry.slice(0, entry.lastIndexOf(';'));
        put(substances, name, path);
        const of = (equations[name] ??= []);
        if (!of.includes(equation)) of.push(equation);
    }
}
for (const kind of ['ideal', 'solid']) {
    for (const name of folder(kind)) {
        const path = `${kind}/${name}`;
        // Tables of a further parameter set are called <name>;<set>.
        const owner = name.replace(/;\d+$/, '');
        if (!isFolder(path) && equations[owner]) put(substances, owner, path);
    }
}

rmSync(out, { recursive: true, force: true });
for (const kind of ['substances', 'models']) mkdirSync(join(out, kind), { recursive: true });
for (const [kind, packs] of Object.entries({ substances, models }))
    for (const [name, files] of Object.entries(packs))
        writeFileSync(join(out, kind, `${name}.json`), JSON.stringify(files));
const core = { files: {}, equations, models: Object.keys(models).sort() };
for (const name of ['substances.tsv', 'fusion.tsv']) core.files[`CorvaneS/${name}`] = read(name);
writeFileSync(join(out, 'core.json'), JSON.stringify(core));
console.log(`pack: ${Object.keys(substances).length} substances, ${core.models.length} mixture models in ${out}`);

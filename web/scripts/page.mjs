// The static page: page.js, page.css, index.html, and the data as scripts, in the folder that is named.
// usage: node scripts/page.mjs OUT
import { cpSync, mkdirSync, readdirSync, readFileSync, writeFileSync } from 'node:fs';
import { join, resolve } from 'node:path';
import { fileURLToPath } from 'node:url';
import { gzipSync } from 'node:zlib';
import { build } from 'vite';

const root = fileURLToPath(new URL('..', import.meta.url));
const out = resolve(process.argv[2] ?? join(root, '../build/page'));

await build({
    root,
    configFile: false,
    logLevel: 'warn',
    worker: { format: 'iife' },
    define: { 'process.env.NODE_ENV': '"production"' },
    build: {
        outDir: out,
        emptyOutDir: true,
        target: 'es2022',
        chunkSizeWarningLimit: 4000,
        // A classic script, since modules do not load from file://.
        lib: { entry: join(root, 'page/main.ts'), formats: ['iife'], name: 'page', fileName: () => 'page.js', cssFileName: 'page' },
    },
});
cpSync(join(root, 'page/index.html'), join(out, 'index.html'));

// A separator of lines is no character of a script in old browsers.
const script = (path, json) => `corvanePart(${JSON.stringify(path)}, ${json.replace(/[\u2028\u2029]/g, (c) => `\\u${c.charCodeAt(0).toString(16)}`)});\n`;
const data = join(out, 'data');
mkdirSync(data, { recursive: true });
for (const folder of ['.', 'substances']) {
    mkdirSync(join(data, folder), { recursive: true });
    for (const file of readdirSync(join(root, 'data', folder)))
        if (file.endsWith('.json')) {
            const path = (folder === '.' ? '' : `${folder}/`) + file.slice(0, -5);
            writeFileSync(join(data, `${path}.js`), script(path, readFileSync(join(root, 'data', folder, file), 'utf8')));
        }
}
const binary = gzipSync(readFileSync(join(root, 'lib/corvane.wasm')), { level: 9 });
writeFileSync(join(data, 'binary.js'), script('binary', JSON.stringify(binary.toString('base64'))));

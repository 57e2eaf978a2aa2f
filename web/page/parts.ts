// Library and data of the page, as scripts beside it: they load from a folder (file://), where
// nothing can be fetched.
import type { Parts } from '../src/client.js';
import { browserWorker } from '../src/browser_worker.js';
import CorvaneWorker from '../src/worker.js?worker&inline';

type Given = (path: string, value: unknown) => void;
const taken = new Map<string, unknown>();
(globalThis as unknown as { corvanePart: Given }).corvanePart = (path, value) => taken.set(path, value);

/** Runs a script that gives its part by corvanePart(path, value). */
function script(path: string): Promise<unknown> {
    return new Promise((resolve, reject) => {
        const element = document.createElement('script');
        element.src = `data/${path.split('/').map(encodeURIComponent).join('/')}.js`;
        element.onload = () => (taken.has(path) ? resolve(taken.get(path)) : reject(new Error(`${element.src} is damaged`)));
        element.onerror = () => reject(new Error(`${element.src} is missing`));
        document.head.append(element);
    });
}

export const parts: Parts = {
    binary: async () => {
        const text = (await script('binary')) as string;
        const packed = Uint8Array.from(atob(text), (c) => c.charCodeAt(0));
        return new Response(new Blob([packed]).stream().pipeThrough(new DecompressionStream('gzip'))).arrayBuffer();
    },
    data: script,
    worker: () => browserWorker(new CorvaneWorker()),
};

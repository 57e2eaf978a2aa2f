// The package: const corvane = await load(); in browsers and in Node.
import { browserWorker } from './browser_worker.js';
import { Corvane, type Parts } from './client.js';
import { fromUrl, type Source } from './data.js';
import type { Answer, Worker as Ends } from './protocol.js';

export * from './types.js';
export { Corvane, Fluid, Mixture, type CallOptions, type Parts } from './client.js';
export { fromUrl, type Source } from './data.js';

const data = new URL('../data/', import.meta.url);
const binary = new URL('../lib/corvane.wasm', import.meta.url);

async function nodeParts(): Promise<Parts> {
    const { readFile } = await import('node:fs/promises');
    const { Worker } = await import('node:worker_threads');
    const source: Source = async (path) => JSON.parse(await readFile(new URL(`${path}.json`, data), 'utf8')) as unknown;
    const worker = (): Ends => {
        const one = new Worker(new URL('./worker_node.js', import.meta.url));
        return {
            post: (request) => one.postMessage(request),
            onAnswer: (told) => void one.on('message', (answer: Answer) => told(answer)),
            onEnd: (told) => void one.on('error', (error) => told(error.message)),
            terminate: () => void one.terminate(),
            wait: (busy) => void (busy ? one.ref() : one.unref()),
        };
    };
    return {
        binary: async () => {
            const file = await readFile(binary);
            return file.buffer.slice(file.byteOffset, file.byteOffset + file.byteLength) as ArrayBuffer;
        },
        data: source,
        worker,
    };
}

function browserParts(): Parts {
    return {
        binary: async () => (await fetch(binary)).arrayBuffer(),
        data: fromUrl(data),
        worker: () => browserWorker(new Worker(new URL('./worker.js', import.meta.url), { type: 'module' })),
    };
}

/** Loads the library; parts replaces where the binary, the data or the worker come from. */
export async function load(parts: Partial<Parts> = {}): Promise<Corvane> {
    const inNode = typeof process === 'object' && !!process.versions?.node;
    return Corvane.create({ ...(inNode ? await nodeParts() : browserParts()), ...parts });
}

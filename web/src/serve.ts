// The worker's part: requests in their order, one answer to each.
import { Engine } from './engine.js';
import type { CreateModule } from './module.js';
import type { Answer, Request } from './protocol.js';
import { CorvaneFailure } from './types.js';

/** The function that takes requests. */
export function serve(create: CreateModule, answer: (answer: Answer) => void): (request: Request) => Promise<void> {
    let engine: Promise<Engine> | undefined;
    const handle = async (request: Request): Promise<void> => {
        if ('start' in request) {
            engine = Engine.create(create, request.start);
            engine.catch(() => undefined); // told at the first call
        } else if ('files' in request) {
            (await engine)?.addFiles(request.files);
        } else {
            const { id, call, values } = request;
            try {
                const running = await engine;
                if (!running) throw new CorvaneFailure('unknown', 'the library has not been loaded');
                let last = 0;
                running.onProgress((points) => {
                    const now = Date.now();
                    if (now - last > 100) answer({ id, points });
                    if (now - last > 100) last = now;
                });
                const method = running[call] as (...values: unknown[]) => unknown;
                answer({ id, result: method.apply(running, values) });
            } catch (error) {
                const kind = error instanceof CorvaneFailure ? error.kind : 'unknown';
                answer({ id, failure: { kind, message: error instanceof Error ? error.message : String(error) } });
            }
        }
    };
    // One after the other, also where a handler waits.
    let queue = Promise.resolve();
    return (request) => (queue = queue.then(() => handle(request)).catch(() => undefined));
}

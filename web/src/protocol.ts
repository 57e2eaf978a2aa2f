// What client and worker say to each other.
import type { Files } from './data.js';
import type { Engine } from './engine.js';
import type { FailureKind } from './types.js';

/** Methods of the engine that a client may call. */
export type Call = Exclude<keyof Engine, 'addFiles' | 'onProgress'>;

export type Request =
    | { start: ArrayBuffer }
    | { files: Files }
    | { id: number; call: Call; values: unknown[] };

export type Answer =
    | { id: number; result: unknown }
    | { id: number; failure: { kind: FailureKind; message: string } }
    | { id: number; points: number };

/** The two ends of a worker, in browsers and in Node. */
export interface Worker {
    post(request: Request): void;
    onAnswer(told: (answer: Answer) => void): void;
    /** It ended by itself. */
    onEnd(told: (why: string) => void): void;
    terminate(): void;
    /** Node: does the process wait for it? */
    wait?(busy: boolean): void;
}

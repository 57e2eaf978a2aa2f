// What the loader that Emscripten writes gives, and what is needed around its calls.
import { CorvaneFailure, failureKinds } from './types.js';

export interface Module {
    HEAP32: Int32Array;
    HEAPF64: Float64Array;
    FS: {
        mkdirTree(path: string): void;
        writeFile(path: string, text: string): void;
    };
    UTF8ToString(pointer: number): string;
    stringToUTF8(text: string, pointer: number, size: number): void;
    lengthBytesUTF8(text: string): number;
    onProgress?: (points: number) => void;
    [name: `_${string}`]: (...values: number[]) => number;
}
export type CreateModule = (options: object) => Promise<Module>;

/** Size of a CorvaneError: three integers and the text. */
const errorSize = 12 + 384;

/** Memory of one call, freed at its end. */
export class Frame {
    private readonly blocks: number[] = [];
    readonly error: number;

    private constructor(private readonly m: Module) {
        this.error = this.block(errorSize);
    }

    static with<T>(m: Module, use: (frame: Frame) => T): T {
        const frame = new Frame(m);
        try {
            return use(frame);
        } finally {
            for (const block of frame.blocks) m._free!(block);
        }
    }

    block(bytes: number): number {
        const pointer = this.m._malloc!(Math.max(bytes, 8));
        if (!pointer) throw new CorvaneFailure('no memory', 'out of memory');
        this.blocks.push(pointer);
        return pointer;
    }
    text(text: string): number {
        const size = this.m.lengthBytesUTF8(text) + 1;
        const pointer = this.block(size);
        this.m.stringToUTF8(text, pointer, size);
        return pointer;
    }
    doubles(values: ArrayLike<number>): number {
        const pointer = this.block(8 * values.length);
        this.m.HEAPF64.set(values, pointer / 8);
        return pointer;
    }
    integers(values: ArrayLike<number>): number {
        const pointer = this.block(4 * values.length);
        this.m.HEAP32.set(values, pointer / 4);
        return pointer;
    }

    /** Calls a function whose last argument is the record of errors. */
    call(name: string, ...values: number[]): number {
        const result = this.m[`_${name}`]!(...values, this.error);
        const kind = this.m.HEAP32[this.error / 4]!;
        if (kind !== 0) throw new CorvaneFailure(failureKinds[kind] ?? 'unknown', this.message());
        return result;
    }
    /** Text of a function that takes a buffer, its size and the record. */
    textOf(name: string, ...values: number[]): string {
        let size = 512;
        for (;;) {
            const buffer = this.block(size);
            const length = this.call(name, ...values, buffer, size);
            if (length < size) return this.m.UTF8ToString(buffer);
            size = length + 1;
        }
    }
    private message(): string {
        const size = this.m._Corvane_message!(0, 0) + 1;
        const buffer = this.block(size);
        this.m._Corvane_message!(buffer, size);
        return this.m.UTF8ToString(buffer).replace(/; all are in \/CorvaneS\/substances\.tsv$/, ''); // no file of the reader's
    }
}

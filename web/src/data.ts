// Where the packed data come from: one file a substance, fetched when needed.
import { CorvaneFailure, type Substance } from './types.js';

/** Path in the data home → text. */
export type Files = Record<string, string>;

export interface Core {
    files: Files;
    /** Substance → equations. */
    equations: Record<string, string[]>;
    models: string[];
}

/** Reads a pack by its path: "core", "substances/methane". */
export type Source = (path: string) => Promise<unknown>;

export const fromUrl =
    (base: URL | string): Source =>
    async (path) => {
        const url = new URL(`${path.split('/').map(encodeURIComponent).join('/')}.json`, base);
        const answer = await fetch(url);
        if (!answer.ok) throw new CorvaneFailure('not opened', `the data ${path} cannot be fetched (${answer.status})`);
        return answer.json();
    };

/** Packs of a source, each fetched once. */
export class Data {
    private readonly packs = new Map<string, Promise<unknown>>();
    constructor(private readonly source: Source) {}

    private get(path: string): Promise<unknown> {
        let pack = this.packs.get(path);
        if (!pack) {
            pack = this.source(path);
            pack.catch(() => this.packs.delete(path)); // another try later
            this.packs.set(path, pack);
        }
        return pack;
    }
    core = () => this.get('core') as Promise<Core>;
    async substance(name: string): Promise<Files> {
        // A substance of the index without parameters has no pack.
        return (await this.core()).equations[name] ? (this.get(`substances/${name}`) as Promise<Files>) : {};
    }
    async substances(): Promise<Substance[]> {
        const core = await this.core();
        const lines = (core.files['CorvaneS/substances.tsv'] ?? '').split('\n').slice(1);
        return lines
            .map((line) => line.split('\t'))
            .filter((word) => word[0])
            .map((word) => ({
                name: word[0]!,
                formula: word[1] ?? '',
                cas: word[2] ?? '',
                aliases: (word[11] ?? '-') === '-' ? [] : word[11]!.split(';').map((alias) => alias.trim()),
                equations: core.equations[word[0]!] ?? [],
            }));
    }
}

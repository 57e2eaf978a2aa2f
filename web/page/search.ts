// A field that finds substances by name, synonym, CAS number or formula: a list under it that is
// walked with the arrow keys (the combobox pattern of ARIA).
import type { Substance } from '../src/types.js';

const plain = (text: string) => text.toLowerCase().replace(/[\s_\-,']+/g, ' ').trim();

/** How well a substance fits what is typed: 0 best, nothing: not at all. */
function rank(s: Substance, text: string): number | undefined {
    const names = [s.name, ...s.aliases].map(plain);
    if (s.cas === text.trim() || s.formula.toLowerCase() === text.trim().toLowerCase() || names.includes(plain(text))) return 0;
    const begins = (name: string) => name.startsWith(plain(text));
    if (begins(names[0]!)) return 1;
    if (names.some(begins) || (/^\d+-/.test(text) && s.cas.startsWith(text.trim()))) return 2;
    return names.some((name) => name.includes(plain(text))) ? 3 : undefined;
}

/** The best fits, those with parameters for the equation first; short names before long ones. */
export function matches(substances: Substance[], text: string, equation: string, most = 12): Substance[] {
    if (!text.trim()) return [];
    return substances
        .map((s) => ({ s, rank: rank(s, text) }))
        .filter((found): found is { s: Substance; rank: number } => found.rank !== undefined)
        .map(({ s, rank }) => ({ s, order: (s.equations.includes(equation) ? 0 : 10) + rank }))
        .sort((a, b) => a.order - b.order || a.s.name.length - b.s.name.length)
        .slice(0, most)
        .map(({ s }) => s);
}

/** chosen: called with a name of the list, or with what was typed. */
export function searchField(input: HTMLInputElement, find: (text: string) => Substance[], chosen: (name: string) => void, note: (s: Substance) => string): void {
    const list = document.createElement('ul');
    list.id = `${input.id}-list`;
    list.hidden = true;
    list.setAttribute('role', 'listbox');
    list.setAttribute('aria-label', 'Substances');
    input.after(list);
    for (const [name, value] of [['role', 'combobox'], ['aria-autocomplete', 'list'], ['aria-expanded', 'false'], ['aria-controls', list.id]] as const)
        input.setAttribute(name, value);
    let found: Substance[] = [], at = -1, last = input.value;

    const mark = (k: number) => {
        at = k;
        [...list.children].forEach((item, i) => item.setAttribute('aria-selected', String(i === at)));
        if (at < 0) input.removeAttribute('aria-activedescendant');
        else input.setAttribute('aria-activedescendant', list.children[at]!.id);
        list.children[at]?.scrollIntoView({ block: 'nearest' });
    };
    const open = (on: boolean) => {
        list.hidden = !on;
        input.setAttribute('aria-expanded', String(on));
        if (!on) mark(-1);
    };
    const take = (name: string) => {
        open(false);
        if (name === last) return;
        last = input.value = name;
        chosen(name);
    };
    input.addEventListener('focus', () => (last = input.value));
    input.addEventListener('input', () => {
        found = find(input.value);
        list.replaceChildren(...found.map((s, k) => {
            const item = document.createElement('li');
            item.id = `${list.id}-${k}`;
            item.setAttribute('role', 'option');
            item.append(s.name, Object.assign(document.createElement('small'), { textContent: note(s) }));
            // Before the field loses the focus.
            item.addEventListener('pointerdown', (event) => (event.preventDefault(), take(s.name)));
            return item;
        }));
        open(found.length > 0);
    });
    input.addEventListener('keydown', (event) => {
        const step = { ArrowDown: 1, ArrowUp: -1 }[event.key];
        if (step && !list.hidden) {
            event.preventDefault();
            mark((at + step + found.length + (at < 0 && step < 0 ? 1 : 0)) % found.length);
        } else if (event.key === 'Enter') take(found[at]?.name ?? input.value);
        else if (event.key === 'Escape') open(false);
    });
    input.addEventListener('blur', () => take(input.value));
}

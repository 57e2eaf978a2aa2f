// Points that a user pastes, and values that a user saves.

/** Rows of numbers; lines that begin with no number are left out. Separated by tab, ; , or blanks. */
export function readTable(text: string): number[][] {
    const rows: number[][] = [];
    for (const line of text.split(/\r?\n/)) {
        // With tabs, semicolons or blanks between the values a comma is a decimal one.
        const separator = /[\t;]/.test(line) ? /[\t;]/ : /,/.test(line) && !/\d,\d+\s+-?\d/.test(line) ? /,/ : /\s+/;
        const words = line.trim().split(separator).map((word) => word.trim());
        const numbers = words.map((word) => (word === '' ? NaN : Number(separator.source === ',' ? word : word.replace(',', '.'))));
        if (numbers.length > 1 && numbers.slice(0, 2).every(Number.isFinite)) rows.push(numbers);
    }
    return rows;
}

export interface Table {
    header: string[];
    rows: (string | number)[][];
}

export function writeTable({ header, rows }: Table): string {
    const word = (value: string | number) => (/[",\n]/.test(String(value)) ? `"${String(value).replaceAll('"', '""')}"` : String(value));
    return [header, ...rows].map((row) => row.map(word).join(',')).join('\n') + '\n';
}

// The built page in Chromium, from its folder (file://), as people open it.
import { existsSync, mkdirSync, readFileSync } from 'node:fs';
import { createRequire } from 'node:module';
import { fileURLToPath, pathToFileURL } from 'node:url';
import { chromium, type Browser, type Page } from 'playwright-core';
import { afterAll, beforeAll, expect, it } from 'vitest';
import { native } from './native.js';

const built = fileURLToPath(new URL('../../build/page/index.html', import.meta.url));
const pictures = fileURLToPath(new URL('../../build/page-pictures', import.meta.url));
let browser: Browser, page: Page;
const errors: string[] = [];
const outside: string[] = []; // what was asked of a network

beforeAll(async () => {
    expect(existsSync(built)).toBe(true);
    mkdirSync(pictures, { recursive: true });
    browser = await chromium.launch({ executablePath: '/usr/bin/chromium', args: ['--no-sandbox'] });
    page = await browser.newPage();
    page.on('pageerror', (error) => errors.push(error.message));
    page.on('request', (request) => /^(file|data|blob|about):/.test(request.url()) || outside.push(request.url()));
});
afterAll(() => browser?.close());

const status = () => page.locator('#status').innerText();
const failure = () => page.locator('#failure:visible').innerText();
/** Opens a view and waits for its result. */
async function open(words: string): Promise<void> {
    await page.goto('about:blank');
    await page.goto(`${pathToFileURL(built).href}#${words}`);
    await done();
}
const done = () => page.waitForFunction(() => /ms\.$|No result/.test(document.getElementById('status')!.textContent!), undefined, { timeout: 60_000 });

/** What the rules of accessibility (WCAG 2, levels A and AA) find. */
async function barriers(): Promise<string[]> {
    if (!(await page.evaluate(() => 'axe' in window))) await page.addScriptTag({ path: createRequire(import.meta.url).resolve('axe-core/axe.min.js') });
    return page.evaluate(async () => {
        const axe = (window as unknown as { axe: { run(root: Document, options: object): Promise<{ violations: { id: string; nodes: { html: string }[] }[] }> } }).axe;
        const { violations } = await axe.run(document, { runOnly: ['wcag2a', 'wcag2aa', 'wcag21a', 'wcag21aa'] });
        return violations.map(({ id, nodes }) => `${id}: ${nodes[0]!.html}`);
    });
}
const openPart = (name: string) => page.locator('main > details').filter({ has: page.locator('summary', { hasText: name }) }).first().evaluate((part: HTMLDetailsElement) => void (part.open = true));

it.each(['pxy', 'Txy', 'projection', 'envelope', 'ph', 'Ts', 'flash'])('%s shows its result, wide and narrow, light and dark', async (tab) => {
    for (const [width, height] of [[1280, 1000], [400, 900]] as const) {
        await page.setViewportSize({ width, height });
        await open(`tab=${tab}`);
        expect(await status(), await page.locator('#failure').innerText()).toMatch(/certified/);
        if (tab !== 'flash') expect(await page.locator('#plot .scatterlayer .trace').count()).toBeGreaterThan(1);
        expect(await page.locator('#certificate p').count()).toBeGreaterThan(0);
        for (const theme of ['light', 'dark']) {
            if (theme === 'dark') await page.locator('#theme').click();
            expect(await barriers(), theme).toEqual([]);
            await page.screenshot({ path: `${pictures}/${tab}-${width}-${theme}.png`, fullPage: true });
        }
        await openPart('Values');
        await expect.poll(() => page.locator('#values tbody tr').count()).toBeGreaterThan(3);
        // Nothing is wider than the window.
        expect(await page.evaluate(() => document.documentElement.scrollWidth)).toBeLessThanOrEqual(width);
    }
    expect(errors).toEqual([]);
    expect(outside).toEqual([]);
});

it('shows the numbers of the native command', async () => {
    await open('tab=flash&T=250&p=2&z=0.4&model=PCSAFT%2BLB');
    const row = native('flash', 'PCSAFT+LB', 'methane=0.4', 'propane=0.6', '--T', '250', '--p', '2')[0]!;
    await openPart('Values');
    const shown = await page.locator('#values tr', { hasText: 'rho' }).locator('td').nth(1).textContent();
    expect(Number(shown)).toBe(Number(Number(row.rho).toPrecision(8)));
});

it('shows the splits with a vapour where liquids go on to high pressures', async () => {
    // Saturation of carbon dioxide at 290 K is 5.3 MPa; two liquids go on to 100 MPa, in the table.
    await open('tab=pxy&a=carbon_dioxide&b=water&T=290');
    const shown = await page.evaluate(() => (document.getElementById('plot') as unknown as { _fullLayout: { yaxis: { range: number[] } } })._fullLayout.yaxis.range);
    expect(shown[0]).toBe(0);
    expect(shown[1]).toBeGreaterThan(5.3);
    expect(shown[1]).toBeLessThan(2 * 5.3);
    expect(await page.locator('#certificate').innerText()).toContain('up to 100 MPa');
    expect(await page.locator('#p').isVisible()).toBe(false); // not of this diagram
});

it('follows the slider, and the link brings the view back', async () => {
    await page.setViewportSize({ width: 1280, height: 1000 });
    await open('tab=pxy');
    await page.locator('#kij-slide').focus();
    for (let k = 0; k < 3; ++k) await page.keyboard.press('ArrowRight');
    await page.waitForFunction(() => /ms\.$/.test(document.getElementById('status')!.textContent!));
    await page.waitForTimeout(150); // the link follows
    const kij = Number(await page.locator('#kij').inputValue());
    expect(kij).toBeCloseTo(0.012 + 3 * 0.002, 6); // steps of the slider
    await open(new URL(page.url()).hash.slice(1));
    expect(Number(await page.locator('#kij').inputValue())).toBe(kij);
    await openPart('Sources');
    await expect.poll(() => page.locator('#sources').innerText()).toContain('changed here (stored: 0.0119');
    await page.locator('#kij-stored').click(); // while they are open
    await expect.poll(() => page.locator('#sources').innerText()).not.toContain('changed here');
});

it('is used by keyboard and finds a substance by its number', async () => {
    await open('tab=pxy');
    await page.locator('#tab-pxy').focus();
    await page.keyboard.press('ArrowRight');
    await done();
    expect(await page.locator('[role=tab][aria-selected=true]').innerText()).toBe('T-x-y');
    await page.locator('#b').fill('74-84-0');
    await page.locator('#b').press('Enter');
    await expect.poll(() => page.locator('#b').inputValue()).toBe('ethane');
    await page.locator('#b').fill('C6H14');
    const options = page.locator('#b-list [role=option]');
    expect(await options.first().innerText()).toContain('110-54-3'); // of the isomers the one of the shortest name
    expect(await options.count()).toBeGreaterThan(4);
    await page.locator('#b').press('ArrowDown');
    await page.locator('#b').press('Enter');
    expect(await page.locator('#b').inputValue()).toBe('hexane');
    await expect.poll(() => page.locator('#b-is').innerText()).toContain('CAS 110-54-3');
});

it('tells values under the pointer and the source of every parameter', async () => {
    await page.setViewportSize({ width: 1280, height: 1000 });
    await open('tab=pxy');
    // A point in the middle of the liquid's curve.
    const at = await page.evaluate(() => {
        const plot = document.getElementById('plot') as unknown as {
            data: { name: string; x: number[]; y: number[] }[]; _fullLayout: Record<'xaxis' | 'yaxis', { d2p(value: number): number; _offset: number }>;
        };
        const { x, y } = plot.data.find((trace) => trace.name === 'liquid')!, k = Math.floor(x.length / 2), { xaxis, yaxis } = plot._fullLayout;
        return { x: xaxis._offset + xaxis.d2p(x[k]!), y: yaxis._offset + yaxis.d2p(y[k]!), value: x[k]! };
    });
    const box = (await page.locator('#plot').boundingBox())!;
    await page.mouse.move(box.x + at.x - 3, box.y + at.y);
    await page.mouse.move(box.x + at.x, box.y + at.y);
    const hover = page.locator('#plot .hoverlayer');
    await expect.poll(() => hover.textContent()).toMatch(/liquid.*p [\d.]+ MPa.*beside it vapour [\d.]+/);
    expect(await hover.textContent()).toContain(`x ${Number(at.value.toPrecision(6))}`);
    await openPart('Sources');
    await expect.poll(() => page.locator('#sources').innerText()).toMatch(/methane, set 1: .*Setzmann.*Ideal gas: .+[\s\S]*propane[\s\S]*Pair methane \+ propane, 0.0119.*DECHEMA/);
    await page.locator('#sources summary').first().click();
    expect(await page.locator('#sources pre').first().innerText()).toMatch(/Tc:\s+190\.5/);
    // A theory of groups: no k_ij, but each component's groups.
    await open('tab=pxy&model=SRK%2BPSRK&a=ethanol&b=hexane&T=340&kij=0.1');
    expect(await status()).toContain('certified');
    expect(await page.locator('#kij-field').isVisible()).toBe(false);
    await openPart('Sources');
    await expect.poll(() => page.locator('#sources').innerText()).toMatch(/hexane in mixtures: groups: Horstmann/);
});

it('saves pictures and values', async () => {
    await open('tab=pxy&unitP=bar');
    const saved = async (name: string) => {
        const [download] = await Promise.all([page.waitForEvent('download'), page.getByRole('button', { name, exact: true }).click()]);
        return readFileSync((await download.path())!);
    };
    expect((await saved('SVG')).toString()).toMatch(/^<svg[^>]*width="1000"[\s\S]*p \[bar\]/);
    const png = await saved('PNG');
    expect([png.readUInt32BE(16), png.readUInt32BE(20)]).toEqual([2000, 1400]); // as its header says
    const [header, ...rows] = (await saved('CSV')).toString().trim().split('\n');
    expect(header).toMatch(/^line,T \[K\],p \[bar\],x\(methane\) 1,/);
    const p = 10 * Number(native('saturation', 'PR', 'propane', '--T', '250')[0]!.p);
    expect(Math.min(...rows.map((row) => Math.abs(Number(row.split(',')[2]) / p - 1)))).toBeLessThan(1e-12);
});

it('shows and reads other units', async () => {
    await open('tab=flash&T=250&p=2&z=0.4&unitT=°C&unitP=bar&unitN=kg');
    expect([await page.locator('#T').inputValue(), await page.locator('#p').inputValue()]).toEqual(['-23.15', '20']);
    const row = native('flash', 'PR+vdW1', 'methane=0.4', 'propane=0.6', '--T', '250', '--p', '2', '--mass', '--unit-rho', 'kg/m3')[0]!;
    const cells = (name: string) => page.locator('#values tr', { hasText: name }).locator('td').allTextContents();
    expect(Number((await cells('rho [kg'))[1])).toBeCloseTo(Number(row.rho), 5);
    expect(Number((await cells('h [kJ/kg'))[1])).toBeCloseTo(Number(row.h), 5);
    await page.locator('#p').fill('10');
    await expect.poll(() => page.url()).toMatch(/&p=1&/);
});

it('lays own data over a diagram and fits k_ij to them', async () => {
    await open('tab=pxy&kij=0.1&T=250');
    const rows = [0.1, 0.2, 0.3].map((x) => native('bubble', 'PR+vdW1', `methane=${x}`, `propane=${1 - x}`, '--T', '250', '--kij', '0.03')[0]!);
    await openPart('Own data');
    await page.locator('#own').fill(rows.map((row, k) => `${(k + 1) / 10}, ${row.p}`).join('\n'));
    await page.locator('#fit').click();
    await page.waitForFunction(() => /deviation/.test(document.getElementById('fit-result')!.textContent!), undefined, { timeout: 60_000 });
    expect(await page.locator('#fit-result').innerText()).toMatch(/k_ij = 0\.03,/);
});

it('says in a sentence what is wrong', async () => {
    for (const [words, text] of [
        ['a=octan', 'octane'],
        ['model=MEOS%2BGERG&a=methane&b=ethylene_glycol', 'has no parameters'],
        ['b=', 'name a second one'],
        ['tab=pxy&T=-5', 'absolute zero'],
        ['a=', 'Name a substance.'],
        ['a=tris', "unknown substance 'tris'."],
    ] as const) {
        await open(words);
        expect(await failure()).toContain(text);
    }
});

it('can be cancelled', async () => {
    await page.goto('about:blank');
    await page.goto(`${pathToFileURL(built).href}#tab=projection&model=PCSAFT%2BLB&a=methane&b=hexane`);
    await page.locator('#cancel').click({ timeout: 60_000 });
    await done();
    expect(await failure()).toBe('The calculation was cancelled.');
    await page.locator('#tab-pxy').click();
    await done();
    expect(await status()).toContain('certified');
});

// The built page in Chromium, from its folder (file://), as people open it.
import { existsSync, mkdirSync } from 'node:fs';
import { fileURLToPath, pathToFileURL } from 'node:url';
import { chromium, type Browser, type Page } from 'playwright-core';
import { afterAll, beforeAll, expect, it } from 'vitest';
import { native } from './native.js';

const built = fileURLToPath(new URL('../../build/page/index.html', import.meta.url));
const pictures = fileURLToPath(new URL('../../build/page-pictures', import.meta.url));
let browser: Browser, page: Page;
const errors: string[] = [];

beforeAll(async () => {
    expect(existsSync(built)).toBe(true);
    mkdirSync(pictures, { recursive: true });
    browser = await chromium.launch({ executablePath: '/usr/bin/chromium', args: ['--no-sandbox'] });
    page = await browser.newPage();
    page.on('pageerror', (error) => errors.push(error.message));
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

it.each(['pxy', 'Txy', 'projection', 'envelope', 'ph', 'Ts', 'flash'])('%s shows its result, wide and narrow', async (tab) => {
    for (const [width, height] of [[1280, 1000], [400, 900]] as const) {
        await page.setViewportSize({ width, height });
        await open(`tab=${tab}`);
        expect(await status(), await page.locator('#failure').innerText()).toMatch(/certified/);
        if (tab !== 'flash') expect(await page.locator('#plot .scatterlayer .trace').count()).toBeGreaterThan(1);
        expect(await page.locator('#values tbody tr').count()).toBeGreaterThan(3);
        expect(await page.locator('#certificate p').count()).toBeGreaterThan(0);
        // Nothing is wider than the window.
        expect(await page.evaluate(() => document.documentElement.scrollWidth)).toBeLessThanOrEqual(width);
        await page.screenshot({ path: `${pictures}/${tab}-${width}.png`, fullPage: true });
    }
    expect(errors).toEqual([]);
});

it('shows the numbers of the native command', async () => {
    await open('tab=flash&T=250&p=2&z=0.4&model=PCSAFT%2BLB');
    const row = native('flash', 'PCSAFT+LB', 'methane=0.4', 'propane=0.6', '--T', '250', '--p', '2')[0]!;
    const shown = await page.locator('#values tr', { hasText: 'rho' }).locator('td').nth(1).textContent();
    expect(Number(shown)).toBe(Number(Number(row.rho).toPrecision(8)));
});

it('follows the slider, and the link brings the view back', async () => {
    await page.setViewportSize({ width: 1280, height: 1000 });
    await open('tab=pxy');
    await page.locator('#kij-slide').focus();
    for (let k = 0; k < 3; ++k) await page.keyboard.press('ArrowRight');
    await page.waitForFunction(() => /ms\.$/.test(document.getElementById('status')!.textContent!));
    const kij = Number(await page.locator('#kij').inputValue());
    expect(kij).toBeCloseTo(0.012 + 3 * 0.002, 6); // steps of the slider
    await open(new URL(page.url()).hash.slice(1));
    expect(Number(await page.locator('#kij').inputValue())).toBe(kij);
    await page.locator('summary', { hasText: 'Sources' }).click();
    expect(await page.locator('#sources').innerText()).toContain('changed here (stored: 0.0119');
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
});

it('lays own data over a diagram and fits k_ij to them', async () => {
    await open('tab=pxy&kij=0.1&T=250');
    const rows = [0.1, 0.2, 0.3].map((x) => native('bubble', 'PR+vdW1', `methane=${x}`, `propane=${1 - x}`, '--T', '250', '--kij', '0.03')[0]!);
    await page.locator('summary', { hasText: 'Own data' }).click();
    await page.locator('#own').fill(rows.map((row, k) => `${(k + 1) / 10}, ${row.p}`).join('\n'));
    await page.locator('#fit').click();
    await page.waitForFunction(() => /deviation/.test(document.getElementById('fit-result')!.textContent!), undefined, { timeout: 60_000 });
    expect(await page.locator('#fit-result').innerText()).toMatch(/k_ij = 0\.0(29\d*|30?\d*),/);
});

it('says in a sentence what is wrong', async () => {
    for (const [words, text] of [
        ['a=octan', 'octane'],
        ['model=MEOS%2BGERG&a=methane&b=ethylene_glycol', 'has no parameters'],
        ['b=', 'name a second one'],
        ['tab=pxy&T=-5', 'absolute zero'],
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

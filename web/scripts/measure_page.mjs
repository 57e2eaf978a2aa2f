// Times of the built page in Chromium, from its folder: the first p-x-y diagram, and one step of the
// slider to the picture, on the clock (medians) and in processor time of the page's own thread, which
// another load of the machine does not change.
// usage: node scripts/measure_page.mjs [INDEX.HTML]      after scripts/page
import { fileURLToPath, pathToFileURL } from 'node:url';
import { chromium } from 'playwright-core';

const built = pathToFileURL(process.argv[2] ?? fileURLToPath(new URL('../../build/page/index.html', import.meta.url))).href;
const browser = await chromium.launch({ executablePath: '/usr/bin/chromium', args: ['--no-sandbox'] });
const page = await browser.newPage({ viewport: { width: 1280, height: 1000 } });
const median = (list) => list.sort((x, y) => x - y)[Math.floor(list.length / 2)].toFixed(0);
const done = () => page.waitForFunction(() => /ms\.$|No result/.test(document.getElementById('status').textContent));
for (const [model, a, b, T] of [['PR+vdW1', 'methane', 'propane', 250], ['PR+vdW1', 'carbon_dioxide', 'hexane', 300], ['SRK+vdW1', 'methane', 'propane', 250], ['PCSAFT+LB', 'methane', 'propane', 250], ['MEOS+GERG', 'methane', 'propane', 250]]) {
    const first = [];
    for (let k = 0; k < 5; ++k) {
        await page.goto('about:blank');
        const begin = performance.now();
        await page.goto(`${built}#tab=pxy&a=${a}&b=${b}&model=${encodeURIComponent(model)}&T=${T}`);
        await done();
        first.push(performance.now() - begin);
    }
    const field = model === 'MEOS+GERG' ? '#T' : '#kij-slide';
    await page.locator(field).focus();
    const cdp = await page.context().newCDPSession(page);
    await cdp.send('Performance.enable', { timeDomain: 'threadTicks' });
    const spent = async () => 1000 * (await cdp.send('Performance.getMetrics')).metrics.find((m) => m.name === 'TaskDuration').value;
    const before = await spent();
    const times = await page.evaluate(async (field) => {
        const input = document.querySelector(field), root = document.documentElement, list = [];
        for (let k = 0; k < 15; ++k) {
            const before = root.dataset.done;
            input.value = String(Number(input.value) + (field === '#T' ? 0.1 : 0.002));
            const begin = performance.now();
            input.dispatchEvent(new Event('input', { bubbles: true }));
            while (root.dataset.done === before) await new Promise((next) => setTimeout(next, 1));
            list.push([performance.now() - begin, Number(root.dataset.computed)]);
        }
        return list;
    }, field);
    const thread = (await spent()) - before;
    console.log(`${model} ${a} + ${b}, ${T} K: page to first diagram ${median(first)} ms; a step of ${field} ${median(times.map((t) => t[0]))} ms (the first five ${times.slice(0, 5).map((t) => t[0].toFixed(0))}), of which computed in ${median(times.map((t) => t[1]))} ms, processor time of the page ${(thread / times.length).toFixed(0)} ms`);
}
await browser.close();

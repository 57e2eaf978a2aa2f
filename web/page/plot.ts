// Curves on Plotly, in the colours of the page.
import Plotly from 'plotly.js-basic-dist-min';
import type { Curve, View } from './views.js';

// Okabe and Ito's colours, told apart by colour-blind people as well; light on dark ones are lifted.
const light = ['#0072b2', '#d55e00', '#009e73', '#cc79a7', '#8a6d00', '#56b4e9', '#6b4ba1', '#333333'];
const dark = ['#56b4e9', '#ff9a4d', '#3fd1a4', '#e7a3c8', '#f0e442', '#9ad4f7', '#b9a2e6', '#dddddd'];
const kinds: Record<string, number> = {
    'vapour-liquid': 0, 'liquid-liquid': 2, 'fluid-fluid': 4, critical: 7, 'three-phase': 6, azeotropes: 3, azeotropic: 3, open: 1,
    envelope: 0, cricondentherm: 1, cricondenbar: 2, liquid: 0, vapour: 1, isotherm: 7, isobar: 7,
};
export const colourOf = (kind: string): number => kinds[kind] ?? 5;

function style(): { dark: boolean; text: string; grid: string; weak: string } {
    const of = getComputedStyle(document.documentElement);
    const value = (name: string) => of.getPropertyValue(name).trim();
    return { dark: value('--back') !== '#fff', text: value('--text'), grid: value('--grid'), weak: value('--line') };
}

export function draw(element: HTMLElement, view: View, own: { x: number[]; y: number[] } | undefined): Promise<unknown> {
    const s = style(), colours = s.dark ? dark : light;
    const shown = new Set<string>();
    const word = (title: string) => title.split(' ')[0]!;
    const unit = (title: string) => / \[(.*)\]$/.exec(title)?.[1] ?? '';
    const value = (axis: 'x' | 'y', title: string) => `${word(title).replace(/,$/, '')} %{${axis}:.6g} ${unit(title)}`;
    const trace = (curve: Curve): Plotly.Data => {
        const again = curve.hidden || shown.has(curve.name);
        if (!curve.hidden) shown.add(curve.name);
        const colour = curve.colour === -1 ? s.weak : curve.colour === -2 ? s.text : colours[curve.colour % colours.length]!;
        return {
            type: 'scatter', name: curve.name, x: Array.from(curve.x), y: Array.from(curve.y),
            mode: curve.labels ? 'text' : curve.marks ? 'markers' : 'lines',
            ...(curve.labels && { text: curve.labels, textposition: view.labelsAt ?? 'middle center', textfont: { size: 12, color: s.text }, cliponaxis: false }),
            line: { color: colour, width: curve.thin ? 1 : 2.2, dash: curve.dashed ? 'dash' : 'solid', shape: curve.smooth ? 'spline' : 'linear' },
            marker: { color: colour, size: 8 }, showlegend: !again, legendgroup: curve.name, connectgaps: false,
            ...(curve.labels || curve.colour < 0
                ? { hoverinfo: 'skip' }
                : {
                      customdata: curve.notes, hovertemplate:
                          `<b>${curve.name}</b><br>${value('x', view.xTitle)}<br>${value('y', view.yTitle)}${curve.notes ? '<br>%{customdata}' : ''}<extra></extra>`,
                  }),
        } as Plotly.Data;
    };
    const data = view.curves.map(trace);
    if (own?.x.length)
        data.push({ type: 'scatter', mode: 'markers', name: 'own data', x: own.x, y: own.y, marker: { color: s.text, size: 8, symbol: 'diamond-open' } } as Plotly.Data);
    // No search for labels that might not fit: it measures each of them, a quarter of the time of drawing.
    const axis = { gridcolor: s.grid, zerolinecolor: s.grid, linecolor: s.weak, mirror: true, ticklabeloverflow: 'allow' as const, tickangle: 0 };
    const layout = {
        paper_bgcolor: 'rgba(0,0,0,0)', plot_bgcolor: 'rgba(0,0,0,0)',
        font: { color: s.text, family: 'system-ui, sans-serif' }, margin: { l: 60, r: 16, t: 16, b: 48 },
        xaxis: { ...axis, title: { text: view.xTitle }, ...(view.fractions && { range: [0, 1] }) },
        yaxis: { ...axis, title: { text: view.yTitle }, ...(view.logY ? { type: 'log', dtick: 1 } : { type: 'linear', rangemode: view.yTitle.startsWith('p ') ? 'nonnegative' : 'normal', ...(view.top ? { range: [0, view.top] } : { autorange: true }) }) },
        legend: { orientation: 'h', y: -0.18, yanchor: 'top' }, hovermode: 'closest',
    } as Partial<Plotly.Layout>;
    element.setAttribute('role', 'img');
    element.setAttribute('aria-label', `${view.title}. The numbers are in the table “Values”.`);
    return Plotly.react(element, data, layout, { responsive: true, displaylogo: false, displayModeBar: false });
}

/** Saves the picture as it is seen, with its title, on the colour of the page. */
export function save(element: HTMLElement, format: 'svg' | 'png', title: string): Promise<string> {
    const { data, layout } = element as unknown as { data: Plotly.Data[]; layout: Partial<Plotly.Layout> };
    const back = getComputedStyle(document.documentElement).getPropertyValue('--back').trim();
    const figure = { data, layout: { ...layout, paper_bgcolor: back, title: { text: title, font: { size: 15 } }, margin: { ...layout.margin, t: 44 } } };
    return Plotly.downloadImage(figure as never, { format, filename: title, width: 1000, height: 700, scale: format === 'png' ? 2 : 1 } as never);
}

#include <tools/corvane/diagrams/page.h>

namespace cli {

char const* const kPageScript = R"script('use strict';
(function () {
const data = JSON.parse(document.getElementById('data').textContent);
const figure = document.getElementById('picture');
const triangle = data.corners.length === 3;
const W = 900, H = 620, box = {left: 85, top: 20, right: triangle ? 880 : 660, bottom: 540};
const NS = 'http://www.w3.org/2000/svg';
const make = (parent, name, attributes, text) => {
  const e = document.createElementNS(NS, name);
  for (const k in attributes) e.setAttribute(k, attributes[k]);
  if (text !== undefined) e.textContent = text;
  parent.appendChild(e);
  return e;
};
// An axis is seen from low to high; of a logarithmic one the logarithms are kept.
const first = data.axes.map(a => a.log ? [Math.log10(a.low), Math.log10(a.high)] : [a.low, a.high]);
if (triangle) {  // equal scales
  const wide = (first[1][1] - first[1][0]) * (box.right - box.left) / (box.bottom - box.top);
  first[0] = [0.5 - wide / 2, 0.5 + wide / 2];
}
let seen = first.map(a => a.slice());
const inner = (v, i) => data.axes[i].log ? Math.log10(v) : v;
const outer = (v, i) => data.axes[i].log ? Math.pow(10, v) : v;
const X = v => box.left + (inner(v, 0) - seen[0][0]) / (seen[0][1] - seen[0][0]) * (box.right - box.left);
const Y = v => box.bottom - (inner(v, 1) - seen[1][0]) / (seen[1][1] - seen[1][0]) * (box.bottom - box.top);

const svg = make(figure, 'svg', {viewBox: '0 0 ' + W + ' ' + H, role: 'img', tabindex: 0,
  'aria-label': data.title, 'font-family': 'sans-serif', 'font-size': 15});
figure.replaceChildren(svg);
const clip = make(make(svg, 'defs', {}), 'clipPath', {id: 'inside'});
make(clip, 'rect', {x: box.left - 7, y: box.top - 7, width: box.right - box.left + 14, height: box.bottom - box.top + 14});
const back = make(svg, 'g', {}), front = make(svg, 'g', {'clip-path': 'url(#inside)'}), key = make(svg, 'g', {});
const spot = make(svg, 'circle', {r: 6, fill: 'none', stroke: '#000', visibility: 'hidden'});
const told = document.createElement('p');
told.id = 'told';
told.setAttribute('aria-live', 'polite');
const bar = document.createElement('p');
figure.append(told, bar);

function ticks(i) {
  const [a, b] = seen[i], list = [];
  if (data.axes[i].log && b - a > 0.7) {
    for (let d = Math.floor(a); d <= b; ++d)
      for (const m of b - a > 4 ? [1] : [1, 2, 5]) {
        const v = d + Math.log10(m);
        if (v >= a && v <= b) list.push(outer(v, i));
      }
    return list;
  }
  const low = outer(a, i), high = outer(b, i), rough = (high - low) / 7;
  const power = Math.pow(10, Math.floor(Math.log10(rough))), part = rough / power;
  const step = (part > 5 ? 10 : part > 2 ? 5 : part > 1 ? 2 : 1) * power;
  for (let k = Math.ceil(low / step - 1e-9); k * step <= high * (1 + 1e-12) && list.length < 20; ++k) list.push(k * step);
  return list;
}
const short = v => String(Number(v.toPrecision(6)));
const plain = v => Math.abs(v) < 1e-12 ? '0' : short(v);

const shapes = {
  disc: (x, y) => ['circle', {cx: x, cy: y, r: 5}], ring: (x, y) => ['circle', {cx: x, cy: y, r: 4.5, fill: 'none'}],
  square: (x, y) => ['rect', {x: x - 4, y: y - 4, width: 8, height: 8}],
  plus: (x, y) => ['path', {d: `M${x - 5},${y}h10M${x},${y - 5}v10`}],
  up: (x, y) => ['path', {d: `M${x},${y - 6}l6,10h-12z`}],
  'up-open': (x, y) => ['path', {d: `M${x},${y - 6}l6,10h-12z`, fill: 'none'}],
  down: (x, y) => ['path', {d: `M${x},${y + 6}l6,-10h-12z`}],
  'diamond-open': (x, y) => ['path', {d: `M${x},${y - 6}l6,6l-6,6l-6,-6z`, fill: 'none'}],
  'square-open': (x, y) => ['rect', {x: x - 4, y: y - 4, width: 8, height: 8, fill: 'none'}],
  'down-open': (x, y) => ['path', {d: `M${x},${y + 6}l6,-10h-12z`, fill: 'none'}],
  cross: (x, y) => ['path', {d: `M${x - 4},${y - 4}l8,8m-8,0l8,-8`}],
  'pentagon-open': (x, y) => ['path', {d: `M${x},${y - 5}l5,3.5l-2,6h-6l-2,-6z`, fill: 'none'}],
  star: (x, y) => ['path', {d: `M${x - 5},${y}h10M${x},${y - 5}v10M${x - 4},${y - 4}l8,8m-8,0l8,-8`}]
};
const symbol = (parent, m, x, y) => {
  const [name, attributes] = shapes[m.symbol](x, y);
  make(parent, name, Object.assign({fill: m.colour, stroke: m.colour, 'stroke-width': 1.3}, attributes));
};
function path(points) {
  let d = '', pen = 'M';
  for (const p of points) {
    const x = p && X(p[0]), y = p && Y(p[1]);
    if (!p || !isFinite(x) || !isFinite(y)) { pen = 'M'; continue; }
    d += pen + Math.max(-1e5, Math.min(1e5, x)).toFixed(2) + ',' + Math.max(-1e5, Math.min(1e5, y)).toFixed(2);
    pen = 'L';
  }
  return d;
}
const corner = k => k === 0 ? [0.5, Math.sqrt(0.75)] : k === 1 ? [0, 0] : [1, 0];
const place = (top, left) => [1 - left - 0.5 * top, Math.sqrt(0.75) * top];

function surroundings() {
  back.replaceChildren();
  if (triangle) {
    const line = (a, b, how) => make(front, 'path', Object.assign({d: path([a, b]), fill: 'none'}, how));
    for (let k = 1; k < 10; ++k) {
      const x = 0.1 * k, how = {stroke: '#e4e4e4'};
      line(place(x, 0), place(x, 1 - x), how);
      line(place(0, x), place(1 - x, x), how);
      line(place(0, 1 - x), place(1 - x, 0), how);
    }
    [0, 1, 2].forEach(k => line(corner(k), corner((k + 1) % 3), {stroke: '#202020', 'stroke-width': 1.5}));
    data.corners.forEach((name, k) => {
      const at = corner(k);
      make(front, 'text', {x: X(at[0]), y: Y(at[1]) + (k === 0 ? -10 : 24), 'text-anchor': 'middle'}, name);
    });
    return;
  }
  for (const v of ticks(0)) {
    make(back, 'path', {d: `M${X(v)},${box.top}V${box.bottom + 5}`, stroke: '#d8d8d8'});
    make(back, 'text', {x: X(v), y: box.bottom + 22, 'text-anchor': 'middle'}, plain(v));
  }
  for (const v of ticks(1)) {
    make(back, 'path', {d: `M${box.left - 5},${Y(v)}H${box.right}`, stroke: '#d8d8d8'});
    make(back, 'text', {x: box.left - 10, y: Y(v) + 5, 'text-anchor': 'end'}, plain(v));
  }
  make(back, 'path', {d: `M${box.left},${box.top}V${box.bottom}H${box.right}`, fill: 'none', stroke: '#202020'});
  make(back, 'text', {x: (box.left + box.right) / 2, y: box.bottom + 50, 'text-anchor': 'middle'}, data.axes[0].name);
  make(back, 'text', {'text-anchor': 'middle', transform: `translate(20,${(box.top + box.bottom) / 2})rotate(-90)`},
    data.axes[1].name);
}
function draw() {
  front.replaceChildren();
  surroundings();
  for (const c of data.curves)
    make(front, 'path', {d: path(c.points), fill: 'none', stroke: c.colour, 'stroke-width': c.width,
      'stroke-dasharray': c.dashes.join(' ')});
  for (const m of data.marks) for (const p of m.points) if (p) symbol(front, m, X(p[0]), Y(p[1]));
  for (const l of data.labels)
    make(front, 'text', {x: X(l.at[0]), y: Y(l.at[1]) + 5, 'text-anchor': 'middle', fill: l.colour, stroke: '#fff',
      'stroke-width': 4, 'paint-order': 'stroke'}, l.text);
}
(function keys() {
  const names = new Set();
  let y = 35;
  const x = triangle ? 640 : 675;
  for (const c of data.curves) {
    if (!c.name || names.has(c.name)) continue;
    names.add(c.name);
    make(key, 'path', {d: `M${x},${y}h26`, stroke: c.colour, 'stroke-width': c.width, 'stroke-dasharray': c.dashes.join(' ')});
    make(key, 'text', {x: x + 34, y: y + 5}, c.name);
    if (c.symbol) symbol(key, c, x + 13, y);
    y += 22;
  }
  for (const m of data.marks) {
    if (!m.name || names.has(m.name)) continue;
    names.add(m.name);
    symbol(key, m, x + 13, y);
    make(key, 'text', {x: x + 34, y: y + 5}, m.name);
    y += 22;
  }
})();

function zoom(factor, x, y) {
  [x, y].forEach((at, i) => {
    const [a, b] = seen[i], whole = first[i][1] - first[i][0], width = (b - a) * factor;
    if (width > 4 * whole || width < 1e-6 * whole) return;
    const v = a + at * (b - a);
    seen[i] = [v - at * width, v + (1 - at) * width];
  });
  draw();
}
function pan(x, y) {
  [x, y].forEach((part, i) => { const d = part * (seen[i][1] - seen[i][0]); seen[i] = [seen[i][0] + d, seen[i][1] + d]; });
  draw();
}
function reset() { seen = first.map(a => a.slice()); draw(); }
function where(event) {
  const r = svg.getBoundingClientRect();
  const px = (event.clientX - r.left) / r.width * W, py = (event.clientY - r.top) / r.height * H;
  return {px, py, x: (px - box.left) / (box.right - box.left), y: (box.bottom - py) / (box.bottom - box.top)};
}
function words(point) {
  if (!triangle) return data.axes.map((a, i) => a.name + ' = ' + short(point[i])).join(',  ');
  const top = point[1] / Math.sqrt(0.75), left = 1 - point[0] - 0.5 * top;
  return [top, left, 1 - top - left].map((v, k) => data.corners[k] + ' ' + Number(v.toPrecision(5))).join(',  ');
}
function tell(at) {
  let best = 14, found = null;
  for (const c of data.curves.concat(data.marks))
    for (const p of c.points) {
      const d = p ? Math.hypot(X(p[0]) - at.px, Y(p[1]) - at.py) : 1e9;
      if (d < best) { best = d; found = {p, name: c.name}; }
    }
  spot.setAttribute('visibility', found ? 'visible' : 'hidden');
  if (found) {
    spot.setAttribute('cx', X(found.p[0]));
    spot.setAttribute('cy', Y(found.p[1]));
    told.textContent = (found.name ? found.name + ':  ' : '') + words(found.p);
  } else {
    told.textContent = words([0, 1].map(i => outer(seen[i][0] + (i ? at.y : at.x) * (seen[i][1] - seen[i][0]), i)));
  }
}
let held = null;
svg.addEventListener('wheel', e => { e.preventDefault(); const at = where(e); zoom(Math.exp(e.deltaY * 0.0015), at.x, at.y); }, {passive: false});
svg.addEventListener('pointerdown', e => { held = where(e); svg.setPointerCapture(e.pointerId); });
svg.addEventListener('pointerup', () => { held = null; });
svg.addEventListener('pointermove', e => {
  const at = where(e);
  if (held) { pan(held.x - at.x, held.y - at.y); held = at; } else tell(at);
});
svg.addEventListener('dblclick', reset);
svg.addEventListener('keydown', e => {
  const act = {'+': () => zoom(0.8, 0.5, 0.5), '-': () => zoom(1.25, 0.5, 0.5), '0': reset, ArrowLeft: () => pan(-0.1, 0),
    ArrowRight: () => pan(0.1, 0), ArrowUp: () => pan(0, 0.1), ArrowDown: () => pan(0, -0.1)}[e.key];
  if (act) { e.preventDefault(); act(); }
});
for (const [text, act] of [['+', () => zoom(0.8, 0.5, 0.5)], ['\u2212', () => zoom(1.25, 0.5, 0.5)], ['whole', reset]]) {
  const button = document.createElement('button');
  button.type = 'button';
  button.textContent = text;
  button.addEventListener('click', act);
  bar.append(button);
}
bar.append('wheel: zoom; drag: pan; double click: whole');
draw();
})();
)script";

}  // namespace cli

// The controls of a replay. In tests and links, the address decides where the page begins: with #at=0.5 halfway through
// the replay, paused; a changed address is followed.
const byId = id => document.getElementById(id);
const stage = byId('stage');
const picture = byId('picture');
const bar = byId('bar');
const svg = picture.querySelector('svg');
const { paths, layers } = pathsOf(svg);
const drawing = strokesOf(byId('strokes').textContent, paths);
const strokes = drawing.strokes;
const paper = svg.viewBox.baseVal;
const background = svg.querySelector('rect');
const painter = new Painter(picture, drawing, paper, background ? background.getAttribute('fill') : '#fff');

// How many milliseconds a frame may paint: while it plays, it must stay smooth.
const playingBudget = 10, otherBudget = 25;
const speeds = [0.25, 0.5, 1, 2, 4, 8, 16, 32, 64];
const usualLength = 60000;

let time = drawing.duration;
let isPlaying = false;
let isHeld = false;
let speed = speeds.find(one => one >= 1 && drawing.duration / one <= usualLength) || speeds[speeds.length - 1];
let size = { width: 0, height: 0 };
let view = { x: 0, y: 0, scale: 1 };
let isFitted = true;
let lastFrame = 0;
let request = 0;

// ---- the picture

// How many strokes are finished at this time.
function finishedAt(when) {
  let low = 0, high = strokes.length;
  while (low < high) {
    const middle = (low + high) >> 1;
    if (strokes[middle].stop <= when) low = middle + 1; else high = middle;
  }
  return low;
}

function frame(now) {
  request = 0;
  if (isPlaying && !isHeld) advance(Math.min(now - lastFrame, 100));
  lastFrame = now;
  const count = finishedAt(time);
  const isThere = painter.paint(count, isPlaying ? playingBudget : otherBudget);
  // Where painting takes longer than drawing took, the replay waits for it.
  if (!isThere && isPlaying && painter.front.version === painter.version) {
    time = strokes[painter.front.count].start;
  }
  const current = strokes[isThere ? count : strokes.length];
  painter.grow(current && current.start <= time ? current : undefined, time);
  stage.setAttribute('aria-busy', String(!isThere));
  if (isPlaying && time >= drawing.duration && isThere) play(false);
  showTime();
  if (isPlaying || !isThere) ask();
}

function ask() {
  if (!request && size.width) request = requestAnimationFrame(frame);
}

// Strokes of layers that are off take no time.
function advance(milliseconds) {
  time += milliseconds * speed;
  for (let i = finishedAt(time); i < strokes.length && !strokes[i].path.layer.isShown; ++i) {
    time = Math.max(time, strokes[i].stop);
  }
  time = Math.min(time, drawing.duration);
}

function seek(when) {
  time = Math.min(Math.max(when, 0), drawing.duration);
  ask();
}

function play(on) {
  if (on && time >= drawing.duration) time = 0;
  if (on) lastFrame = performance.now();
  isPlaying = on;
  byId('play').setAttribute('aria-label', on ? 'Pause' : 'Play');
  byId('play-icon').setAttribute('d', on ? 'M6 4h4v16H6zm8 0h4v16h-4z' : 'M7 4v16l13-8z');
  ask();
}

// One stroke back or on, to the end of one that is shown.
function step(by) {
  play(false);
  let count = finishedAt(time) + by;
  while (strokes[count - 1] && !strokes[count - 1].path.layer.isShown) count += by;
  seek(count > 0 ? strokes[Math.min(count, strokes.length) - 1].stop : 0);
}

// ---- time, bar and marks

function clock(milliseconds) {
  const seconds = Math.floor(milliseconds / 1000);
  return `${Math.floor(seconds / 60)}:${String(seconds % 60).padStart(2, '0')}`;
}

function layerAt(when) {
  return strokes[Math.min(finishedAt(when), strokes.length - 1)].path.layer;
}

function setText(element, words) {
  if (element.textContent !== words) element.textContent = words;
}

function showTime() {
  bar.value = time;
  bar.style.setProperty('--done', `${drawing.duration ? time / drawing.duration * 100 : 100}%`);
  const words = `${clock(time)} of ${clock(drawing.duration)}, ${layerAt(time).name}`;
  if (bar.getAttribute('aria-valuetext') !== words) bar.setAttribute('aria-valuetext', words);
  setText(byId('time'), `${clock(time)} / ${clock(drawing.duration)}`);
}

// A mark where the replay gets to another layer.
function makeMarks() {
  for (let i = 1; i < strokes.length; ++i) {
    const layer = strokes[i].path.layer;
    if (layer === strokes[i - 1].path.layer) continue;
    const mark = document.createElement('i');
    mark.title = layer.name;
    mark.style.left = `${strokes[i].start / drawing.duration * 100}%`;
    byId('marks').append(mark);
  }
}

// ---- layers

function showLayer(layer, on) {
  layer.isShown = on;
  layer.group.classList.toggle('on', on);
  layer.group.classList.toggle('off', !on);
  painter.change();
  ask();
}

function makeLayerList() {
  // The uppermost first, as in drawing programs.
  for (const layer of [...layers].reverse()) {
    const box = document.createElement('input');
    box.type = 'checkbox';
    box.checked = layer.isShown;
    box.addEventListener('change', () => showLayer(layer, box.checked));
    const name = document.createElement('span');
    name.textContent = layer.name;
    const label = document.createElement('label');
    label.append(box, name);
    const item = document.createElement('li');
    item.append(label);
    byId('layer-list').append(item);
  }
  byId('layers').hidden = layers.length < 2;
}

// ---- zoom and pan

function fittingScale() {
  const margin = Math.min(24, size.width / 20);
  return Math.max(1e-6, Math.min((size.width - 2 * margin) / paper.width, (size.height - 2 * margin) / paper.height));
}

function look(next) {
  // Some of the paper always stays in sight.
  const kept = 40;
  view = {
    scale: next.scale,
    x: Math.min(Math.max(next.x, kept - paper.width * next.scale), size.width - kept),
    y: Math.min(Math.max(next.y, kept - paper.height * next.scale), size.height - kept),
  };
  painter.look(view);
  const percent = `${Math.round(view.scale / fittingScale() * 100)}%`;
  setText(byId('fit'), percent);
  byId('fit').setAttribute('aria-label', `${percent}, show all of the drawing`);
  ask();
}

function fit() {
  isFitted = true;
  const scale = fittingScale();
  look({ scale, x: (size.width - paper.width * scale) / 2, y: (size.height - paper.height * scale) / 2 });
}

// The place `x`, `y` of the stage stays where it is.
function zoom(factor, x = size.width / 2, y = size.height / 2) {
  isFitted = false;
  const least = fittingScale() / 2;
  const scale = Math.min(Math.max(view.scale * factor, least), least * 128);
  look({ scale, x: x - (x - view.x) * scale / view.scale, y: y - (y - view.y) * scale / view.scale });
}

function pan(x, y) {
  isFitted = false;
  look({ scale: view.scale, x: view.x + x, y: view.y + y });
}

function measure() {
  const { clientWidth: width, clientHeight: height } = stage;
  if (!width || !height || (width === size.width && height === size.height)) return;
  const wasFitted = isFitted;
  const before = size;
  size = { width, height };
  painter.resize(width, height, Math.min(devicePixelRatio || 1, 3));
  if (wasFitted) fit(); else pan((width - before.width) / 2, (height - before.height) / 2);
}

const fingers = new Map();

// The middle of the fingers and how far they are apart.
function grip() {
  const places = [...fingers.values()];
  const middle = { x: 0, y: 0, spread: 0 };
  for (const place of places) {
    middle.x += place.x / places.length;
    middle.y += place.y / places.length;
  }
  if (places.length > 1) middle.spread = Math.hypot(places[0].x - places[1].x, places[0].y - places[1].y);
  return middle;
}

function placeOf(event) {
  const box = stage.getBoundingClientRect();
  return { x: event.clientX - box.left, y: event.clientY - box.top };
}

stage.addEventListener('pointerdown', event => {
  if (event.button !== 0) return;
  stage.setPointerCapture(event.pointerId);
  fingers.set(event.pointerId, placeOf(event));
});
stage.addEventListener('pointermove', event => {
  if (!fingers.has(event.pointerId)) return;
  const before = grip();
  fingers.set(event.pointerId, placeOf(event));
  const now = grip();
  pan(now.x - before.x, now.y - before.y);
  if (before.spread > 0 && now.spread > 0) zoom(now.spread / before.spread, now.x, now.y);
});
for (const name of ['pointerup', 'pointercancel']) {
  stage.addEventListener(name, event => fingers.delete(event.pointerId));
}
stage.addEventListener('wheel', event => {
  event.preventDefault();
  const place = placeOf(event);
  const lines = event.deltaMode === WheelEvent.DOM_DELTA_PIXEL ? event.deltaY / 40 : event.deltaY;
  zoom(1.1 ** Math.min(Math.max(-lines, -5), 5), place.x, place.y);
}, { passive: false });
stage.addEventListener('dblclick', fit);

// ---- saving

// The SVG as the file that penwick writes, byte for byte.
function sourceOf(node) {
  if (node.nodeType === Node.TEXT_NODE) return node.data;
  const escapes = { '&': '&amp;', '<': '&lt;', '>': '&gt;', '"': '&quot;' };
  const attributes = [...node.attributes].filter(({ name }) => name !== 'class')
    .map(({ name, value }) => ` ${name}="${value.replace(/[&<>"]/g, character => escapes[character])}"`).join('');
  const inside = [...node.childNodes].map(sourceOf).join('');
  return `<${node.localName}${attributes}${inside ? `>${inside}</${node.localName}>` : '/>'}`;
}

function save() {
  const source = `<?xml version="1.0" encoding="UTF-8"?>\n${sourceOf(svg)}\n`;
  const link = document.createElement('a');
  link.href = URL.createObjectURL(new Blob([source], { type: 'image/svg+xml' }));
  link.download = `${document.title.replace(/\.(pnx|eli|kvo|inkml)$/i, '')}.svg`;
  link.click();
  setTimeout(() => URL.revokeObjectURL(link.href), 60000);
}

// ---- buttons and keys

function toggleFullScreen() {
  if (document.fullscreenElement) document.exitFullscreen();
  else document.documentElement.requestFullscreen().catch(() => {});
}

const keys = {
  ' ': () => play(!isPlaying),
  ',': () => step(-1),
  '.': () => step(1),
  Home: () => seek(0),
  End: () => seek(drawing.duration),
  '+': () => zoom(1.25),
  '=': () => zoom(1.25),
  '-': () => zoom(0.8),
  0: fit,
  f: toggleFullScreen,
  ArrowLeft: () => pan(40, 0),
  ArrowRight: () => pan(-40, 0),
  ArrowUp: () => pan(0, 40),
  ArrowDown: () => pan(0, -40),
};

document.addEventListener('keydown', event => {
  if (event.key === 'Escape' && byId('layers').open) {
    byId('layers').open = false;
    byId('layers').querySelector('summary').focus();
  }
  if (event.ctrlKey || event.altKey || event.metaKey || byId('keys').open) return;
  const isOnStage = event.target === stage || event.target === document.body;
  if (!isOnStage && !byId('keys-on').checked) return;
  // What has the focus comes first.
  const own = { INPUT: /^(Arrow.*|Home|End| )$/, SELECT: /^.$|^(Arrow.*|Home|End)$/, BUTTON: /^ $/, SUMMARY: /^ $/ };
  const taken = own[event.target.tagName];
  if (taken && taken.test(event.key)) return;
  const action = keys[event.key.length === 1 ? event.key.toLowerCase() : event.key];
  if (!action) return;
  event.preventDefault();
  action();
});

function onClick(id, action) {
  byId(id).addEventListener('click', action);
}

function makeControls() {
  onClick('play', () => play(!isPlaying));
  onClick('in', () => zoom(1.25));
  onClick('out', () => zoom(0.8));
  onClick('fit', fit);
  onClick('full', toggleFullScreen);
  onClick('save', save);
  onClick('help', () => byId('keys').showModal());
  byId('full').hidden = !document.fullscreenEnabled;
  for (const one of speeds) byId('speed').append(new Option(`${one}×`, one, one === speed, one === speed));
  byId('speed').addEventListener('change', event => { speed = Number(event.target.value); });
  bar.max = drawing.duration;
  bar.addEventListener('input', () => seek(Number(bar.value)));
  bar.addEventListener('pointerdown', () => { isHeld = true; });
  for (const name of ['pointerup', 'pointercancel']) addEventListener(name, () => { isHeld = false; });
  stage.tabIndex = 0;
  stage.setAttribute('role', 'application');
  stage.setAttribute('aria-label', 'The drawing: arrow keys move it, plus and minus zoom, space plays');
}

// ---- beginning

function placeInAddress() {
  const found = /^#at=(\d*\.?\d+)$/.exec(location.hash);
  return found ? Number(found[1]) : undefined;
}

function follow() {
  if (placeInAddress() === undefined) return;
  play(false);
  seek(placeInAddress() * drawing.duration);
}

// Shows the whole drawing, and after a moment how it came about, unless something is done before.
function begin() {
  if (placeInAddress() !== undefined) return follow();
  if (matchMedia('(prefers-reduced-motion: reduce)').matches) return;
  const start = setTimeout(() => play(true), 1500);
  for (const name of ['pointerdown', 'keydown', 'wheel', 'hashchange']) {
    addEventListener(name, () => clearTimeout(start), { once: true, capture: true });
  }
}

makeControls();
makeLayerList();
makeMarks();
new ResizeObserver(measure).observe(stage);
measure();
addEventListener('hashchange', follow);
begin();

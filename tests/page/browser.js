// Pages that penwick makes, in a browser of the tests' own.
'use strict';
const { execFileSync } = require('node:child_process');
const fs = require('node:fs');
const os = require('node:os');
const path = require('node:path');
const { pathToFileURL } = require('node:url');
const { after, before } = require('node:test');
const { chromium } = require('playwright-core');

const samples = path.join(__dirname, '..', '..', 'samples');
let browser, folder, contexts;

before(async () => {
  folder = fs.mkdtempSync(path.join(os.tmpdir(), 'penwick page '));
  browser = await chromium.launch({
    executablePath: process.env.CHROMIUM || '/usr/bin/chromium',
    args: ['--no-sandbox', '--force-color-profile=srgb'],
  });
  contexts = [];
});

after(async () => {
  await browser.close();
  fs.rmSync(folder, { recursive: true });
});

// Writes a file into the folder of the tests; gives its path.
function write(name, content) {
  const file = path.join(folder, name);
  fs.writeFileSync(file, content);
  return file;
}

// What `penwick open` makes of a recording, as the path of the file.
function made(recording, ending, ...options) {
  const file = path.join(folder, `${path.basename(recording)}${options.join('')}.${ending}`);
  execFileSync(process.env.PENWICK, ['open', '-q', recording, '-o', file, ...options],
    { env: { ...process.env, HOME: folder, XDG_STATE_HOME: folder } });
  return file;
}

const sample = name => path.join(samples, name);

// A page that notes all that it asks for and complains about.
async function newPage(options) {
  const context = await browser.newContext({ viewport: { width: 1000, height: 800 }, acceptDownloads: true, ...options });
  const page = await context.newPage();
  page.asked = [];
  page.complaints = [];
  page.on('request', request => page.asked.push(request.url()));
  page.on('console', message => page.complaints.push(message.text()));
  page.on('pageerror', error => page.complaints.push(String(error)));
  return page;
}

// Shows a replay page. Its clock stands still; `page.clock.runFor` moves it.
async function shown(file, { hash = '', init, ...options } = {}) {
  const page = await newPage(options);
  if (options.javaScriptEnabled !== false) {
    await page.clock.install({ time: 0 });
    await page.clock.pauseAt(1000);
  }
  if (init) await page.addInitScript(init);
  await page.goto(pathToFileURL(file).href + hash);
  if (options.javaScriptEnabled !== false) await settled(page);
  return page;
}

// Lets the page paint what it has to.
async function settled(page) {
  do {
    await page.clock.runFor(50);
  } while (await page.locator('#stage[aria-busy=true]').count());
}

// Gives the window another size. The page is told of it only with a frame, which may come late on a busy machine.
async function resize(page, width, height) {
  await page.setViewportSize({ width, height });
  while (!await page.evaluate(expected => innerWidth === expected &&
                              size.width === stage.clientWidth && size.height === stage.clientHeight, width));
  await settled(page);
}

// How far the replay is, from 0 to 1.
const place = page => page.evaluate(() => {
  const bar = document.getElementById('bar');
  return Number(bar.value) / Number(bar.max);
});

// What two pictures have in ink, and in how much of it they differ: both in pixels, where half a pixel is one that is
// half as dark.
async function compare(one, other) {
  const page = await (await browser.newContext()).newPage();
  const result = await page.evaluate(async pictures => {
    const pixels = [];
    for (const picture of pictures) {
      const bytes = Uint8Array.from(atob(picture), character => character.charCodeAt(0));
      const bitmap = await createImageBitmap(new Blob([bytes], { type: 'image/png' }));
      const canvas = new OffscreenCanvas(bitmap.width, bitmap.height);
      canvas.getContext('2d').drawImage(bitmap, 0, 0);
      pixels.push(canvas.getContext('2d').getImageData(0, 0, bitmap.width, bitmap.height).data);
    }
    let ink = 0, differing = 0;
    for (let i = 0; i < pixels[0].length; i += 4) {
      ink += (255 - pixels[1][i]) / 255;
      differing += Math.abs(pixels[0][i] - pixels[1][i]) / 255;
    }
    return { ink, differing, size: pixels[0].length / 4, sameSize: pixels[0].length === pixels[1].length };
  }, [one.toString('base64'), other.toString('base64')]);
  await page.context().close();
  return result;
}

// The part of the stage that the paper covers, as the page shows it.
const paperOf = async page => page.screenshot({ clip: await clipOf(page) });

const clipOf = page => page.evaluate(() => {
  const box = document.getElementById('stage').getBoundingClientRect();
  return {
    x: Math.ceil(box.left + view.x), y: Math.ceil(box.top + view.y),
    width: Math.floor(paper.width * view.scale) - 1, height: Math.floor(paper.height * view.scale) - 1,
  };
});

// The same part with the SVG in the place of what the script painted.
async function svgOf(page) {
  const clip = await clipOf(page);
  const before = await page.evaluate(() => {
    document.querySelectorAll('canvas').forEach(canvas => canvas.style.setProperty('visibility', 'hidden'));
    svg.style.cssText = 'display: block; position: absolute; inset: 0; width: 100%; height: 100%; max-height: none';
    const { x, y, scale } = view, { width, height } = size;
    const whole = svg.getAttribute('viewBox');
    svg.setAttribute('viewBox', `${-x / scale} ${-y / scale} ${width / scale} ${height / scale}`);
    return whole;
  });
  const picture = await page.screenshot({ clip });
  await page.evaluate(whole => {
    svg.setAttribute('viewBox', whole);
    svg.style.cssText = '';
    document.querySelectorAll('canvas').forEach(canvas => canvas.style.removeProperty('visibility'));
  }, before);
  return picture;
}

// Calls a function in the page, once everything is painted, with how dark each pixel of the canvases is, 0 to 255 row by
// row, and the width of a row.
async function withPixels(page, look) {
  await settled(page);
  return page.evaluate(words => {
    const [front, growing] = [...document.querySelectorAll('canvas')]
      .map(canvas => {
        const copy = new OffscreenCanvas(canvas.width, canvas.height).getContext('2d', { willReadFrequently: true });
        copy.drawImage(canvas, 0, 0);
        return copy.getImageData(0, 0, canvas.width, canvas.height);
      });
    const dark = new Uint8Array(front.width * front.height);
    for (let i = 0; i < dark.length; ++i) {
      const drawn = front.data[4 * i + 3] ? 255 - front.data[4 * i] : 0;
      dark[i] = Math.max(drawn, growing.data[4 * i + 3]);
    }
    return eval(words)(dark, front.width);
  }, `(${look})`);
}

const inkOf = page => withPixels(page, dark => dark.reduce((sum, value) => sum + value / 255, 0));

// An ink document with layers of the given names. Each has a stroke of a second that goes from left to right, lower from
// layer to layer; a stroke begins three seconds after the last one has ended.
function inkDocument(...names) {
  const escape = text => text.replace(/[&<>"]/g, character => `&#${character.charCodeAt(0)};`);
  const groups = names.map((name, layer) => {
    const points = [0, 1, 2, 3, 4].map(i => `${i * 200 + 100} ${layer * 100 + 100} 0 512 0 0 ${layer * 4000 + i * 250 + 100}`);
    return `<tracegroup id="layer${layer}"><annotation type="name">${escape(name)}</annotation>` +
      `<trace contextRef="#c">${points.join(',')}</trace></tracegroup>`;
  });
  return `<ink>${groups.join('')}</ink>`;
}

module.exports = { compare, inkDocument, inkOf, made, newPage, paperOf, place, resize, sample, settled, shown, svgOf, withPixels, write };

// How fast the page for the browser is, beside the command on the same machine: node browser_speed.js PENWICK PENWICK.html.
// Fails where something is beyond its limit.
'use strict';
const { execFileSync } = require('node:child_process');
const fs = require('node:fs');
const os = require('node:os');
const path = require('node:path');
const { pathToFileURL } = require('node:url');
const { chromium } = require('playwright-core');
const { inkDocument, penRecording } = require('./recordings.js');

const [penwick, pageFile] = process.argv.slice(2).map(file => path.resolve(file));
const samples = path.join(__dirname, '..', 'samples');
const runs = 5;
// The time of the page in that of the command, milliseconds until the picture of a sample, seconds for the largest files.
const limits = { ratio: 2.5, firstPicture: 500, large: 60 };

const medianOf = values => values.slice().sort((a, b) => a - b)[Math.floor(values.length / 2)];
const ms = value => `${Math.round(value)} ms`;
let browser;

function fail(words) {
  console.log(`  beyond the limit: ${words}`);
  process.exitCode = 1;
}

function timeOf(work) {
  const begin = performance.now();
  work();
  return performance.now() - begin;
}

const nativeTimes = (...words) =>
  Array.from({ length: runs }, () => timeOf(() => execFileSync(penwick, words, { stdio: ['ignore', 'ignore', 'inherit'] })));

// The page, which notes when it is given files, when its first picture is there, and what its bars show.
async function opened() {
  const page = await (await browser.newContext()).newPage();
  await page.goto(pathToFileURL(pageFile).href);
  await page.evaluate(() => {
    window.noted = { shares: [] };
    byId('files').addEventListener('change', () => { noted.begin = performance.now(); }, true);
    new MutationObserver(async () => {
      const image = document.querySelector('#cards img');
      const bar = document.querySelector('#cards progress');
      if (bar) noted.shares.push(bar.position);
      if (!image || noted.end) return;
      noted.end = 1;
      await image.decode();
      noted.end = performance.now();
    }).observe(byId('cards'), { childList: true, subtree: true, attributes: true });
  });
  // Nobody drops a file in the first moments, in which the page gets ready.
  await page.evaluate(() => warmingUp);
  return page;
}

async function given(file, timeout = 600000) {
  const page = await opened();
  await page.setInputFiles('#files', file);
  await page.waitForFunction(() => cards.length && !cards[0].isWaiting, null, { timeout });
  return page;
}

// The time from the drop to the picture, painted, of one recording.
async function firstPicture(file) {
  const page = await given(file);
  await page.waitForFunction(() => noted.end > 1);
  const { begin, end } = await page.evaluate(() => noted);
  await page.context().close();
  return end - begin;
}

async function measureSamples() {
  console.log('first picture after the drop:');
  for (const name of fs.readdirSync(samples).filter(one => /\.(pnx|eli|kvo|inkml)$/.test(one))) {
    const time = await firstPicture(path.join(samples, name));
    console.log(`  ${name}: ${ms(time)}`);
    if (time > limits.firstPicture) fail(`${limits.firstPicture} ms`);
  }
}

// An SVG by the page, from the file to its bytes, beside one by the command, from its start to its end.
async function measureSvg(name) {
  const native = nativeTimes('open', '-q', '--force', name, '-o', 'native.svg');
  const page = await given(name);
  const times = await page.evaluate(async count => {
    const all = [];
    for (let i = 0; i < count; ++i) {
      const begin = performance.now();
      const { length } = await visit(cards[0].source, at => at.svg());
      all.push({ time: performance.now() - begin, length });
    }
    return all;
  }, runs);
  await page.context().close();
  const { size } = fs.statSync('native.svg');
  if (times.some(one => one.length !== size)) throw new Error(`the page made another SVG of ${name}`);
  const ratio = medianOf(times.map(one => one.time)) / medianOf(native);
  console.log(`${name}, ${(fs.statSync(name).size / 1e6).toFixed(1)} MB, to SVG: command ${ms(medianOf(native))}, ` +
    `page ${ms(medianOf(times.map(one => one.time)))}, ${ratio.toFixed(2)} times`);
  if (ratio > limits.ratio) fail(`${limits.ratio} times`);
}

// A very large file: what its card says and how long that takes, and whether a bar shows how far it is.
async function measureLarge(name) {
  const native = timeOf(() => execFileSync(penwick, ['open', '-q', '--force', name, '-o', 'native.svg'], { stdio: 'inherit' }));
  const page = await given(name);
  const time = await page.evaluate(() => performance.now() - noted.begin);
  const { shares } = await page.evaluate(() => noted);
  const said = await page.evaluate(() => [...cards[0].lines.children].map(line => line.textContent).join('; '));
  const picture = await page.evaluate(() => cards[0].paper.textContent || 'a picture');
  await page.context().close();
  console.log(`${name}, ${(fs.statSync(name).size / 1e6).toFixed(1)} MB: command ${ms(native)}, page ${ms(time)}: ${picture}; ${said}`);
  console.log(`  the bar showed ${new Set(shares.filter(share => share >= 0)).size} places`);
  if (time > limits.large * 1000) fail(`${limits.large} s`);
  if (!shares.length) fail('no bar');
}

async function main() {
  const folder = fs.mkdtempSync(path.join(os.tmpdir(), 'penwick-browser-'));
  process.chdir(folder);
  browser = await chromium.launch({ executablePath: process.env.CHROMIUM || '/usr/bin/chromium', args: ['--no-sandbox'] });
  await measureSamples();
  fs.writeFileSync('300000-points.kvo', inkDocument(3000, 100));
  await measureSvg('300000-points.kvo');
  fs.writeFileSync('pen.pnx', penRecording(5800, 100));
  await measureSvg('pen.pnx');
  fs.writeFileSync('large.kvo', inkDocument(43000, 100));
  await measureLarge('large.kvo');
  fs.writeFileSync('large.pnx', penRecording(83000, 100));
  await measureLarge('large.pnx');
  await browser.close();
  process.chdir('/');
  fs.rmSync(folder, { recursive: true });
}

main();

// How large the replay page of a large drawing is beside its SVG, how soon it shows, and how smoothly it plays:
// node page_speed.js PENWICK. Fails where one of them is beyond its limit.
'use strict';
const { execFileSync } = require('node:child_process');
const fs = require('node:fs');
const os = require('node:os');
const path = require('node:path');
const { pathToFileURL } = require('node:url');
const { chromium } = require('playwright-core');
const { inkDocument } = require('./recordings.js');

const [penwick] = process.argv.slice(2);
const strokeCount = 3000, pointCount = 100;
const limits = { size: 1.5, show: 2000, frames: 30 };

async function measure(page) {
  await page.goto(`${pathToFileURL('large.html').href}#at=1`);
  await page.waitForSelector('#stage[aria-busy=false]');
  const show = await page.evaluate(() => new Promise(resolve => {
    requestAnimationFrame(() => requestAnimationFrame(() => resolve(performance.now())));
  }));
  await page.selectOption('#speed', '64');
  const frames = await page.evaluate(() => new Promise(resolve => {
    const times = [];
    document.getElementById('play').click();
    requestAnimationFrame(function next(now) {
      times.push(now);
      if (document.getElementById('play').getAttribute('aria-label') === 'Pause') requestAnimationFrame(next);
      else resolve(times.slice(1).map((time, i) => time - times[i]));
    });
  }));
  return { show, frames };
}

async function main() {
  const folder = fs.mkdtempSync(path.join(os.tmpdir(), 'penwick-page-'));
  process.chdir(folder);
  fs.writeFileSync('large.kvo', inkDocument(strokeCount, pointCount));
  for (const name of ['large.svg', 'large.html']) execFileSync(penwick, ['open', '-q', 'large.kvo', '-o', name]);
  const size = fs.statSync('large.html').size / fs.statSync('large.svg').size;
  console.log(`${strokeCount * pointCount} points: page ${fs.statSync('large.html').size} bytes, ${size.toFixed(2)} x the SVG`);
  const browser = await chromium.launch({ executablePath: process.env.CHROMIUM || '/usr/bin/chromium', args: ['--no-sandbox'] });
  const page = await browser.newPage({ viewport: { width: 1280, height: 900 } });
  const { show, frames } = await measure(page);
  await browser.close();
  fs.rmSync(folder, { recursive: true });
  const seconds = frames.reduce((sum, one) => sum + one, 0) / 1000;
  const sorted = frames.slice().sort((a, b) => a - b);
  const at = share => sorted[Math.min(Math.floor(sorted.length * share), sorted.length - 1)].toFixed(1);
  const rate = frames.length / seconds;
  console.log(`shown after ${Math.round(show)} ms`);
  console.log(`replayed in ${seconds.toFixed(1)} s at ${rate.toFixed(1)} frames a second ` +
    `(median ${at(0.5)} ms, 95 % ${at(0.95)} ms, worst ${at(1)} ms)`);
  if (size > limits.size || show > limits.show || rate < limits.frames) process.exitCode = 1;
}

main();

#!/usr/bin/env node
// Makes the picture of the page on the browser: browser.js PENWICK.html. Needs what tests/page/install installs, in NODE_PATH.
'use strict';
const path = require('node:path');
const { pathToFileURL } = require('node:url');
const { chromium } = require('playwright-core');

const samples = ['lighthouse.pnx', 'harbour.kvo', 'hatching.pnx', 'tilted-sketch.pnx', 'teapot.inkml', 'signature.pnx',
  'handwriting.pnx', 'spiral.pnx'].map(name => path.join(__dirname, '../../samples', name));

async function main() {
  const browser = await chromium.launch({ executablePath: process.env.CHROMIUM || '/usr/bin/chromium', args: ['--no-sandbox'] });
  const page = await browser.newPage({ viewport: { width: 1100, height: 800 } });
  await page.goto(pathToFileURL(path.resolve(process.argv[2])).href);
  await page.setInputFiles('#files', samples);
  await page.waitForFunction(() => document.querySelectorAll('#cards img').length === 8);
  await page.waitForFunction(() => !document.getElementById('count').textContent.includes('not yet'));
  await page.screenshot({ path: path.join(__dirname, 'browser.png') });
  await browser.close();
}

main();

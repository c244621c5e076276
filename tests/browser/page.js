// The page penwick.html in a browser, and the native command beside it.
'use strict';
const assert = require('node:assert/strict');
const { spawnSync } = require('node:child_process');
const fs = require('node:fs');
const path = require('node:path');
const { pathToFileURL } = require('node:url');
const { newPage, sample, write } = require('../page/browser.js');

const pageFile = process.env.PENWICK_PAGE;

// What the worker does with files of these names, instead of what the program does.
const kTroubles = `
{
  const answer = self.onmessage;
  self.onmessage = event => {
    const names = (event.data.files || []).map(file => file.name).join();
    if (/hang/.test(names)) for (;;);
    if (/throw/.test(names)) setTimeout(() => { throw new Error('on purpose'); });
    else if (/crash/.test(names)) self.postMessage({ id: event.data.id, crashed: 'the program crashed on purpose' });
    else answer(event);
  };
}
`;

// The page with other words in the place of some; each of them must be there once.
function changedPage(...changes) {
  let text = fs.readFileSync(pageFile, 'utf8');
  for (const [before, after] of changes) {
    const pieces = text.split(before);
    assert.equal(pieces.length, 2, before);
    text = pieces.join(after);
  }
  return write('changed.html', text);
}

// The page with a worker that has troubles, and so many seconds for a file.
function troubledPage(seconds) {
  const mark = '</script>\n<script type="text/js-worker" id="painter">';
  return changedPage([mark, kTroubles + mark], ['data-seconds-for-a-file="60"', `data-seconds-for-a-file="${seconds}"`]);
}

async function opened({ file = pageFile, url = pathToFileURL(file).href, ...options } = {}) {
  const page = await newPage(options);
  await page.goto(url);
  return page;
}

async function add(page, ...files) {
  await page.setInputFiles('#files', files);
  await drawn(page);
}

// Drops files and folders onto a place of the page.
async function drop(page, { x, y }, ...files) {
  const session = await page.context().newCDPSession(page);
  const data = { items: [], files, dragOperationsMask: 1 };
  for (const type of ['dragEnter', 'dragOver', 'drop']) await session.send('Input.dispatchDragEvent', { type, x, y, data });
}

// Every card has its picture or its sentence.
const drawn = page => page.waitForFunction(() => cards.length && cards.every(card => !card.isWaiting), null, { timeout: 300000 });

const cardOf = (page, name) => page.locator('#cards li').filter({ has: page.getByRole('button', { name, exact: true }) });

async function open(page, name) {
  await page.getByRole('button', { name, exact: true }).click();
  await page.waitForSelector('#facts tr');
}

// Clicks, and gives what is downloaded then: its name and its bytes.
async function saved(page, selector) {
  const [download] = await Promise.all([page.waitForEvent('download'), page.click(selector)]);
  await page.waitForFunction(() => !document.querySelector('aside button:disabled'));
  return { name: download.suggestedFilename(), file: await download.path(), bytes: fs.readFileSync(await download.path()) };
}

// What the native command makes of a recording.
function native(words, file, ending) {
  const made = write(`native.${ending}`, '');
  const home = path.dirname(made);
  const { status, stdout, stderr } = spawnSync(process.env.PENWICK, [...words, '--force', '-o', made, '--', file],
    { encoding: 'utf8', env: { ...process.env, HOME: home, XDG_STATE_HOME: home } });
  return { status, stdout, stderr, bytes: fs.readFileSync(made) };
}

// Nothing was asked for but the page and its own workers, and nothing was complained about.
function quietSoFar(page) {
  const foreign = page.asked.slice(1).filter(url => !/^(blob:|data:|about:)/.test(url));
  return [...foreign, ...page.complaints];
}

// A recording with its end cut off.
const cutRecording = name => write(name, fs.readFileSync(sample('lighthouse.pnx')).subarray(0, 200000));

module.exports = { add, cardOf, changedPage, cutRecording, drawn, drop, native, open, opened, quietSoFar, saved, troubledPage };

// Everything chosen as one ZIP.
'use strict';
const assert = require('node:assert/strict');
const { execFileSync } = require('node:child_process');
const { createHash } = require('node:crypto');
const fs = require('node:fs');
const { test } = require('node:test');
const { sample } = require('../page/browser.js');
const { add, drawn, drop, native, opened, saved, troubledPage } = require('./page.js');

const digestOf = bytes => createHash('sha256').update(bytes).digest('hex');

// The names in a ZIP, each with the digest of what is in it.
function listed(file) {
  const script = `import hashlib, json, sys, zipfile
with zipfile.ZipFile(sys.argv[1]) as zip:
    assert zip.testzip() is None
    print(json.dumps([[name, hashlib.sha256(zip.read(name)).hexdigest()] for name in zip.namelist()]))`;
  return JSON.parse(execFileSync('python3', ['-c', script, file], { encoding: 'utf8' }));
}

// Gives the page recordings of these paths, as from a folder; those that are called "bad" are none.
async function takePaths(page, ...paths) {
  const data = fs.readFileSync(sample('signature.pnx')).toString('base64');
  // Halves of characters get into the page in JSON of ASCII alone.
  await page.evaluate(([wanted, text]) => {
    const bytes = Uint8Array.from(atob(text), character => character.charCodeAt(0));
    take(JSON.parse(wanted).map(path => ({ path, open: () => new File([path.includes('bad') ? 'no' : bytes], nameOf(path)) })));
  }, [JSON.stringify(paths), data]);
  await drawn(page);
}

async function openZip(page) {
  await page.check('#choose-all');
  await page.click('#save-chosen');
}

test('a ZIP keeps folders, names no two files alike, and says what is missing', async () => {
  const page = await opened();
  await takePaths(page, 'one/a.pnx', 'one/A.PNX', 'two/a.pnx', 'two/a.pnx', '../up.pnx', 'nul.pnx', 'bad.pnx');
  await openZip(page);
  await page.check('#zip [name=recording]');
  const files = listed((await saved(page, '#zip-save')).file);
  const entries = files.map(([name]) => name).sort();
  assert.equal(new Set(entries.map(name => name.toLowerCase())).size, entries.length);
  assert.equal(entries.length, 12, `${entries.join()} ${await page.locator('#zip').textContent()}`);
  assert.equal(entries.filter(name => name.startsWith('two/a.pnx')).length, 4, entries.join());
  assert.ok(entries.includes('_nul.svg') && entries.includes('__/up.svg'), entries.join());
  const svg = digestOf(native(['open'], sample('signature.pnx'), 'svg').bytes);
  const recording = digestOf(fs.readFileSync(sample('signature.pnx')));
  assert.deepEqual([...new Set(files.filter(([name]) => name.endsWith('.svg')).map(([, sum]) => sum))], [svg]);
  assert.deepEqual([...new Set(files.filter(([name]) => !name.endsWith('.svg')).map(([, sum]) => sum))], [recording]);
  assert.match(await page.locator('#zip ul').textContent(), /bad\.pnx: svg: /);
  await page.context().close();
});

test('names in a ZIP hold nothing that could make them pass for others, and no halves of characters', async () => {
  const page = await opened();
  await takePaths(page, 'in\u202e/a\u202egnp.pnx', 'b\u2028\x7f\x9b.pnx', 'c\ud800.pnx', 'c\udfff.pnx', 'd\u200d\u{1f58a}.pnx');
  await openZip(page);
  const names = listed((await saved(page, '#zip-save')).file).map(([name]) => name).sort();
  assert.deepEqual(names, ['b___.svg', 'c\ufffd.pnx-2.svg', 'c\ufffd.pnx.svg', 'd\u200d\u{1f58a}.svg', 'in_/a_gnp.svg'].sort());
  await page.context().close();
});

test('a ZIP that is cancelled is not saved, and another one can be', async () => {
  const page = await opened({ file: troubledPage(600) });
  let downloads = 0;
  page.on('download', () => ++downloads);
  await add(page, sample('signature.pnx'));
  await page.setInputFiles('#files', { name: 'hang.pnx', mimeType: '', buffer: fs.readFileSync(sample('signature.pnx')) });
  await page.click('#stop');
  await drawn(page);
  await openZip(page);
  for (const cancel of [() => page.click('#zip-close'), () => page.keyboard.press('Escape')]) {
    await page.click('#zip-save');
    await page.waitForFunction(() => byId('zip-close').textContent === 'Cancel' && zipSaid.textContent === '1 of 2');
    await cancel();
    await page.waitForFunction(() => byId('zip-close').textContent === 'Close');
    assert.equal(await page.locator('#zip p[role=status]').first().textContent(), 'Cancelled: nothing was saved.');
    assert.ok(await page.locator('#zip').isVisible());
  }
  await page.click('#zip-close');
  await page.uncheck('input[aria-label="Choose hang.pnx"]');
  await page.click('#save-chosen');
  assert.equal(await page.locator('#zip p[role=status]').first().textContent(), '');
  assert.deepEqual(listed((await saved(page, '#zip-save')).file).map(([name]) => name), ['signature.svg']);
  assert.equal(downloads, 1);
  await page.context().close();
});

test('what is dropped while a ZIP is asked for is taken, and is not in it', async () => {
  const page = await opened();
  await add(page, sample('signature.pnx'));
  await openZip(page);
  const news = page.locator('#zip-added');
  await drop(page, { x: 500, y: 400 }, sample('README.md'));
  await page.waitForFunction(() => byId('zip-added').textContent);
  assert.equal(await news.textContent(), 'There was no recording in it.');
  await drop(page, { x: 500, y: 400 }, sample('hatching.pnx'));
  await page.waitForFunction(() => cards.length === 2);
  assert.equal(await news.textContent(), 'Added to the page, but not to this ZIP: 1 recording');
  // Beside the window.
  await drop(page, { x: 10, y: 10 }, sample('teapot.inkml'), sample('harbour.kvo'));
  await page.waitForFunction(() => cards.length === 4);
  assert.equal(await news.textContent(), 'Added to the page, but not to this ZIP: 2 recordings');
  assert.ok(await page.locator('#zip').isVisible());
  assert.deepEqual(listed((await saved(page, '#zip-save')).file).map(([name]) => name), ['signature.svg']);
  await drawn(page);
  await page.click('#zip-close');
  assert.equal(await page.locator('#cards img').count(), 4);
  assert.equal(await page.locator('#save-chosen').textContent(), 'Save 1 as ZIP…');
  await page.context().close();
});

// What goes wrong in the page, and what is too large for it, costs nothing else.
'use strict';
const assert = require('node:assert/strict');
const fs = require('node:fs');
const { pathToFileURL } = require('node:url');
const { test } = require('node:test');
const { inkDocument, newPage, sample, write } = require('../page/browser.js');
const { add, cardOf, changedPage, drawn, open, opened, saved, troubledPage } = require('./page.js');

test('a file that crashes, throws or hangs costs itself alone', async () => {
  const page = await opened({ file: troubledPage(60) });
  const buffer = fs.readFileSync(sample('signature.pnx'));
  const files = ['crash', 'throw', 'hang', 'good', 'better'].map(name => ({ name: `${name}.pnx`, mimeType: '', buffer }));
  await page.setInputFiles('#files', files);
  await drawn(page);
  assert.match(await cardOf(page, 'crash.pnx').textContent(), /the program crashed on purpose$/);
  assert.match(await cardOf(page, 'throw.pnx').textContent(), /the program stopped unexpectedly at this file$/);
  assert.match(await cardOf(page, 'hang.pnx').textContent(), /it took more than 60 seconds and was given up$/);
  for (const name of ['good.pnx', 'better.pnx']) assert.match(await cardOf(page, name).textContent(), /12 strokes.*sound$/);
  await page.getByRole('button', { name: 'Try crash.pnx again' }).click();
  await drawn(page);
  assert.match(await cardOf(page, 'crash.pnx').textContent(), /crashed on purpose$/);
  await page.context().close();
});

test('a large file has a bar, and can be cancelled', async () => {
  const page = await opened({ file: troubledPage(600) });
  await page.setInputFiles('#files', write('hang.pnx', Buffer.alloc(6 * 2 ** 20)));
  await page.waitForSelector('#cards progress');
  await page.getByRole('button', { name: 'Cancel hang.pnx' }).click();
  await drawn(page);
  assert.match(await cardOf(page, 'hang.pnx').textContent(), /cancelled$/);
  await add(page, sample('signature.pnx'));
  assert.match(await cardOf(page, 'signature.pnx').textContent(), /sound$/);
  await page.context().close();
});

test('what is not yet drawn can be stopped, and drawn later', async () => {
  const page = await opened({ file: troubledPage(600) });
  const buffer = fs.readFileSync(sample('signature.pnx'));
  // As many as there are workers at most hang, so that the others wait.
  const files = [1, 2, 3, 4].map(i => `hang${i}`).concat([5, 6, 7, 8].map(i => `good${i}`)).map(name => ({ name: `${name}.pnx`, mimeType: '', buffer }));
  await page.setInputFiles('#files', files);
  await page.waitForFunction(() => byId('count').textContent === '8 recordings, 8 not yet drawn');
  assert.equal(await page.locator('#stop').textContent(), 'Stop');
  await page.click('#stop');
  await drawn(page);
  assert.equal(await page.locator('#count').textContent(), '8 recordings');
  assert.equal(await page.locator('#said').textContent(), '8 recordings, none with a problem, 8 cancelled');
  assert.equal(await page.locator('#cards .facts p').filter({ hasText: /^cancelled$/ }).count(), 8);
  assert.equal(await page.locator('#cards .bad').count(), 0);
  assert.equal(await page.locator('#stop').textContent(), 'Draw the cancelled 8');
  await add(page, sample('teapot.inkml'));
  assert.match(await cardOf(page, 'teapot.inkml').textContent(), /sound$/);
  await page.evaluate(() => { for (const { source } of cards) source.path = source.path.replace('hang', 'now good'); });
  await page.click('#stop');
  await drawn(page);
  await page.waitForFunction(() => byId('stop').hidden);
  assert.equal(await page.locator('#cards img').count(), 9);
  assert.equal(await page.locator('#said').textContent(), '9 recordings, none with a problem');
  assert.equal(await page.evaluate(() => document.activeElement.id), 'count');
  await page.context().close();
});

test('one recording that was cancelled can be drawn after all, by its own button', async () => {
  const page = await opened({ file: troubledPage(600) });
  await page.setInputFiles('#files', { name: 'hang.pnx', mimeType: '', buffer: fs.readFileSync(sample('signature.pnx')) });
  await page.click('#stop');
  await drawn(page);
  assert.equal(await page.locator('#stop').textContent(), 'Draw the cancelled one');
  await page.evaluate(() => { cards[0].source.path = 'now good.pnx'; });
  await page.getByRole('button', { name: 'Try hang.pnx again' }).click();
  await drawn(page);
  assert.match(await page.locator('#cards li').textContent(), /12 strokes.*sound$/);
  await page.waitForFunction(() => byId('stop').hidden);
  await page.context().close();
});

test('a worker ends with a large file, so that its memory is given back, and not with small ones', async () => {
  const page = await opened();
  await page.evaluate(() => warmingUp);
  await add(page, sample('signature.pnx'));
  const url = await page.evaluate(() => programs.url);
  const workers = () => page.workers().filter(worker => worker.url() === url);
  const before = workers();
  assert.equal(before.length, 1);
  await page.evaluate(() => {
    const end = Worker.prototype.terminate;
    globalThis.ended = [];
    Worker.prototype.terminate = function () {
      ended.push(this);
      end.call(this);
    };
    globalThis.first = programs.idle[0].worker;
  });
  await add(page, sample('teapot.inkml'));
  assert.deepEqual(workers(), before);
  assert.equal(await page.evaluate(() => ended.length), 0);
  const closed = new Promise(resolve => before[0].once('close', resolve));
  await add(page, write('large.kvo', inkDocument('one', 'two') + ' '.repeat(21 * 2 ** 20)));
  assert.ok(await page.evaluate(() => ended.length === 1 && ended[0] === first));
  await closed;
  assert.match(await cardOf(page, 'large.kvo').textContent(), /2 layers, 2 strokes.*sound$/);
  await add(page, sample('hatching.pnx'));
  assert.match(await cardOf(page, 'hatching.pnx').textContent(), /sound$/);
  assert.ok(!workers().includes(before[0]));
  await page.context().close();
});

test('a very large drawing is shown only where that is asked for', async () => {
  const page = await opened({ file: changedPage(['const kLargePage = 48 * 2 ** 20', 'const kLargePage = 2 ** 19']) });
  const show = page.getByRole('button', { name: 'Show it all the same' });
  await add(page, sample('lighthouse.pnx'), sample('signature.pnx'));
  await open(page, 'lighthouse.pnx');
  assert.equal(await page.locator('#wait p').textContent(), 'This drawing is very large, 1 MB: showing it may take a minute.');
  assert.ok(await show.isVisible());
  assert.equal(await page.locator('iframe').count(), 0);
  // Another drawing has nothing to do with that.
  await page.click('#back');
  await open(page, 'signature.pnx');
  assert.equal(await show.count(), 0);
  assert.equal(await page.locator('iframe').count(), 1);
  await page.click('#back');
  await open(page, 'lighthouse.pnx');
  await show.click();
  await page.frames()[1].waitForFunction(() => Number(byId('bar').value) > 0);
  assert.equal(await show.count(), 0);
  assert.ok(await page.locator('#wait').isHidden());
  await page.context().close();
});

test('a browser that is too old is told so', async () => {
  const lacks = [
    () => { WebAssembly.validate = () => false; },
    () => { delete globalThis.WebAssembly; },
    () => { delete globalThis.OffscreenCanvas; },
  ];
  const unreadable = changedPage(['class Zip {', 'class Zip { new words;;']);
  for (const [file, lack] of [...lacks.map(one => [process.env.PENWICK_PAGE, one]), [unreadable, () => {}]]) {
    const page = await newPage();
    await page.addInitScript(lack);
    await page.goto(pathToFileURL(file).href);
    assert.match(await page.locator('#too-old').textContent(), /^This browser is too old for this page\. Chrome or Edge \d+/);
    assert.ok(await page.locator('#too-old').isVisible(), String(lack));
    assert.ok(await page.locator('#sheet').isHidden(), String(lack));
    assert.equal(page.workers().length, 0);
    await page.context().close();
  }
});

test('a PNG that is too large is refused with a sentence, and a smaller one is saved', async () => {
  const page = await opened();
  await add(page, sample('lighthouse.pnx'));
  await open(page, 'lighthouse.pnx');
  await page.fill('#png-width', '16384');
  await page.click('#save-png');
  // It is 199 × 265 mm.
  await page.waitForFunction(() => /^a picture of 16384 × 21\d{3} pixels is too large; 16384 is the most on either side$/.test(byId('saved').textContent));
  await page.fill('#png-width', '16385');
  await page.click('#save-png');
  assert.ok(await page.evaluate(() => byId('png-width').matches(':invalid') && document.activeElement === byId('png-width')));
  await page.fill('#png-width', '300');
  assert.equal((await saved(page, '#save-png')).bytes.readUInt32BE(16), 300);
  await page.context().close();
});

test('a picture that the browser leaves empty for its size is not saved', async () => {
  const empty = 'OffscreenCanvasRenderingContext2D.prototype.fillRect = () => {};\n';
  const page = await opened({ file: changedPage(["'use strict';\n// Paints an SVG", `${empty}// Paints an SVG`]) });
  await add(page, sample('lighthouse.pnx'));
  await open(page, 'lighthouse.pnx');
  await page.fill('#png-width', '2500');
  await page.click('#save-png');
  await page.waitForFunction(() => byId('saved').textContent === 'this browser cannot paint a picture of this size');
  await page.context().close();
});

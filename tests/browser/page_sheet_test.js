// The sheet of the page: what is dropped and chosen, found and sorted.
'use strict';
const assert = require('node:assert/strict');
const fs = require('node:fs');
const http = require('node:http');
const path = require('node:path');
const { test } = require('node:test');
const { inkDocument, sample, write } = require('../page/browser.js');
const { add, cardOf, cutRecording, drawn, drop, opened, quietSoFar, saved } = require('./page.js');

const axe = fs.readFileSync(require.resolve('axe-core/axe.min.js'), 'utf8');

async function assertAccessible(page, state) {
  await page.evaluate(axe);
  const { violations } = await page.evaluate(() => axe.run({ iframes: false }));
  assert.deepEqual(violations.map(({ id, nodes }) => [id, nodes.map(node => node.html)]), [], state);
}

const names = page => page.locator('#cards li:not([hidden]) .title').allTextContents();

test('recordings become cards with a picture and the facts that their makers wrote down', async () => {
  const page = await opened();
  await add(page, sample('lighthouse.pnx'), sample('teapot.inkml'), sample('other-program.inkml'), sample('README.md'));
  // Layers and strokes are those of samples/README.md.
  assert.match(await cardOf(page, 'lighthouse.pnx').textContent(), /7 layers, 870 strokes.*sound$/);
  assert.match(await cardOf(page, 'teapot.inkml').textContent(), /4 layers, 125 strokes.*sound$/);
  assert.match(await cardOf(page, 'other-program.inkml').textContent(), /80 × 150 mm, 1 layer/);
  assert.equal(await page.locator('#cards img').count(), 3);
  for (const image of await page.locator('#cards img').all()) {
    assert.ok(await image.evaluate(async one => { await one.decode(); return Math.max(one.naturalWidth, one.naturalHeight); }) === 420);
  }
  assert.equal(await page.locator('#others summary').textContent(), '1 file is not a recording');
  assert.equal(await page.locator('#others li').textContent(), 'README.md');
  assert.equal(await page.locator('#said').textContent(), '3 recordings, none with a problem');
  assert.deepEqual(quietSoFar(page), []);
  await page.context().close();
});

test('cards are found and sorted', async () => {
  const page = await opened();
  await add(page, sample('signature.pnx'), sample('hatching.pnx'), sample('harbour.kvo'), cutRecording('zebra.pnx'));
  await page.selectOption('#order', 'name');
  assert.deepEqual(await names(page), ['harbour.kvo', 'hatching.pnx', 'signature.pnx', 'zebra.pnx']);
  await page.selectOption('#order', 'strokes');
  assert.deepEqual(await names(page), ['hatching.pnx', 'harbour.kvo', 'zebra.pnx', 'signature.pnx']);
  await page.selectOption('#order', 'problems');
  assert.equal((await names(page))[0], 'zebra.pnx');
  await page.fill('#search', 'SOUND nature');
  assert.deepEqual(await names(page), ['signature.pnx']);
  assert.equal(await page.locator('#count').textContent(), '1 of 4 recordings');
  await page.context().close();
});

test('files and folders are dropped, from disk and from a server', async () => {
  const page = await opened();
  const folder = path.dirname(write('x', ''));
  fs.mkdirSync(path.join(folder, 'drawer', 'deep'), { recursive: true });
  fs.copyFileSync(sample('signature.pnx'), path.join(folder, 'drawer', 'deep', 'SIGNED.PNX'));
  fs.copyFileSync(sample('signature.pnx'), path.join(folder, 'drawer', '._a.pnx'));
  const server = http.createServer((request, response) => {
    response.setHeader('Content-Type', 'text/html');
    response.end(fs.readFileSync(process.env.PENWICK_PAGE));
  });
  await new Promise(resolve => server.listen(0, resolve));
  const served = await opened({ url: `http://localhost:${server.address().port}/` });
  for (const one of [page, served]) {
    await drop(one, { x: 300, y: 300 }, sample('teapot.inkml'), path.join(folder, 'drawer'));
    await drawn(one);
    await one.waitForFunction(() => cards.length === 2 || byId('note').textContent);
    assert.deepEqual(await one.locator('.message:visible').allTextContents(), []);
    await drawn(one);
    assert.deepEqual(await names(one), ['teapot.inkml', 'drawer/deep/SIGNED.PNX']);
    assert.equal(await one.locator('#cards img').count(), 2);
    assert.deepEqual(await one.locator('#others li').allTextContents(), ['drawer/._a.pnx']);
    assert.deepEqual(quietSoFar(one), []);
    await one.context().close();
  }
  server.close();
});

test('a hostile name is shown as text and can be saved', async () => {
  for (const name of ['<img src=x onerror=alert(1)>.pnx', '-o.pnx', 'result.pnx', 'a"b\'c&amp;.pnx', '\u202egnp.pnx', '$(x) `y`.pnx']) {
    const page = await opened();
    await page.setInputFiles('#files', { name, mimeType: '', buffer: fs.readFileSync(sample('signature.pnx')) });
    await drawn(page);
    assert.match(await page.locator('#cards li').textContent(), /12 strokes.*sound$/, name);
    // A blank is in the place of what would turn the direction of the text, as in the replay.
    const harmless = name.replace('\u202e', ' ');
    assert.equal(await page.locator('#cards .title').textContent(), harmless);
    await page.click('#cards .title');
    await page.waitForSelector('#facts tr');
    assert.equal(await page.locator('#name').textContent(), harmless);
    assert.ok(await page.frameLocator('iframe').getByText(harmless.trim()).first().isVisible(), name);
    assert.deepEqual(quietSoFar(page), [], name);
    await page.context().close();
  }
});

// All texts and attributes of the page that hold one of the characters, but for scripts and the replay.
const partsWith = (page, characters) => page.evaluate(wanted => {
  const found = [];
  const nodes = document.createTreeWalker(document, NodeFilter.SHOW_ELEMENT | NodeFilter.SHOW_TEXT);
  while (nodes.nextNode()) {
    const node = nodes.currentNode;
    if (node.nodeType === Node.ELEMENT_NODE) {
      for (const { name, value } of node.attributes) if (name !== 'srcdoc') found.push(value);
    } else if (!node.parentElement.closest('script, style')) {
      found.push(node.data);
    }
  }
  return found.filter(text => [...wanted].some(character => text.includes(character)));
}, characters);

test('a folder with nothing in it is not passed over in silence', async () => {
  const page = await opened();
  const folder = path.join(path.dirname(write('x', '')), 'empty');
  fs.mkdirSync(folder);
  await drop(page, { x: 300, y: 300 }, folder);
  await page.waitForFunction(() => byId('note').textContent === 'There is no file in it.');
  assert.ok(await page.locator('#note').isVisible());
  await add(page, sample('signature.pnx'));
  assert.ok(await page.locator('#note').isHidden());
  await page.context().close();
});

test('what could make a name pass for another one is not shown and not written', async () => {
  const harmful = String.fromCodePoint(0x7f, 0x9b, 0x61c, 0x200e, 0x200f, 0x2028, 0x2029, 0x202a, 0x202e, 0x2066, 0x2069, 0xfeff);
  const controls = '\x01\x1b\x1f\n';
  const near = String.fromCodePoint(0xa0, 0x61b, 0x61d, 0x200d, 0x2010, 0x2027, 0x202f, 0x2065, 0x206a, 0xfefe, 0x1f58a);
  const blanks = count => ' '.repeat(count);
  const name = `a${harmful}${controls}b${near}`, shown = `a${blanks(harmful.length + controls.length)}b${near}`;
  const page = await opened();
  const layers = Buffer.from(inkDocument(`c${harmful}d${near}`));
  const files = [[`${name}.kvo`, layers], [`${name}.pnx`, 'hello'], [`${name}.txt`, 'hello']]
    .map(([own, content]) => ({ name: own, mimeType: '', buffer: Buffer.from(content) }));
  await page.setInputFiles('#files', files);
  await drawn(page);
  assert.deepEqual(await names(page), [`${shown}.kvo`, `${shown}.pnx`]);
  assert.equal(await page.locator('#others li').textContent(), `${shown}.txt`);
  const unclean = async () => partsWith(page, harmful + controls.replace('\n', ''));
  assert.deepEqual(await unclean(), []);
  await page.locator('#cards .title').nth(1).click();
  await page.waitForSelector('#wait .bad');
  assert.equal(await page.locator('#wait p').textContent(), 'this is a text file, not a recording');
  await page.click('#back');
  await page.locator('#cards .title').first().click();
  await page.waitForSelector('#facts tr');
  assert.ok((await page.locator('#facts th').allTextContents()).includes(`c${blanks(harmful.length)}d${near}`));
  assert.deepEqual(await unclean(), []);
  assert.ok(!(await page.title()).includes('\u202e'));
  await page.context().close();
});

test('what is saved is named without what could make a name pass for another one', async () => {
  const page = await opened();
  await page.setInputFiles('#files', { name: 'x\u202e\x9by.pnx', mimeType: '', buffer: fs.readFileSync(sample('signature.pnx')) });
  await drawn(page);
  await page.click('#cards .title');
  await page.waitForSelector('#facts tr');
  assert.equal((await saved(page, '#save-svg')).name, 'x__y.svg');
  assert.equal(await page.locator('#saved').textContent(), 'Saved as x__y.svg');
  await page.context().close();
});

test('the sheet, a drawing and the dialog can be used by everybody, in light and dark, narrow and wide', async () => {
  for (const colorScheme of ['light', 'dark']) {
    for (const width of [320, 1600]) {
      const page = await opened({ colorScheme, viewport: { width, height: 800 } });
      const state = `${colorScheme}, ${width} pixels`;
      const isWide = () => page.evaluate(() => document.documentElement.scrollWidth > innerWidth);
      await assertAccessible(page, `${state}, at the beginning`);
      await add(page, sample('signature.pnx'), cutRecording('cut.pnx'), sample('README.md'));
      await assertAccessible(page, `${state}, sheet`);
      assert.equal(await isWide(), false, state);
      await page.check('#choose-all');
      await page.click('#save-chosen');
      await assertAccessible(page, `${state}, dialog`);
      await page.keyboard.press('Escape');
      await page.click('text=cut.pnx');
      await page.waitForSelector('#facts tr');
      await assertAccessible(page, `${state}, drawing`);
      assert.equal(await isWide(), false, state);
      await page.context().close();
    }
  }
});

test('the keyboard alone gets to a drawing and back, and the focus is kept', async () => {
  const page = await opened();
  const focused = () => page.evaluate(() => document.activeElement.textContent);
  for (let i = 0; i < 3; ++i) await page.keyboard.press('Tab');
  assert.equal(await focused(), 'Try a sample');
  await page.keyboard.press('Enter');
  await drawn(page);
  await page.waitForSelector('#cards img');
  for (let i = 0; i < 2; ++i) await page.keyboard.press('Tab');
  assert.equal(await focused(), 'lighthouse.pnx');
  await page.keyboard.press('Enter');
  await page.waitForSelector('#facts tr');
  assert.equal(await focused(), 'lighthouse.pnx');
  await page.keyboard.press('Escape');
  await page.waitForSelector('#sheet:not([hidden])');
  assert.equal(await focused(), 'lighthouse.pnx');
  assert.ok(await page.evaluate(() => document.activeElement.matches('#cards .title')));
  await page.context().close();
});

test('five hundred recordings become pictures, not live drawings', async () => {
  const page = await opened();
  const folder = path.join(path.dirname(write('x', '')), 'many');
  fs.mkdirSync(folder);
  for (let i = 0; i < 500; ++i) fs.copyFileSync(sample('signature.pnx'), path.join(folder, `${i}.pnx`));
  await page.setInputFiles('#folder', folder);
  await drawn(page);
  assert.equal(await page.locator('#cards img').count(), 500);
  assert.equal(await page.locator('#cards svg').count(), 0);
  assert.equal(await page.locator('#count').textContent(), '500 recordings');
  assert.deepEqual(await names(page), Array.from({ length: 500 }, (_, i) => `many/${i}.pnx`));
  await page.context().close();
});

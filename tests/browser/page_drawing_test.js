// A drawing on the page: its replay, the rescue, and everything that is saved.
'use strict';
const assert = require('node:assert/strict');
const fs = require('node:fs');
const { test } = require('node:test');
const { compare, sample, write } = require('../page/browser.js');
const { add, cardOf, cutRecording, drawn, native, open, opened, quietSoFar, saved } = require('./page.js');

test('the replay of the desktop plays in the page', async () => {
  const page = await opened();
  await add(page, sample('signature.pnx'));
  await open(page, 'signature.pnx');
  const frame = page.frames()[1];
  await frame.waitForFunction(() => byId('play').getAttribute('aria-label') === 'Pause' && Number(byId('bar').value) > 0);
  assert.equal(await frame.evaluate(() => document.title), 'signature.pnx');
  assert.match(await page.locator('#facts').textContent(), /Strokes12/);
  const [download] = await Promise.all([page.waitForEvent('download'), frame.click('#save')]);
  assert.deepEqual(fs.readFileSync(await download.path()), native(['open'], sample('signature.pnx'), 'svg').bytes);
  await page.goBack();
  assert.equal(await page.locator('iframe').count(), 0);
  assert.ok(await page.locator('#cards').isVisible());
  assert.deepEqual(quietSoFar(page), []);
  await page.context().close();
});

test('recordings that are dropped on a replay are taken', async () => {
  const page = await opened();
  await add(page, sample('signature.pnx'));
  await open(page, 'signature.pnx');
  await page.frames()[1].waitForSelector('#play');
  const session = await page.context().newCDPSession(page);
  const event = { x: 300, y: 400, data: { items: [], files: [sample('teapot.inkml')], dragOperationsMask: 1 } };
  const send = type => session.send('Input.dispatchDragEvent', { type, ...event });
  await page.evaluate(() => addEventListener('dragover', () => { globalThis.isOverPage = true; }));
  // A hand that drags is never quite still, and a browser says anew that something enters when what is below it has
  // become another frame.
  do {
    await send('dragEnter');
    await send('dragOver');
  } while (!await page.evaluate(() => globalThis.isOverPage));
  await send('drop');
  await page.waitForFunction(() => cards.length === 2);
  await drawn(page);
  assert.ok(await page.locator('#cards').isVisible());
  assert.match(await cardOf(page, 'teapot.inkml').textContent(), /sound$/);
  await page.context().close();
});

test('SVG and InkML are saved byte for byte as by the command', async () => {
  const page = await opened();
  for (const name of ['lighthouse.pnx', 'harbour.kvo', 'other-program.inkml']) {
    await add(page, sample(name));
    await open(page, name);
    const svg = await saved(page, '#save-svg');
    assert.equal(svg.name, name.replace(/\.\w+$/, '.svg'));
    assert.ok(svg.bytes.equals(native(['open'], sample(name), 'svg').bytes), name);
    assert.ok((await saved(page, '#save-inkml')).bytes.equals(native(['convert'], sample(name), 'inkml').bytes), name);
    await page.click('#back');
  }
  await page.context().close();
});

test('a PNG has the width that was asked for and shows what the SVG shows', async () => {
  const page = await opened({ viewport: { width: 900, height: 1200 } });
  await add(page, sample('lighthouse.pnx'));
  await open(page, 'lighthouse.pnx');
  await page.fill('#png-width', '600');
  const { bytes } = await saved(page, '#save-png');
  const [width, height] = [bytes.readUInt32BE(16), bytes.readUInt32BE(20)];
  assert.equal(width, 600);
  // The browser's own picture of the same SVG, in the same scale.
  const svg = native(['open'], sample('lighthouse.pnx'), 'svg').bytes.toString().replace(/^<\?xml.*\n/, '');
  const style = '<meta charset="utf-8"><style>body { margin: 0 } svg { display: block; width: 600px; height: auto }</style>';
  const own = await opened({ file: write('own.html', style + svg), viewport: { width, height } });
  const { ink, differing, sameSize } = await compare(bytes, await own.screenshot());
  assert.ok(sameSize && ink > 1000);
  assert.ok(differing < 0.01 * ink, `${differing} of ${ink}`);
  await page.selectOption('#png-paper', '');
  const clear = (await saved(page, '#save-png')).bytes.toString('base64');
  const corner = await page.evaluate(async data => {
    const image = new Image();
    image.src = `data:image/png;base64,${data}`;
    await image.decode();
    const context = new OffscreenCanvas(1, 1).getContext('2d');
    context.drawImage(image, 0, 0);
    return [...context.getImageData(0, 0, 1, 1).data];
  }, clear);
  assert.deepEqual(corner, [0, 0, 0, 0]);
  await page.context().close();
  await own.context().close();
});

test('a damaged recording is rescued as by the command, and the result is opened', async () => {
  const page = await opened();
  const cut = cutRecording('cut.pnx');
  const { bytes } = native(['rescue'], cut, 'pnx');
  await add(page, cut);
  await open(page, 'cut.pnx');
  assert.match(await page.locator('#damage').textContent(), /the file ends inside its last packet \(byte 199996\)/);
  const mended = await saved(page, '#save-recording');
  assert.equal(mended.name, 'cut.rescued.pnx');
  assert.ok(mended.bytes.equals(bytes));
  await page.click('#rescue');
  await page.waitForFunction(() => byId('name').textContent === 'cut.rescued.pnx' && byId('facts').children.length);
  assert.match(await page.locator('#origin').textContent(), /^Saved from cut\.pnx: \d+ points kept/);
  assert.match(await page.locator('#rescued').textContent(), /bytes 199996 to 199999/);
  assert.ok((await saved(page, '#save-recording')).bytes.equals(bytes));
  await page.click('#back');
  await drawn(page);
  assert.match(await cardOf(page, 'cut.rescued.pnx').textContent(), /sound$/);
  await page.context().close();
});

test('what cannot be opened is told in the words of the command', async () => {
  const page = await opened();
  await add(page, write('words.pnx', 'hello'));
  assert.match(await cardOf(page, 'words.pnx').textContent(), /does not open: this is a text file, not a recording$/);
  await page.click('text=words.pnx');
  await page.waitForSelector('#wait .bad');
  assert.equal(await page.locator('#wait p').textContent(), 'this is a text file, not a recording');
  await page.click('#save-svg');
  await page.waitForFunction(() => byId('saved').textContent === 'this is a text file, not a recording');
  await page.context().close();
});

// A drawing on the page: its replay, the rescue, and everything that is saved.
'use strict';
const assert = require('node:assert/strict');
const { execFileSync } = require('node:child_process');
const fs = require('node:fs');
const { test } = require('node:test');
const { compare, sample, write } = require('../page/browser.js');
const { add, cardOf, cutRecording, drawn, native, open, opened, quietSoFar, saved, troubledPage } = require('./page.js');

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

test('a ZIP keeps folders, names no two files alike, and says what is missing', async () => {
  const page = await opened();
  const buffer = fs.readFileSync(sample('signature.pnx'));
  await page.evaluate(data => {
    const bytes = Uint8Array.from(atob(data), character => character.charCodeAt(0));
    const paths = ['one/a.pnx', 'one/A.PNX', 'two/a.pnx', 'two/a.pnx', '../up.pnx', 'nul.pnx', 'bad.pnx'];
    take(paths.map(path => ({ path, open: () => new File([path === 'bad.pnx' ? 'no' : bytes], nameOf(path)) })));
  }, buffer.toString('base64'));
  await drawn(page);
  await page.check('#choose-all');
  await page.click('#save-chosen');
  await page.check('#zip [name=recording]');
  const [download] = await Promise.all([page.waitForEvent('download'), page.click('#zip-save')]);
  const listed = execFileSync('python3', ['-c', `import hashlib, sys, zipfile
with zipfile.ZipFile(sys.argv[1]) as zip:
    assert zip.testzip() is None
    for name in zip.namelist(): print(name, hashlib.sha256(zip.read(name)).hexdigest(), sep="\\t")`, await download.path()],
  { encoding: 'utf8' }).trim().split('\n').map(line => line.split('\t'));
  const entries = listed.map(([name]) => name).sort();
  assert.equal(new Set(entries.map(name => name.toLowerCase())).size, entries.length);
  assert.equal(entries.length, 12);
  assert.equal(entries.filter(name => name.startsWith('two/a.pnx')).length, 4, entries.join());
  assert.ok(entries.includes('_nul.svg') && entries.includes('__/up.svg'), entries.join());
  const digest = bytes => require('node:crypto').createHash('sha256').update(bytes).digest('hex');
  const svg = digest(native(['open'], sample('signature.pnx'), 'svg').bytes);
  assert.deepEqual([...new Set(listed.filter(([name]) => name.endsWith('.svg')).map(([, sum]) => sum))], [svg]);
  assert.deepEqual([...new Set(listed.filter(([name]) => !name.endsWith('.svg')).map(([, sum]) => sum))], [digest(buffer)]);
  assert.match(await page.locator('#zip ul').textContent(), /bad\.pnx: svg: /);
  await page.context().close();
});

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

'use strict';
const assert = require('node:assert/strict');
const fs = require('node:fs');
const { test } = require('node:test');
const { compare, inkDocument, made, paperOf, place, sample, settled, shown, svgOf, withPixels, write } = require('./browser.js');

// Of the ink, and of the whole picture.
async function assertSamePicture(page, message) {
  const { ink, differing, size, sameSize } = await compare(await paperOf(page), await svgOf(page));
  assert.ok(sameSize);
  assert.ok(ink > 100, message);
  assert.ok(differing <= 0.01 * ink, `${message}: ${differing} of ${ink} pixels of ink differ`);
  assert.ok(differing <= 0.01 * size, message);
}

test('the last frame is the picture of the SVG', async () => {
  for (const name of ['lighthouse.pnx', 'handwriting.pnx', 'tilted-sketch.pnx', 'harbour.kvo', 'teapot.inkml']) {
    const page = await shown(made(sample(name), 'html'), { hash: '#at=1' });
    await assertSamePicture(page, name);
    await page.context().close();
  }
});

test('the last frame is the picture of the SVG with other colours, plain lines and on a fine screen', async () => {
  for (const options of [['--background', '#ffe0c0'], ['--style', 'centerline'], []]) {
    const page = await shown(made(sample('signature.pnx'), 'html', ...options), { hash: '#at=1', deviceScaleFactor: 2 });
    await assertSamePicture(page, options.join(' '));
    await page.context().close();
  }
});

test('a replay that played to its end shows the picture of the SVG', async () => {
  const page = await shown(made(sample('signature.pnx'), 'html'), { hash: '#at=0' });
  await page.selectOption('#speed', '64');
  await page.click('#play');
  for (let i = 0; i < 1000 && await place(page) < 1; ++i) await page.clock.runFor(500);
  assert.equal(await place(page), 1);
  await settled(page);
  assert.equal(await page.locator('#play').getAttribute('aria-label'), 'Play');
  await assertSamePicture(page, 'the end');
  await page.context().close();
});

test('a stroke grows along its line in the time that the pen took, and pauses are shortened', async () => {
  // Strokes of a second each over the width of the page, half a second of pause between them: 2.5 seconds in all. The
  // last point of a stroke is a control point alone: from the point before it, the line goes four ninths of the way there
  // and back.
  const end = 3 / 4 + 1 / 4 * 4 / 9;
  const page = await shown(made(write('two.kvo', inkDocument('a', 'b')), 'html'), { hash: '#at=0' });
  assert.equal(await page.locator('#bar').getAttribute('max'), '2500');
  for (const [at, upper, lower] of [[0.1, 1 / 4, 0], [0.2, 1 / 2, 0], [0.4, end, 0], [0.5, end, 0], [0.7, end, 1 / 4],
    [0.8, end, 1 / 2], [1, end, end]]) {
    await go(page, at);
    const ends = await withPixels(page, (dark, width) => {
      const ends = [0, 0];
      dark.forEach((value, i) => {
        const half = i / width < view.y + paper.height * view.scale / 2 ? 0 : 1;
        if (value > 128) ends[half] = Math.max(ends[half], (i % width - view.x) / (paper.width * view.scale));
      });
      return ends;
    });
    for (const half of [0, 1]) {
      const expected = [upper, lower][half];
      assert.ok(Math.abs(ends[half] - expected) < 0.01, `at ${at}: ${ends} instead of ${[upper, lower]}`);
    }
  }
  await page.context().close();
});

async function go(page, at) {
  await page.evaluate(hash => { location.hash = hash; }, `#at=${at}`);
  await settled(page);
}

test('what is drawn of a stroke lies within it', async () => {
  const page = await shown(made(sample('handwriting.pnx'), 'html'), { hash: '#at=1' });
  await withPixels(page, dark => { window.last = dark; });
  for (const at of [0.13, 0.37, 0.71]) {
    await go(page, at);
    const [drawn, outside] = await withPixels(page, dark => [dark.filter(value => value > 64).length,
      dark.filter((value, i) => value > window.last[i] + 64).length]);
    assert.ok(drawn > 100);
    assert.equal(outside, 0, `at ${at}`);
  }
  await page.context().close();
});

test('strokes are replayed as the clock has them, not as layers lie', async () => {
  const [low, high] = [/4100/g, /100 100 0/];
  const later = inkDocument('first below', 'second above')
    .replace(/ (\d+)(?=[,<])/g, (whole, when) => ` ${(Number(when) + 4000) % 8000}`);
  assert.match(later, low);
  assert.match(later, high);
  const page = await shown(made(write('order.kvo', later), 'html'), { hash: '#at=0.2' });
  assert.match(await page.locator('#bar').getAttribute('aria-valuetext'), /Layer 2$/);
  await page.context().close();
});

test('a recording whose clock stands still is replayed at an even pace', async () => {
  const still = inkDocument('a').replace(/ \d+(?=[,<])/g, ' 7');
  const page = await shown(made(write('still.kvo', still), 'html'), { hash: '#at=0' });
  // 80 mm, of which the last piece stands still, are 226.8 points, at 0.3 points a millisecond less the last piece.
  assert.equal(await page.locator('#bar').getAttribute('max'), String(Math.floor(60 / 25.4 * 72 / 0.3)));
  await page.context().close();
});

test('the page has the SVG and gives it back byte for byte', async () => {
  for (const [name, ...options] of [['lighthouse.pnx'], ['harbour.kvo', '--background', '#ffe0c0'],
    ['signature.pnx', '--style', 'centerline']]) {
    const svg = fs.readFileSync(made(sample(name), 'svg', ...options), 'utf8');
    const page = await shown(made(sample(name), 'html', ...options));
    assert.ok(fs.readFileSync(made(sample(name), 'html', ...options), 'utf8').includes(svg.slice(svg.indexOf('<svg'))));
    const [download] = await Promise.all([page.waitForEvent('download'), page.click('#save')]);
    assert.equal(download.suggestedFilename(), `${name.replace(/\.\w+$/, '')}.svg`);
    assert.equal(fs.readFileSync(await download.path(), 'utf8'), svg);
    await page.context().close();
  }
});

test('it begins by itself after a moment, but not where less motion is asked for', async () => {
  const file = made(sample('signature.pnx'), 'html');
  for (const [reducedMotion, plays] of [['no-preference', true], ['reduce', false]]) {
    const page = await shown(file, { reducedMotion });
    assert.equal(await place(page), 1);
    await page.clock.runFor(3000);
    assert.equal(await place(page) < 1, plays);
    await page.context().close();
  }
});

test('without scripts the picture is there, and no controls', async () => {
  const page = await shown(made(sample('signature.pnx'), 'html'), { javaScriptEnabled: false });
  const box = await page.locator('#picture svg').boundingBox();
  assert.ok(box.width > 100 && box.height > 50 && box.width <= 1000 && box.height <= 800);
  assert.equal(await page.locator('#controls').isVisible(), false);
  assert.ok(await page.getByText('signature.pnx').isVisible());
  await page.context().close();
});

test('a recording without strokes has a page that says so', async () => {
  const page = await shown(made(write('empty.kvo', '<ink/>'), 'html'), { javaScriptEnabled: false });
  assert.ok(await page.getByText('This recording has no strokes to show.').isVisible());
  await page.context().close();
});

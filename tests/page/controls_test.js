'use strict';
const assert = require('node:assert/strict');
const fs = require('node:fs');
const { test } = require('node:test');
const { compare, inkDocument, inkOf, made, paperOf, place, resize, sample, settled, shown, svgOf, write } = require('./browser.js');

const axe = fs.readFileSync(require.resolve('axe-core/axe.min.js'), 'utf8');

async function near(page, expected) {
  await settled(page);
  const found = await place(page);
  assert.ok(Math.abs(found - expected) < 0.01, `${found} instead of ${expected}`);
}

async function withPage(name, options, look) {
  const file = name.includes('<') ? made(write('drawn.kvo', name), 'html') : made(sample(name), 'html');
  const page = await shown(file, { hash: '#at=1', ...options });
  await look(page);
  assert.deepEqual(page.complaints, []);
  assert.deepEqual(page.asked.filter(url => !url.startsWith('file:')), []);
  assert.equal(page.asked.length, 1);
  await page.context().close();
}

test('keys play, pause, step, and go to the start and the end', () => withPage(inkDocument('a', 'b', 'c'), {}, async page => {
  // Three strokes of a second, pauses of half a second: 4 seconds.
  await page.keyboard.press('Home');
  await near(page, 0);
  await page.keyboard.press('.');
  await near(page, 1 / 4);
  await page.keyboard.press('.');
  await near(page, 2.5 / 4);
  await page.keyboard.press(',');
  await near(page, 1 / 4);
  await page.keyboard.press('Space');
  assert.equal(await page.locator('#play').getAttribute('aria-label'), 'Pause');
  await page.clock.runFor(1000);
  await page.keyboard.press('Space');
  const paused = await place(page);
  assert.ok(paused > 0.4 && paused < 0.55, String(paused));
  await page.clock.runFor(1000);
  assert.equal(await place(page), paused);
  await page.keyboard.press('End');
  await near(page, 1);
}));

test('the bar takes keys and clicks, and marks the layers', () => withPage(inkDocument('a', 'b', 'c'), {}, async page => {
  await page.focus('#bar');
  await page.keyboard.press('Home');
  await near(page, 0);
  await page.keyboard.press('ArrowRight');
  await settled(page);
  assert.ok(await place(page) > 0);
  const box = await page.locator('#bar').boundingBox();
  await page.mouse.click(box.x + box.width / 2, box.y + box.height / 2);
  await near(page, 0.5);
  const marks = await page.locator('#marks i').evaluateAll(all => all.map(mark => [mark.title, mark.style.left]));
  assert.deepEqual(marks, [['Layer 2', '37.5%'], ['Layer 3', '75%']]);
  assert.equal(await page.locator('#bar').getAttribute('aria-valuetext'), '0:02 of 0:04, Layer 2');
}));

test('speed changes how fast it plays', () => withPage(inkDocument('a', 'b', 'c', 'd', 'e'), {}, async page => {
  const gone = async speed => {
    await page.selectOption('#speed', speed);
    await page.keyboard.press('Home');
    await page.click('#play');
    await page.clock.runFor(1000);
    await page.click('#play');
    return await place(page) * 7000;
  };
  const [slow, usual, fast] = [await gone('0.5'), await gone('1'), await gone('4')];
  assert.ok(Math.abs(usual / slow - 2) < 0.2 && Math.abs(fast / usual - 4) < 0.4, `${slow} ${usual} ${fast}`);
}));

test('layers are switched off and on, and the replay leaves them out', () => withPage(inkDocument('a', 'b'), {}, async page => {
  const whole = await inkOf(page);
  await page.click('summary');
  const boxes = page.locator('#layer-list input');
  assert.deepEqual(await page.locator('#layer-list li').allInnerTexts(), ['Layer 2', 'Layer 1']);
  await boxes.first().uncheck();
  await page.keyboard.press('Escape');
  const half = await inkOf(page);
  assert.ok(Math.abs(half / whole - 0.5) < 0.05, `${half} of ${whole}`);
  const printed = await page.locator('#picture svg').evaluate(svg => svg.querySelectorAll('.off').length);
  assert.equal(printed, 1);
  await page.selectOption('#speed', '1');
  await page.click('#play');
  await page.clock.runFor(1300);
  assert.equal(await place(page), 1);
  await page.click('summary');
  await boxes.first().check();
  await page.keyboard.press('Escape');
  assert.ok(Math.abs(await inkOf(page) - whole) < 0.01 * whole);
}));

test('wheel, keys, buttons and fingers zoom and move', () => withPage('signature.pnx', { hasTouch: true }, async page => {
  const viewNow = async () => {
    await settled(page);
    return page.evaluate(() => ({ ...view }));
  };
  const first = await viewNow();
  await page.mouse.move(500, 300);
  await page.mouse.wheel(0, -200);
  const wheeled = await viewNow();
  assert.ok(wheeled.scale > first.scale * 1.2);
  await page.mouse.down();
  await page.mouse.move(540, 330);
  await page.mouse.up();
  const moved = await viewNow();
  assert.ok(Math.abs(moved.x - wheeled.x - 40) < 1 && Math.abs(moved.y - wheeled.y - 30) < 1);
  await page.focus('#stage');
  await page.keyboard.press('ArrowRight');
  assert.ok((await viewNow()).x < moved.x);
  await page.keyboard.press('+');
  assert.ok((await viewNow()).scale > moved.scale);
  await page.keyboard.press('0');
  assert.deepEqual(await viewNow(), first);
  await page.click('#in');
  assert.ok((await viewNow()).scale > first.scale);
  assert.match(await page.locator('#fit').innerText(), /^1\d\d%$/);
  await page.click('#out');
  await page.click('#fit');
  assert.deepEqual(await viewNow(), first);
  await pinch(page);
  const pinched = await viewNow();
  assert.ok(Math.abs(pinched.scale / first.scale - 2) < 0.01, `${pinched.scale} after ${first.scale}`);
}));

// Two fingers that move from 100 to 200 pixels apart.
async function pinch(page) {
  const session = await page.context().newCDPSession(page);
  const touch = (type, ...xs) => session.send('Input.dispatchTouchEvent',
    { type, touchPoints: xs.map((x, id) => ({ x, y: 300, id })) });
  await touch('touchStart', 450, 550);
  await touch('touchMove', 400, 600);
  await touch('touchEnd');
}

test('what is zoomed shows the picture of the SVG', () => withPage('signature.pnx', {}, async page => {
  await page.keyboard.press('+');
  await page.keyboard.press('-');
  await resize(page, 700, 600);
  const { ink, differing } = await compare(await paperOf(page), await svgOf(page));
  assert.ok(ink > 100 && differing <= 0.01 * ink, `${differing} of ${ink}`);
}));

test('the keys are explained, and can be switched off', () => withPage('signature.pnx', {}, async page => {
  await page.click('#help');
  assert.ok(await page.getByRole('dialog', { name: 'Keys' }).isVisible());
  await page.uncheck('#keys-on');
  await page.keyboard.press('Escape');
  await page.keyboard.press('Home');
  await near(page, 1);
  await page.focus('#stage');
  await page.keyboard.press('Home');
  await near(page, 0);
}));

test('every control has a name and is reached by the tab key', () => withPage(inkDocument('a', 'b'), {}, async page => {
  const reached = [];
  for (let i = 0; i < 20; ++i) {
    await page.keyboard.press('Tab');
    reached.push(await page.evaluate(() => document.activeElement.id || document.activeElement.tagName));
  }
  for (const id of ['stage', 'bar', 'play', 'speed', 'SUMMARY', 'out', 'fit', 'in', 'full', 'save', 'help']) {
    assert.ok(reached.includes(id), `${id} is not among ${reached}`);
  }
}));

for (const [words, options] of Object.entries({
  'in light colours': { colorScheme: 'light' },
  'in dark colours': { colorScheme: 'dark' },
  'on a small screen': { viewport: { width: 320, height: 560 } },
  'on a large screen': { viewport: { width: 1600, height: 1000 } },
})) {
  test(`the page is accessible and fits ${words}`, () => withPage(inkDocument('a', 'b'), options, async page => {
    await page.click('summary');
    await page.evaluate(axe);
    // The check waits with timers.
    const [found] = await Promise.all([page.evaluate(() => axe.run()), page.clock.runFor(5000)]);
    assert.deepEqual(found.violations.map(({ id, nodes }) => [id, nodes.map(({ html }) => html)]), []);
    assert.ok(found.passes.length > 10);
    const { width, height } = page.viewportSize();
    const size = await page.evaluate(() => [document.documentElement.scrollWidth, document.documentElement.scrollHeight]);
    assert.deepEqual(size, [width, height]);
    for (const id of ['stage', 'bar', 'play', 'speed', 'layers', 'out', 'fit', 'in', 'full', 'save', 'help', 'layer-list']) {
      const box = await page.locator(`#${id}`).boundingBox();
      assert.ok(box && box.x >= 0 && box.y >= 0 && box.x + box.width <= width && box.y + box.height <= height, id);
    }
  }));
}

test('hostile names are shown as text', async () => {
  const name = '<img src=x onerror=alert(1)>"&.kvo';
  const file = made(write(name, inkDocument('a', 'b')), 'html');
  // The plug-in numbers the layers; other art may have any names.
  const layer = '</svg><script>alert(2)</script>';
  const escaped = layer.replace(/</g, '&lt;').replace(/>/g, '&gt;');
  fs.writeFileSync(file, fs.readFileSync(file, 'utf8').replace('inkscape:label="Layer 2"', `inkscape:label="${escaped}"`));
  const page = await shown(file, { hash: '#at=1' });
  page.on('dialog', () => assert.fail('a script of the name ran'));
  await page.click('summary');
  assert.equal(await page.locator('h1').innerText(), name);
  assert.equal(await page.title(), name);
  assert.equal(await page.locator('#layer-list li').first().innerText(), layer);
  assert.equal(await page.locator('img').count(), 0);
  assert.equal(await page.locator('script').count(), 3);
  assert.deepEqual(page.complaints, []);
  await page.context().close();
});

test('nothing can be loaded even by a script', async () => {
  const page = await shown(made(sample('signature.pnx'), 'html'), { hash: '#at=1' });
  const blocked = await page.evaluate(() => Promise.all([
    fetch('data:text/plain,a').then(() => false, () => true),
    new Promise(resolve => {
      const image = new Image();
      image.onload = () => resolve(false);
      image.onerror = () => resolve(true);
      image.src = 'data:image/gif;base64,R0lGODlhAQABAAAAACwAAAAAAQABAAA=';
    }),
  ]));
  assert.deepEqual(blocked, [true, true]);
  await page.context().close();
});

test('on paper there is the picture alone, on one page', () => withPage('harbour.kvo', {}, async page => {
  await page.emulateMedia({ media: 'print' });
  assert.ok(await page.locator('#picture svg').isVisible());
  for (const id of ['header', '#controls', 'canvas']) assert.equal(await page.locator(id).first().isVisible(), false, id);
  for (const format of ['A4', 'Letter']) {
    const pdf = await page.pdf({ format, preferCSSPageSize: false });
    assert.equal(pdf.toString('latin1').match(/\/Type \/Page\b/g).length, 1, format);
  }
}));

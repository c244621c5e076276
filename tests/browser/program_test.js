// The program for the browser does what the native command does, which other tests hold against independent models.
'use strict';
const assert = require('node:assert/strict');
const { execFileSync } = require('node:child_process');
const fs = require('node:fs');
const os = require('node:os');
const path = require('node:path');
const { after, before, describe, it } = require('node:test');
const { Program, copyOf, native, sample, samples, script } = require('./program.js');

let program;
before(() => { program = new Program(); });
after(() => program.end());

const text = content => new TextEncoder().encode(content);

// Both programs are asked for the same; gives what they answer alike.
async function bothSay(files, words, wanted = []) {
  const { id, ...answer } = await program.ask({ files: copyOf(files), words, wanted });
  const expected = native({ files, words, wanted });
  const sizes = ({ files: results }) => results.map(({ name, bytes }) => `${name}: ${bytes.length}`);
  assert.deepEqual({ ...answer, files: sizes(answer) }, { ...expected, files: sizes(expected) });
  answer.files.forEach(({ name, bytes }, i) => assert.ok(Buffer.from(bytes).equals(expected.files[i].bytes), `${words}: ${name}`));
  return answer;
}

async function bothSucceed(files, words, wanted = []) {
  const answer = await bothSay(files, words, wanted);
  assert.equal(answer.exit, 0, answer.err);
  assert.deepEqual(answer.files.map(({ name }) => name), wanted);
  return answer;
}

async function bothFail(files, words, exit, wanted = []) {
  const answer = await bothSay(files, words, wanted);
  assert.equal(answer.exit, exit);
  assert.notEqual(answer.err + answer.out, '');
  return answer;
}

describe('every sample', () => {
  assert.equal(samples.length, 10);
  for (const recording of samples) {
    const { name } = recording;
    it(`${name} is drawn as natively`, () => bothSucceed([recording], ['open', name, '-o', 'x.svg'], ['x.svg']));
    it(`${name} is drawn as plain lines as natively`,
      () => bothSucceed([recording], ['open', name, '--style', 'centerline', '-o', 'x.svg'], ['x.svg']));
    it(`${name} has the same art`, () => bothSucceed([recording], ['open', name, '--format', 'json', '-o', 'x.json'], ['x.json']));
    it(`${name} has the same ink`, () => bothSay([recording], ['ink', name, '-o', 'x.json'], ['x.json']));
    it(`${name} has the same replay`, () => bothSucceed([recording], ['open', name, '-o', 'x.html'], ['x.html']));
    it(`${name} is converted alike`, () => bothSay([recording], ['convert', '--exact', name, '-o', 'x.inkml'], ['x.inkml']));
    it(`${name} has the same facts`, () => bothSucceed([recording], ['info', '--json', name]));
    it(`${name} is checked alike`, () => bothSay([recording], ['check', name]));
  }
});

describe('a recording', () => {
  const pen = sample('lighthouse.pnx');
  const cut = { name: 'cut.pnx', bytes: pen.bytes.slice(0, pen.bytes.length / 2) };
  const spoilt = { name: 'spoilt.pnx', bytes: pen.bytes.map((byte, i) => i % 5000 === 4999 ? 0xff : byte) };

  it('that is damaged is rescued as natively', async () => {
    for (const damaged of [cut, spoilt]) {
      await bothSucceed([damaged], ['rescue', damaged.name, '-o', 'whole.pnx'], ['whole.pnx']);
      await bothSay([damaged], ['rescue', '--json', damaged.name, '-o', 'whole.pnx'], ['whole.pnx']);
      await bothSay([damaged], ['open', '--rescue', damaged.name, '-o', 'x.svg'], ['x.svg']);
      await bothFail([damaged], ['check', damaged.name], 1);
    }
  });
  it('is listed packet by packet as natively', () => bothSucceed([pen], ['packets', '--json', 'lighthouse.pnx']));
  it('has the same journal of calls', () => bothSucceed([pen], ['open', 'lighthouse.pnx', '-o', 'x.svg', '--journal', 'j.jsonl'], ['j.jsonl']));
  it('is read as natively whatever was read before it', async () => {
    const inCapitals = { ...pen, name: 'lighthouse.PNX' };
    for (const before of [sample('harbour.kvo'), sample('teapot.inkml'), pen, cut]) {
      await bothSay([before], ['open', before.name, '-o', 'x.svg'], ['x.svg']);
      await bothSucceed([inCapitals], ['open', inCapitals.name, '-o', 'x.svg'], ['x.svg']);
      await bothSay([before, inCapitals], ['open', before.name, inCapitals.name, '--out-dir', 'drawings'],
        ['drawings/lighthouse.svg', 'drawings/lighthouse.PNX.svg']);
    }
  });
  it('of another program is translated as natively', async () => {
    const other = samples.find(({ name }) => name.includes('other-program'));
    const answer = await bothSucceed([other], ['open', other.name, '-o', 'x.svg'], ['x.svg']);
    assert.match(answer.out, /translated from InkML of another program/);
    await bothSucceed([other], ['convert', other.name, '-o', 'x.kvo'], ['x.kvo']);
  });
  it('is found in folders, and drawn into folders', async () => {
    const files = [{ ...pen, name: 'a/b/one.pnx' }, { ...sample('lighthouse.pnx'), name: 'a/two.PNX' }];
    await bothSucceed(files, ['open', 'a', '--out-dir', 'drawings'], ['drawings/b/one.svg', 'drawings/two.svg']);
  });
});

describe('what goes wrong', () => {
  it('is said in the same words, with the same exit status', async () => {
    const broken = [
      ['empty.pnx', ''], ['letter.pnx', 'Dear Sir or Madam'], ['empty.inkml', ''], ['cut.inkml', '<ink><trace>1 2'], ['other.inkml', '<html/>'],
      ['deep.inkml', '<a>'.repeat(100000)],
    ];
    for (const [name, content] of broken) {
      const files = [{ name, bytes: text(content) }];
      await bothFail(files, ['open', name, '-o', 'x.svg'], 1, ['x.svg']);
      await bothFail(files, ['check', name], 1);
    }
    await bothFail([], ['open', 'none.pnx', '-o', 'x.svg'], 1);
    await bothFail([], ['draw', 'none.pnx'], 2);
    await bothFail([], [], 2);
    await bothFail([sample('lighthouse.pnx')], ['open', 'lighthouse.pnx', '-o', 'lighthouse.pnx'], 2, ['lighthouse.pnx']);
  });
  it('includes PDF and PNG, which this build does not write', async () => {
    for (const kind of ['pdf', 'png']) {
      const answer = await program.ask({ files: [sample('lighthouse.pnx')], words: ['open', 'lighthouse.pnx', '-o', `x.${kind}`], wanted: [`x.${kind}`] });
      assert.equal(answer.exit, 1);
      assert.match(answer.err, new RegExp(`this build of the program writes no ${kind.toUpperCase()}`));
      assert.deepEqual(answer.files, []);
    }
  });
  it('includes another module, which this build cannot load', async () => {
    const answer = await program.ask({ files: [sample('lighthouse.pnx')], words: ['open', 'lighthouse.pnx', '-o', 'x.svg', '--module', 'x.aip'] });
    assert.equal(answer.exit, 1);
    assert.match(answer.err, /x\.aip: this build of the program loads no modules/);
  });
});

describe('names', () => {
  const names = ['ä ö.pnx', '-o.pnx', 'a"b<c>&\'.pnx', 'line\nbreak.pnx', '__proto__/constructor.pnx', '\ufeffmark.pnx', 'C:\\x.pnx', `${'n'.repeat(200)}.pnx`,
    '名前 🖊.pnx', 'a\u0301.pnx', '%41.pnx'];
  for (const name of names) {
    it(`may be ${JSON.stringify(name)}`, () => bothSucceed([{ ...sample('lighthouse.pnx'), name }], ['open', '-o', 'x.svg', '--', name], ['x.svg']));
  }
  it('may have half a character', async () => {
    const answer = await program.ask({ files: [{ ...sample('lighthouse.pnx'), name: 'a\ud800.pnx' }], words: ['open', 'a\ud800.pnx', '-o', 'b\udc00.svg'], wanted: ['b\udc00.svg'] });
    assert.equal(answer.exit, 0, answer.err);
    assert.deepEqual(answer.files.map(({ name }) => name), ['b\udc00.svg']);
  });
  it('do not lead out of the folder', async () => {
    for (const name of ['../x.pnx', '/x.pnx', 'a/../../x.pnx', 'a//x.pnx', './x.pnx', '..', '', 'a\0.pnx']) {
      for (const message of [{ files: [{ name, bytes: text('x') }], words: ['--version'] }, { words: ['--version'], wanted: [name] }]) {
        const answer = await program.ask(message);
        assert.equal(answer.exit, 2);
        assert.match(answer.err, /^penwick: '[^]*' is not the name of a file in the page's folder\n$/);
      }
    }
    assert.equal((await program.ask({ words: ['--version'] })).exit, 0);
  });
});

describe('the folder', () => {
  const words = ['open', 'lighthouse.pnx', '-o', 'x.svg'];
  it('is empty for each message', async () => {
    await program.ask({ files: [sample('lighthouse.pnx'), { name: '__proto__', bytes: text('x') }], words });
    const answer = await program.ask({ words: ['open', 'lighthouse.pnx', '-o', 'y.svg'], wanted: ['x.svg', 'y.svg', '__proto__'] });
    assert.equal(answer.exit, 1);
    assert.deepEqual(answer.files, []);
  });
  it('is kept where that is asked for', async () => {
    await program.ask({ files: [sample('lighthouse.pnx')], words: ['--version'], keep: true });
    const drawn = await program.ask({ words, wanted: ['x.svg'], keep: true });
    assert.equal(drawn.exit, 0, drawn.err);
    const again = await program.ask({ words: ['--version'], wanted: ['x.svg', 'lighthouse.pnx'] });
    assert.deepEqual(again.files.map(({ bytes }) => bytes.length), [drawn.files[0].bytes.length, sample('lighthouse.pnx').bytes.length]);
    assert.deepEqual((await program.ask({ words: ['--version'], wanted: ['x.svg'] })).files, []);
  });
});

describe('many calls', () => {
  const pen = sample('lighthouse.pnx');
  const calls = [
    [['open', 'lighthouse.pnx', '-o', 'x.svg'], 'x.svg'],
    [['--help']],
    [['open', '--verbose', 'cut.pnx', '-o', 'x.svg'], 'x.svg'],
    [['check', 'lighthouse.pnx', 'cut.pnx']],
    [['open', '--no-such-option']],
    [['rescue', 'cut.pnx', '-o', 'whole.pnx'], 'whole.pnx'],
    [['info', 'lighthouse.pnx']],
  ];
  // The log has the time in it.
  const lasting = ({ id, ...answer }) => ({ ...answer, err: answer.err && answer.err.replace(/^\[[\d.: ]+\]/gm, '[time]') });
  const message = ([words, wanted]) => ({
    words, wanted: wanted ? [wanted] : [],
    files: copyOf([pen, { name: 'cut.pnx', bytes: pen.bytes.slice(0, 30000) }]),
  });
  it('give what the first one gives, and take no more memory', async test => {
    const used = new Program();
    test.after(() => used.end());
    const firsts = [];
    for (const call of calls) {
      const fresh = new Program();
      firsts.push(lasting(await fresh.ask(message(call))));
      await fresh.end();
    }
    let size;
    for (let i = 0; i < 301; ++i) {
      const answer = await used.ask(message(calls[i % calls.length]));
      assert.deepEqual(lasting(answer), firsts[i % calls.length]);
      if (i === 2 * calls.length) size = await used.memory();
    }
    assert.equal(await used.memory(), size);
  });
});

describe('a crash', () => {
  // The script of the worker behind a program that ends as `body` says.
  const crashing = body => `globalThis.createPenwick = ${body};\n${script.slice(script.lastIndexOf('// The worker of the page'))}`;
  const module = call => `async () => {
    const nothing = () => {};
    const FS = { mkdir: nothing, mount: nothing, unmount: nothing, chdir: nothing, mkdirTree: nothing, writeFile: nothing, close: nothing, open: nothing,
      getStream: nothing, filesystems: {} };
    return { FS, stackSave: nothing, stackRestore: nothing, callMain: () => { ${call} } };
  }`;
  const kinds = [
    ['of the program', module('throw new WebAssembly.RuntimeError("unreachable");'), 'the program crashed at this file'],
    ['for lack of memory', module('throw new WebAssembly.RuntimeError("Aborted(Cannot enlarge memory arrays)");'), 'there is not enough memory in the browser for this file'],
    ['for lack of stack', module('const deeper = () => deeper() + 1; deeper();'), 'the program crashed: the file is nested too deep'],
    ['before the start', 'async () => { throw new Error("no WebAssembly"); }', 'this browser cannot run the program: no WebAssembly'],
  ];
  for (const [kind, body, sentence] of kinds) {
    it(`${kind} is answered, and nothing is done after it`, async test => {
      const ended = new Program(crashing(body));
      test.after(() => ended.end());
      const first = await ended.ask({ files: [sample('lighthouse.pnx')], words: ['check', 'lighthouse.pnx'] });
      assert.equal(first.crashed, sentence);
      assert.equal((await ended.ask({ words: ['--version'] })).crashed, sentence);
    });
  }
});

// What a program prints, by way of a file: node ends before it has written all of it into a pipe.
function printedBy(...command) {
  const folder = fs.mkdtempSync(path.join(os.tmpdir(), 'penwick numbers '));
  const file = path.join(folder, 'numbers');
  const held = fs.openSync(file, 'w');
  execFileSync(command[0], command.slice(1), { stdio: ['ignore', held, 'inherit'] });
  fs.closeSync(held);
  const printed = fs.readFileSync(file);
  fs.rmSync(folder, { recursive: true });
  return printed;
}

it('numbers have the same digits as natively', () => {
  const expected = printedBy(process.env.PENWICK_NUMBERS_NATIVE);
  assert.ok(expected.length > 10e6);
  assert.ok(printedBy(process.execPath, process.env.PENWICK_NUMBERS).equals(expected));
});

// The program for the browser, in a worker of node, and the native command beside it.
'use strict';
const { spawnSync } = require('node:child_process');
const fs = require('node:fs');
const os = require('node:os');
const path = require('node:path');
const { Worker } = require('node:worker_threads');

const samplesFolder = path.join(__dirname, '..', '..', 'samples');
const script = fs.readFileSync(process.env.PENWICK_WORKER, 'utf8');

// What a worker of a browser has and one of node does not. `memory` asks for the size of the program's memory.
const kBrowser = `
  const { parentPort } = require('node:worker_threads');
  const memories = [];
  const instantiate = WebAssembly.instantiate;
  WebAssembly.instantiate = async (...given) => {
    const made = await instantiate(...given);
    memories.push(...Object.values(made.instance.exports).filter(one => one instanceof WebAssembly.Memory));
    return made;
  };
  globalThis.self = { postMessage: (message, transferred) => parentPort.postMessage(message, transferred) };
  parentPort.on('message', data => {
    if (data.memory) parentPort.postMessage({ id: data.id, sizes: memories.map(one => one.buffer.byteLength) });
    else self.onmessage({ data });
  });
`;

class Program {
  constructor(text = script) {
    this.worker = new Worker(kBrowser + text, { eval: true });
    this.waiting = new Map();
    this.worker.on('message', answer => {
      this.waiting.get(answer.id)(answer);
      this.waiting.delete(answer.id);
    });
  }

  ask(message) {
    const id = `${this.waiting.size} ${Math.random()}`;
    return new Promise(resolve => {
      this.waiting.set(id, resolve);
      this.worker.postMessage({ id, ...message });
    });
  }

  async memory() {
    const { sizes } = await this.ask({ memory: true });
    if (sizes.length !== 1) throw new Error(`the program has ${sizes.length} memories`);
    return sizes[0];
  }

  end() {
    return this.worker.terminate();
  }
}

// Copies, as a worker takes what it is sent.
const copyOf = files => files.map(({ name, bytes }) => ({ name, bytes: Uint8Array.from(bytes) }));

// The native command in a folder that holds `files`: what a worker answers, but for the id.
function native({ files = [], words, wanted = [] }) {
  const held = fs.mkdtempSync(path.join(os.tmpdir(), 'penwick browser '));
  const folder = path.join(held, 'recordings');
  fs.mkdirSync(folder);
  for (const { name, bytes } of files) {
    fs.mkdirSync(path.dirname(path.join(folder, name)), { recursive: true });
    fs.writeFileSync(path.join(folder, name), bytes);
  }
  const done = spawnSync(process.env.PENWICK, words, {
    cwd: folder, encoding: 'utf8', input: '', env: { HOME: held, PATH: process.env.PATH }, maxBuffer: 2 ** 28,
  });
  if (done.error) throw done.error;
  const there = wanted.filter(name => fs.existsSync(path.join(folder, name)));
  const results = there.map(name => ({ name, bytes: new Uint8Array(fs.readFileSync(path.join(folder, name))) }));
  fs.rmSync(held, { recursive: true });
  return { exit: done.status, out: done.stdout, err: done.stderr, files: results };
}

const sample = name => ({ name, bytes: new Uint8Array(fs.readFileSync(path.join(samplesFolder, name))) });

const samples = fs.readdirSync(samplesFolder).filter(name => /\.(pnx|eli|kvo|inkml)$/.test(name)).map(sample);

module.exports = { Program, copyOf, native, sample, samples, script };

// The worker of the page: it stands behind the program, which defines `createPenwick`, and calls the command
// once for each message
//
//     {id, files: [{name, bytes}], words: ['open', 'a.pnx', '-o', 'a.svg'], wanted: ['a.svg'], keep}
//
// in a folder that holds `files` (a name may have folders) and what earlier messages with `keep` left there. Answers
//
//     {id, exit, out, err, files: [{name, bytes}]}
//
// with the `wanted` files that are there, or {id, crashed: 'a sentence'}. After that the worker is of no more use.
'use strict';

(() => {
  const kFolder = '/recordings';
  const kStreams = '/streams';
  const kTemporary = ['/tmp', '/home/web_user'];

  // The file system of the program takes names in UTF-16 and the program takes them in UTF-8, which has no halves of
  // characters.
  const wellFormed = text => text.replace(/\p{Surrogate}/gu, '\ufffd');

  const pathOf = name => `${kFolder}/${wellFormed(name)}`;

  const isInFolder = name => !name.includes('\0') && name.split('/').every(part => !['', '.', '..'].includes(part));

  class Program {
    constructor(module) {
      this.module = module;
      this.fs = module.FS;
      this.fs.ignorePermissions = true;  // as for root: all files are this program's own
      this.fs.mkdir(kFolder);
      this.fs.mkdir(kStreams);
      for (const folder of [kFolder, kStreams, ...kTemporary]) this.mount(folder);
    }

    mount(folder) {
      this.fs.mount(this.fs.filesystems.MEMFS, {}, folder);
    }

    // Everything in the folder is gone at once, whatever its name is.
    empty(folder) {
      this.fs.chdir('/');
      this.fs.unmount(folder);
      this.mount(folder);
    }

    write({ name, bytes }) {
      const path = pathOf(name);
      this.fs.mkdirTree(path.slice(0, path.lastIndexOf('/')));
      this.fs.writeFile(path, bytes, { canOwn: true });
    }

    // A system gives each file that is opened the lowest number that is free.
    openStreams() {
      for (const stream of [0, 1, 2].map(number => this.fs.getStream(number))) if (stream) this.fs.close(stream);
      this.empty(kStreams);
      this.fs.open('/dev/null', 'r');
      this.fs.open(`${kStreams}/out`, 'a');
      this.fs.open(`${kStreams}/err`, 'a');
    }

    printed(stream) {
      return new TextDecoder('utf-8', { ignoreBOM: true }).decode(this.fs.readFile(`${kStreams}/${stream}`));
    }

    call(words) {
      const stack = this.module.stackSave();
      const exit = this.module.callMain(words.map(wellFormed));
      this.module.stackRestore(stack);
      return exit;
    }

    result(name) {
      const { exists, object } = this.fs.analyzePath(pathOf(name));
      return exists && this.fs.isFile(object.mode) ? [{ name, bytes: this.fs.readFile(pathOf(name)) }] : [];
    }

    carryOut({ files = [], words, wanted = [], keep = false }) {
      for (const file of files) this.write(file);
      this.openStreams();
      this.fs.chdir(kFolder);
      const exit = this.call(words);
      const answer = { exit, out: this.printed('out'), err: this.printed('err'), files: wanted.flatMap(name => this.result(name)) };
      for (const folder of [...kTemporary, ...(keep ? [] : [kFolder])]) this.empty(folder);
      return answer;
    }
  }

  function wrongMessage({ files = [], words, wanted = [] }) {
    const wrongName = [...files.map(file => file.name), ...wanted].find(name => !isInFolder(name));
    if (wrongName !== undefined) return `'${wrongName}' is not the name of a file in the page's folder`;
    return words.some(word => word.includes('\0')) ? 'a word has a zero byte in it' : '';
  }

  function sentenceOf(failure) {
    const text = String(failure && failure.message);
    if (failure instanceof RangeError && /stack/i.test(text)) return 'the program crashed: the file is nested too deep';
    if (/memory|allocation/i.test(text)) return 'there is not enough memory in the browser for this file';
    return 'the program crashed at this file';
  }

  const ready = createPenwick({ thisProgram: 'penwick', print() {}, printErr() {} }).then(module => new Program(module));
  let crashed = '';
  ready.catch(failure => { crashed = `this browser cannot run the program: ${failure.message}`; });

  async function answerTo(message) {
    const wrong = wrongMessage(message);
    if (wrong) return { exit: 2, out: '', err: `penwick: ${wrong}\n`, files: [] };
    try {
      const program = await ready;
      return crashed ? { crashed } : program.carryOut(message);
    } catch (failure) {
      crashed = crashed || sentenceOf(failure);
      return { crashed };
    }
  }

  self.onmessage = async ({ data }) => {
    const answer = await answerTo(data);
    self.postMessage({ id: data.id, ...answer }, (answer.files || []).map(file => file.bytes.buffer));
  };
})();

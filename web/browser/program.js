// What the page asks of the program, and what of its answers is shown.

const kRetiringSize = 20 * 2 ** 20;

// The command says "penwick: NAME: " in front of an error, and "NAME: " in front of a result.
function withoutName(line, name) {
  const words = line.replace(/^penwick: /, '');
  const begin = `${printedText(name)}: `;
  return words.startsWith(begin) ? words.slice(begin.length) : words;
}

function sentenceOf(text, name) {
  const lines = text.split('\n').filter(Boolean).map(line => withoutName(line, name));
  return lines.find(line => !line.startsWith('warning: ')) || lines[0] || '';
}

// In JSON the texts of a file are as they were.
function jsonOf(text) {
  try {
    return JSON.parse(text, (key, value) => typeof value === 'string' ? plainText(value) : value);
  } catch {
    return undefined;
  }
}

// The program itself said no.
class Refusal extends Failure {}

// The program with one recording in its folder.
class Visit {
  constructor(ask, name, bytes) {
    this.ask = ask;
    this.name = name;
    this.files = [{ name, bytes }];
  }

  // `penwick WORDS... -- NAME`; gives the answer, with the file `made` as `result` where it is there.
  async run(words, made) {
    const files = this.files;
    this.files = [];
    const answer = await this.ask({ files, words: [...words, '--', this.name], wanted: made ? [made] : [], keep: true },
      files.map(file => file.bytes.buffer));
    const file = answer.files.find(one => one.name === made);
    return { ...answer, result: file && file.bytes };
  }

  // The same where nothing but the file is wanted.
  async make(words, ending) {
    // A recording may itself be called "result.pnx".
    const made = `${this.name.startsWith('result') ? 'made' : 'result'}.${ending}`;
    const { err, result } = await this.run([...words, '-q', '-o', made], made);
    if (!result) throw new Refusal(sentenceOf(err, this.name) || 'nothing came of it, and the program did not say why');
    return result;
  }

  svg(...options) { return this.make(['open', ...options], 'svg'); }

  page() { return this.make(['open'], 'html'); }

  inkml() { return this.make(['convert'], 'inkml'); }

  // What `info` and `check` say: `info` is undefined where nothing can be read, `problem` empty for a sound recording.
  async facts() {
    const told = await this.run(['info', '--json']);
    const info = jsonOf(told.out);
    if (info && info.sound) return { info, problem: '' };
    const checked = await this.run(['check']);
    return { info, problem: sentenceOf(checked.out, this.name) || sentenceOf(told.err, this.name) };
  }

  // The mended recording and what `rescue` says of it, and the same as values.
  async rescue() {
    const ending = this.name.slice(this.name.lastIndexOf('.') + 1);
    const mended = await this.make(['rescue', '--force'], ending);
    const said = await this.run(['rescue', '--force', '-o', `again.${ending}`]);
    const told = jsonOf((await this.run(['rescue', '--force', '--json', '-o', `again.${ending}`])).out);
    return { bytes: mended, told, sentence: sentenceOf(said.out, this.name).replace(/ -> [^>]*$/, '') };
  }
}

// Runs `work` with a visit to the program; `progress` is told how much of a large file is read, and then undefined.
function visit(source, work, { progress = () => {}, urgent, signal } = {}) {
  return programs.run(async (ask, retire) => {
    const bytes = await bytesOf(source, progress, signal);
    if (bytes.length > kLargeFile) progress(undefined);
    if (bytes.length > kRetiringSize) retire();
    const result = await work(new Visit(ask, nameOf(source.path), bytes));
    await ask({ files: [], words: ['--version'], wanted: [], keep: false });
    return result;
  }, { urgent, signal });
}

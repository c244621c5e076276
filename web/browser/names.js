// Names and other texts of files: what is shown of them, and what names become of them where something is saved.

// What must not reach a reader unseen: controls, marks that change the direction of writing, line and paragraph separators,
// and the byte-order mark. With these a name could pass for another one. The command has the same rule.
const kHarmful = /[\0-\x1f\x7f-\x9f\u061c\u200e\u200f\u2028-\u202e\u2066-\u2069\ufeff]/g;

// Halves of characters cannot be written as UTF-8, and become what the program makes of them.
const wholeCharacters = text => text.replace(/\p{Surrogate}/gu, '\ufffd');

// A text as the page shows it, and as the pages that the command makes show it.
const plainText = text => wholeCharacters(text).replace(kHarmful, ' ');

// A text as the command prints it.
const printedText = text => wholeCharacters(text).replace(kHarmful, '?');

const stemOf = path => path.replace(/\.(pnx|eli|kvo|inkml)$/i, '');
const endingOf = path => path.slice(stemOf(path).length);

// A path that every system can unpack, and that stays below the folder it is unpacked in.
function safePath(path) {
  return path.split('/').map(part => {
    const allowed = wholeCharacters(part).replace(kHarmful, '_').replace(/[\\:*?"<>|]/g, '_');
    const safe = allowed.replace(/[. ]+$/, end => '_'.repeat(end.length));
    return /^(con|prn|aux|nul|com\d|lpt\d)(\.|$)/i.test(safe) ? `_${safe}` : safe || '_';
  }).join('/');
}

// Some systems take names for the same that differ only in capitals or in how an accent is written.
const keyOf = name => name.normalize('NFC').toLowerCase();

// A name for the results of each recording, without their endings: recordings of one folder that differ only in their
// endings keep these.
function resultNames(paths) {
  const stems = paths.map(path => safePath(stemOf(path)));
  const uses = new Map();
  for (const stem of stems) uses.set(keyOf(stem), (uses.get(keyOf(stem)) || 0) + 1);
  return stems.map((stem, i) => uses.get(keyOf(stem)) > 1 ? safePath(paths[i]) : stem);
}

// `stem` + `ending`, with a number in between where that is taken.
function freeName(stem, ending, taken) {
  let name = stem + ending;
  for (let number = 2; taken.has(keyOf(name)); ++number) name = `${stem}-${number}${ending}`;
  taken.add(keyOf(name));
  return name;
}

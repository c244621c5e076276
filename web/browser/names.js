// Names of what is saved.

const stemOf = path => path.replace(/\.(pnx|eli|kvo|inkml)$/i, '');

// A path that every system can unpack, and that stays below the folder it is unpacked in.
function safePath(path) {
  return path.split('/').map(part => {
    const safe = part.replace(/[\u0000-\u001f\u007f\\:*?"<>|]/g, '_').replace(/[. ]+$/, end => '_'.repeat(end.length));
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

// What was dropped or chosen. A source is { path, open }: its name below the folder that was dropped or chosen, and a
// function that gives the file.

const kLargeFile = 4 * 2 ** 20;
const kLargestFile = 2 ** 30;

const nameOf = path => path.slice(path.lastIndexOf('/') + 1);

// As the command does, hidden files of folders are left out.
const isRecording = path => /\.(pnx|eli|kvo|inkml)$/i.test(path) && !/\/\./.test(path);

// Those of one folder stand together, in the order of their names: a browser finds them in any order.
function inOrder(sources) {
  const folderOf = ({ path }) => path.slice(0, path.indexOf('/') + 1);
  const folders = [...new Set(sources.map(folderOf))];
  return [...sources].sort((a, b) => folders.indexOf(folderOf(a)) - folders.indexOf(folderOf(b)) ||
    (folderOf(a) ? byText('path')(a, b) : 0));
}

function sourcesOfList(files) {
  return [...files].map(file => ({ path: file.webkitRelativePath || file.name, open: () => file }));
}

async function* sourcesInHandle(folder, path) {
  for await (const [name, child] of folder.entries()) {
    if (child.kind === 'directory') yield* sourcesInHandle(child, `${path}${name}/`);
    else yield { path: path + name, open: () => child.getFile() };
  }
}

async function* sourcesInEntry(folder, path) {
  const reader = folder.createReader();
  for (;;) {
    const children = await new Promise((resolve, reject) => reader.readEntries(resolve, reject));
    if (!children.length) return;
    for (const child of children) {
      if (child.isDirectory) yield* sourcesInEntry(child, `${path}${child.name}/`);
      else yield { path: path + child.name, open: () => new Promise((resolve, reject) => child.file(resolve, reject)) };
    }
  }
}

// Browsers differ in how they let a page read a folder, and in which of these ways work for a page opened from disk.
async function* sourcesInFolder({ entry, handle }) {
  const known = await handle;
  if (known && known.kind === 'directory') yield* sourcesInHandle(known, `${known.name}/`);
  else yield* sourcesInEntry(entry, `${entry.name}/`);
}

// The sources of a drop, one by one. All must be asked for before the first pause: later the browser has forgotten them.
async function* sourcesOfDrop(transfer) {
  const dropped = [...transfer.items].filter(item => item.kind === 'file').map(item => ({
    file: item.getAsFile(),
    entry: item.webkitGetAsEntry && item.webkitGetAsEntry(),
    handle: item.getAsFileSystemHandle && item.getAsFileSystemHandle().catch(() => undefined),
  }));
  for (const one of dropped) {
    if (one.entry && one.entry.isDirectory) yield* sourcesInFolder(one);
    else if (one.file) yield { path: one.file.name, open: () => one.file };
  }
}

// The bytes of a source, part by part; `progress` is told the share that is there, of large files alone.
async function bytesOf(source, progress, signal) {
  const partSize = 4 * 2 ** 20;
  try {
    const file = await source.open();
    if (file.size > kLargestFile) throw new Failure('the file is larger than 1 GB, which is too much for a page');
    const bytes = new Uint8Array(file.size);
    for (let at = 0; at < file.size; at += partSize) {
      if (signal && signal.aborted) throw new Cancelled();
      if (file.size > kLargeFile) progress(at / file.size);
      bytes.set(new Uint8Array(await file.slice(at, at + partSize).arrayBuffer()), at);
    }
    return bytes;
  } catch (error) {
    if (error instanceof Failure) throw error;
    if (error instanceof RangeError) throw new Failure('there is not enough memory for this file');
    throw new Failure('the file cannot be read; it may have been moved or changed since');
  }
}

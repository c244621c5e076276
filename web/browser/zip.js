// Writes a ZIP. Files are kept as blobs, which a browser may put on disk.

const kMostEntries = 65535;
const kLargestZip = 2 ** 32 - 1;

const crcTable = Uint32Array.from({ length: 256 }, (_, byte) => {
  let value = byte;
  for (let bit = 0; bit < 8; ++bit) value = value & 1 ? value >>> 1 ^ 0xedb88320 : value >>> 1;
  return value;
});

function crcOf(bytes) {
  let crc = 0xffffffff;
  for (const byte of bytes) crc = crc >>> 8 ^ crcTable[(crc ^ byte) & 255];
  return (crc ^ 0xffffffff) >>> 0;
}

// Deflated, where the browser can do that and it helps.
async function packed(bytes) {
  const whole = new Blob([bytes]);
  try {
    const stream = whole.stream().pipeThrough(new CompressionStream('deflate-raw'));
    const deflated = await new Response(stream).blob();
    return deflated.size < whole.size ? { method: 8, data: deflated } : { method: 0, data: whole };
  } catch {
    return { method: 0, data: whole };
  }
}

// Pairs of a size, two or four bytes, and a number, which is written with its lowest byte first.
function fields(...pairs) {
  const bytes = new DataView(new ArrayBuffer(pairs.reduce((sum, [size]) => sum + size, 0)));
  let at = 0;
  for (const [size, value] of pairs) {
    if (size === 2) bytes.setUint16(at, value, true); else bytes.setUint32(at, value, true);
    at += size;
  }
  return bytes.buffer;
}

class Zip {
  constructor(now = new Date()) {
    this.parts = [];
    this.entries = [];
    this.size = 0;
    this.time = now.getHours() << 11 | now.getMinutes() << 5 | now.getSeconds() >> 1;
    this.date = Math.max(0, now.getFullYear() - 1980) << 9 | now.getMonth() + 1 << 5 | now.getDate();
  }

  async add(path, bytes) {
    const name = new TextEncoder().encode(path);
    const { method, data } = await packed(bytes);
    // Version 2.0; the name is UTF-8.
    const common = [[2, 20], [2, 0x800], [2, method], [2, this.time], [2, this.date], [4, crcOf(bytes)], [4, data.size],
      [4, bytes.length], [2, name.length], [2, 0]];
    if (this.entries.length === kMostEntries || this.size + data.size + 2 * name.length + 100 > kLargestZip) {
      throw new Failure('this is more than one ZIP can hold; choose fewer recordings');
    }
    this.entries.push([fields([4, 0x02014b50], [2, 20], ...common, [2, 0], [2, 0], [2, 0], [4, 0], [4, this.size]), name]);
    this.push(fields([4, 0x04034b50], ...common), name, data);
  }

  push(...parts) {
    for (const part of parts) this.size += part.size === undefined ? part.byteLength : part.size;
    this.parts.push(...parts);
  }

  finish() {
    const begin = this.size;
    for (const entry of this.entries) this.push(...entry);
    const count = this.entries.length;
    this.push(fields([4, 0x06054b50], [2, 0], [2, 0], [2, count], [2, count], [4, this.size - begin], [4, begin], [2, 0]));
    if (this.size > kLargestZip) throw new Failure('this is more than one ZIP can hold; choose fewer recordings');
    return new Blob(this.parts, { type: 'application/zip' });
  }
}

'use strict';
// Paints an SVG of the program, in a worker. A message is { id, svg, width, height?, paper?, type }: UTF-8, the largest width
// and, if need be, height in pixels, the colour behind it, and the type of the picture; the answer is
// { id, picture, width, height } or { id, problem }.

const largestSide = 16384;
const kUnpaintable = 'this browser cannot paint a picture of this size';

const attributesOf = tag => Object.fromEntries([...tag.matchAll(/([\w:-]+)="([^"]*)"/g)].map(([, name, value]) => [name, value]));

// Attributes hold no "<" nor ">": the program writes both as entities.
const tagsOf = svg => svg.matchAll(/<(svg|rect|g|path)\b([^>]*)>/g);

function sizeOf(svg, most) {
  const [, , width, height] = /viewBox="(\S+) (\S+) (\S+) (\S+)"/.exec(svg).slice(1).map(Number);
  const scale = Math.min(most.width / width, most.height ? most.height / height : Infinity);
  return { scale, width: Math.max(1, Math.round(width * scale)), height: Math.max(1, Math.round(height * scale)) };
}

function paint(context, svg, scale) {
  let layer = {};
  for (const [, name, words] of tagsOf(svg)) {
    if (name === 'svg') continue;
    if (name === 'g') {
      layer = attributesOf(words);
      continue;
    }
    const look = { ...layer, ...attributesOf(words) };
    if (name === 'rect') {
      context.fillStyle = look.fill;
      context.fillRect(0, 0, context.canvas.width, context.canvas.height);
      continue;
    }
    if (look.style === 'display:none') continue;
    const shape = new Path2D(look.d);
    context.setTransform(scale, 0, 0, scale, 0, 0);
    if (look.stroke) {
      context.lineWidth = Number(look['stroke-width']);
      context.lineCap = look['stroke-linecap'];
      context.lineJoin = look['stroke-linejoin'];
      context.strokeStyle = look.stroke;
      context.stroke(shape);
    } else {
      context.fillStyle = look.fill;
      context.fill(shape);
    }
  }
}

// A canvas that is too large for a browser stays empty without a word.
function isPaintable(context) {
  const { width, height } = context.canvas;
  if (width * height < 2 ** 22) return true;
  context.fillRect(width - 1, height - 1, 1, 1);
  const [, , , opacity] = context.getImageData(width - 1, height - 1, 1, 1).data;
  context.clearRect(width - 1, height - 1, 1, 1);
  return opacity === 255;
}

async function pictureOf(message) {
  const svg = new TextDecoder().decode(message.svg);
  const { scale, width, height } = sizeOf(svg, message);
  if (width > largestSide || height > largestSide) {
    return { problem: `a picture of ${width} × ${height} pixels is too large; ${largestSide} is the most on either side` };
  }
  const canvas = new OffscreenCanvas(width, height);
  const context = canvas.getContext('2d');
  if (!isPaintable(context)) return { problem: kUnpaintable };
  if (message.paper) {
    context.fillStyle = message.paper;
    context.fillRect(0, 0, width, height);
  }
  paint(context, svg, scale);
  return { picture: await canvas.convertToBlob({ type: message.type }), width, height };
}

addEventListener('message', async ({ data }) => {
  const answer = await pictureOf(data).catch(() => ({ problem: kUnpaintable }));
  postMessage({ ...answer, id: data.id });
});

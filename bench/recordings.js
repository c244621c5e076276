// Large recordings to measure with.
'use strict';

// Wavy strokes in rows of ten; 3000 of 100 points are drawn in 640 seconds. Gives a point of them.
function pointOf(stroke, point) {
  return {
    x: 50 + stroke % 10 * 200 + point * 2,
    y: Math.round(50 + Math.floor(stroke / 10) % 300 * 9 + 12 * Math.sin(point / 6 + stroke)),
    pressure: Math.round(500 + 400 * Math.sin(point / 15)),
    time: Math.round(stroke * 213 + point * 1.5 + 1),
  };
}

const numbers = count => Array.from({ length: count }, (_, i) => i);

function inkDocument(strokeCount, pointCount) {
  const strokes = numbers(strokeCount).map(stroke => {
    const points = numbers(pointCount).map(i => pointOf(stroke, i)).map(({ x, y, pressure, time }) => `${x} ${y} 0 ${pressure} 0 0 ${time}`);
    return `<trace contextRef="#c">${points.join(',')}</trace>`;
  });
  return `<ink><tracegroup id="layer0">${strokes.join('\n')}</tracegroup></ink>`;
}

// A place and a pressure for each point, in packets of six bytes.
function penRecording(strokeCount, pointCount) {
  const descriptor = [1, 6, 0, 2, 0, 0], penUp = [241, 3, 0], penDown = [241, 3, 1];
  const bytes = Buffer.alloc(descriptor.length + strokeCount * (penUp.length + penDown.length + 12 * pointCount));
  let end = 0;
  const add = packet => { for (const byte of packet) bytes[end++] = byte; };
  add(descriptor);
  for (let stroke = 0; stroke < strokeCount; ++stroke) {
    add(penUp);
    add(penDown);
    for (let i = 0; i < pointCount; ++i) {
      const { x, y, pressure } = pointOf(stroke, i);
      add([97, 6, x >> 8, x & 255, y >> 8, y & 255]);
      add([100, 6, 6, 0, pressure >> 8, pressure & 255]);
    }
  }
  return bytes;
}

module.exports = { inkDocument, penRecording };

'use strict';
// The paths of the SVG, and the lines and times that belong to them.

// A path of the SVG: what it paints, in which colour, and the layer that it belongs to.
function pathsOf(svg) {
  const isLine = group => group.getAttribute('fill') === 'none';
  const paths = [];
  const layers = [...svg.querySelectorAll('g')].map(group => ({
    group, name: group.getAttribute('inkscape:label'), isShown: group.style.display !== 'none', strokes: 0,
  }));
  for (const layer of layers) {
    const attribute = isLine(layer.group) ? 'stroke' : 'fill';
    for (const element of layer.group.children) {
      paths.push({
        shape: element.getAttribute('d'),
        color: element.getAttribute(attribute) || layer.group.getAttribute(attribute),
        isLine: isLine(layer.group),
        layer,
      });
    }
  }
  return { paths, layers };
}

// The strokes in the order of the replay. `xs`, `ys` and `times` are those of all points; a stroke has those from
// `first` to before `end`. Lengths are in units of the SVG, times in milliseconds from the start of the replay.
function strokesOf(text, paths) {
  const binary = atob(text);
  let at = 0;
  function number() {
    let value = 0;
    for (let factor = 1; ; factor *= 128) {
      const byte = binary.charCodeAt(at++);
      if (byte < 128) return value + byte * factor;
      value += (byte - 128) * factor;
    }
  }
  function withSign() {
    const value = number();
    return value % 2 ? -(value + 1) / 2 : value / 2;
  }

  const xs = [], ys = [], times = [], strokes = [];
  let x = 0, y = 0, time = 0, next = 0;
  while (at < binary.length) {
    const place = next + withSign();
    const path = paths[place];
    next = place + 1;
    const width = number() / 10;
    const count = number();
    const first = xs.length;
    for (let i = 0; i < count; ++i) {
      xs.push((x += withSign()) / 10);
      ys.push((y += withSign()) / 10);
      times.push(time += number());
    }
    ++path.layer.strokes;
    strokes.push({ path, width, first, end: xs.length, start: times[first], stop: time });
  }
  return { strokes, xs, ys, times, duration: time };
}

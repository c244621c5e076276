// The facts about a recording, from what `penwick info --json` says, as rows of a table.

const millimetres = value => `${value.toFixed(1)} mm`;
const rangeOf = range => `${range[0]} to ${range[1]}`;

function kindOf(info) {
  if (info.translation) return 'InkML of another program';
  return info.kind === 'pen' ? 'pen recording' : 'ink document';
}

function placeRows({ drawing }) {
  if (!drawing) return [['Drawing', 'none']];
  return [
    ['Drawing', `${drawing.width.toFixed(1)} × ${millimetres(drawing.height)}`],
    ['Place', `${millimetres(drawing.left)} from the left edge of the sheet, ${millimetres(drawing.top)} from its top`],
  ];
}

function layerRows({ layers }) {
  return layers.map(({ name, strokes, points }, i) =>
    [name || `Layer ${i + 1}`, `${counted(strokes, 'stroke')}, ${counted(points, 'point')}`]);
}

function strokeRows({ strokes, singlePoints, points, longestStroke, inkLength }) {
  return [
    ['Strokes', singlePoints ? `${strokes}, ${singlePoints} of a single point` : String(strokes)],
    ['Points', strokes > 1 ? `${points}, ${longestStroke} in the longest stroke` : String(points)],
    ['Ink', `${inkLength.toFixed(2)} m`],
  ];
}

function penRows({ pressure, tiltX, tiltY }) {
  return [
    ['Pressure', pressure ? rangeOf(pressure) : 'none'],
    ['Tilt', tiltX ? `x ${rangeOf(tiltX)}, y ${rangeOf(tiltY)}` : 'none'],
  ];
}

function timeRows({ kind, date, clock, translation }) {
  const rows = kind === 'pen' ? [['Date', date ? `${date.replace('T', ' ')}, by the date bytes` : 'none']] : [];
  if (!clock) return [...rows, ['Duration', 'unknown, the points have no times']];
  const unit = translation ? 'ms' : 'counts of the pen’s clock';
  return [...rows, ['Pen down', `${clock.penDown} ${unit}`], ['Duration', `${clock.whole} ${unit}`]];
}

// Pairs of a name and a text.
function factRows({ info, problem }) {
  if (!info) return [];
  return [
    ['Kind', kindOf(info)],
    ['Sound', problem ? 'no' : 'yes'],
    ...(info.translation ? info.translation.remarks.map(remark => ['Translated', remark]) : []),
    ...placeRows(info),
    ['Layers', String(info.layers.length)],
    ...layerRows(info),
    ...strokeRows(info),
    ...penRows(info),
    ...timeRows(info),
  ];
}

// What is saved of a recording, and how it gets to the person.

const saveForms = {
  svg: { ending: '.svg', type: 'image/svg+xml', bytes: at => at.svg() },
  inkml: { ending: '.inkml', type: 'application/inkml+xml', bytes: at => at.inkml() },
  png: { ending: '.png', type: 'image/png', bytes: async (at, look) => bytesOfBlob((await painted(await at.svg(), look)).picture) },
};

const bytesOfBlob = async blob => new Uint8Array(await blob.arrayBuffer());

// A picture of an SVG: `look` has the largest width and height and the colour of the paper.
async function painted(svg, look, { type = 'image/png', signal } = {}) {
  const { picture, problem, width, height } =
    await painters.run(ask => ask({ svg, type, ...look }, [svg.buffer]), { signal });
  if (problem) throw new Failure(problem);
  return { picture, width, height };
}

function download(blob, name) {
  const link = document.createElement('a');
  link.href = URL.createObjectURL(blob);
  link.download = name;
  link.click();
  setTimeout(() => URL.revokeObjectURL(link.href), 60000);
}

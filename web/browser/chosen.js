// Everything chosen as one ZIP.

const zipForm = byId('zip').querySelector('form');
const [zipBar, zipSaid, zipLost] = ['progress', 'p[role=status]', 'ul'].map(part => zipForm.querySelector(part));
const zipAdded = byId('zip-added');
let zipping;

function openZip() {
  const count = cards.filter(card => card.box.checked).length;
  byId('zip-title').textContent = `Save ${counted(count, 'recording')} as one ZIP`;
  zipSaid.textContent = '';
  zipAdded.textContent = '';
  zipLost.replaceChildren();
  byId('zip').showModal();
}

// What is dropped while the window is open comes onto the sheet behind it.
function tellAdded(count) {
  if (!byId('zip').open) return;
  zipAdded.textContent = count ? `Added to the page, but not to this ZIP: ${counted(count, 'recording')}` : 'There was no recording in it.';
}

// What is asked for, as pairs of a form and its look.
function chosenForms() {
  const { width, paper } = zipForm.elements;
  const forms = ['svg', 'png', 'inkml'].filter(name => zipForm.elements[name].checked).map(name => saveForms[name]);
  return { forms, look: { width: width.valueAsNumber, paper: paper.value }, withRecording: zipForm.elements.recording.checked };
}

// The files of one recording: endings, bytes, and the reasons why others are not there.
async function filesOf(card, { forms, look, withRecording }, signal) {
  const files = [], lost = [];
  const attempt = async (ending, make) => {
    try {
      files.push({ ending, bytes: await make() });
    } catch (failure) {
      if (!(failure instanceof Refusal)) throw failure;
      lost.push(`${ending.slice(1)}: ${failure.message}`);
    }
  };
  await visit(card.source, async at => {
    if (withRecording) {
      const ending = endingOf(card.source.path);
      const { problem } = await at.facts();
      if (problem) await attempt(`.rescued${ending}`, async () => (await at.rescue()).bytes);
      else await attempt(ending, () => bytesOf(card.source, () => {}));
    }
    for (const form of forms) await attempt(form.ending, () => form.bytes(at, look));
  }, { signal });
  return { files, lost };
}

async function zipChosen(chosen, wanted, signal) {
  const zip = new Zip();
  const names = resultNames(chosen.map(card => card.source.path));
  const taken = new Set();
  let done = 0, turn = Promise.resolve();
  const tellLost = (card, reason) => zipLost.append(element('li', { textContent: `${card.name}: ${reason}` }));
  const addAll = async (card, files, place) => {
    for (const { ending, bytes } of files) await zip.add(freeName(names[place], ending, taken), bytes);
  };
  await Promise.all(chosen.map(async (card, place) => {
    try {
      const { files, lost } = await filesOf(card, wanted, signal);
      for (const reason of lost) tellLost(card, reason);
      await (turn = turn.then(() => addAll(card, files, place)));
    } catch (failure) {
      if (!(failure instanceof Failure) || signal.aborted) throw failure;
      tellLost(card, failure.message);
    }
    zipBar.value = ++done / chosen.length;
    zipSaid.textContent = `${done} of ${chosen.length}`;
  }));
  return { blob: zip.finish(), count: zip.entries.length };
}

async function saveZip() {
  const wanted = chosenForms();
  if (!wanted.forms.length && !wanted.withRecording) {
    zipSaid.textContent = 'Choose at least one kind of file.';
    return;
  }
  if (!zipForm.reportValidity()) return;
  zipping = new AbortController();
  zipLost.replaceChildren();
  byId('zip-save').disabled = true;
  byId('zip-close').textContent = 'Cancel';
  zipBar.hidden = false;
  zipBar.value = 0;
  try {
    const { blob, count } = await zipChosen(cards.filter(card => card.box.checked), wanted, zipping.signal);
    if (count) download(blob, 'drawings.zip');
    zipSaid.textContent = count ? `Saved as drawings.zip: ${counted(count, 'file')}` : 'Nothing could be saved.';
    if (zipLost.children.length) zipSaid.textContent += '. Not saved:';
  } catch (failure) {
    zipSaid.textContent = failure instanceof Cancelled ? 'Cancelled: nothing was saved.' : failure.message;
  }
  zipping = undefined;
  zipBar.hidden = true;
  byId('zip-save').disabled = false;
  byId('zip-close').textContent = 'Close';
}

byId('save-chosen').addEventListener('click', openZip);
byId('zip-save').addEventListener('click', event => {
  event.preventDefault();
  saveZip();
});
byId('zip-close').addEventListener('click', event => {
  if (!zipping) return;
  event.preventDefault();
  zipping.abort();
});
byId('zip').addEventListener('cancel', event => {
  if (!zipping) return;
  event.preventDefault();
  zipping.abort();
});

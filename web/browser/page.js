// What the page begins with: the pools of workers, the ways to add recordings.

// A module with an exception in it, which browsers cannot read that are too old for the program.
const kNeededOfWasm = [0, 97, 115, 109, 1, 0, 0, 0, 1, 4, 1, 96, 0, 0, 3, 2, 1, 0, 10, 8, 1, 6, 0, 6, 64, 25, 11, 11];

function isTooOld() {
  try {
    return !WebAssembly.validate(new Uint8Array(kNeededOfWasm)) || !new OffscreenCanvas(1, 1).getContext('2d');
  } catch {
    return true;
  }
}

function sampleFile() {
  const sample = byId('sample');
  const bytes = Uint8Array.from(atob(sample.textContent.trim()), character => character.charCodeAt(0));
  return new File([bytes], sample.dataset.name);
}

const kInk = '<ink><tracegroup id="layer0"><trace contextRef="#c">1 1 0 512 0 0 1,9 9 0 512 0 0 9</trace></tracegroup></ink>';

// Draws the sample and a stroke of ink where nobody sees it. A browser compiles what is called, so that the first recording
// of somebody's own is drawn sooner.
async function warmUp() {
  for (const source of sourcesOfList([sampleFile(), new File([kInk], 'stroke.kvo')])) await new Card(source).look();
}

function letChoose(button, input) {
  button.addEventListener('click', () => input.click());
  input.addEventListener('change', () => {
    take(sourcesOfList(input.files));
    // So that the same files can be chosen again.
    input.value = '';
  });
}

function letDrop() {
  const show = on => document.documentElement.classList.toggle('dropping', on);
  addEventListener('dragover', event => {
    if (![...event.dataTransfer.types].includes('Files')) return;
    event.preventDefault();
    event.dataTransfer.dropEffect = 'copy';
    show(true);
  });
  // From the replay, which then gives way.
  addEventListener('message', ({ data }) => {
    if (data === 'files') show(true);
  });
  addEventListener('dragleave', event => show(Boolean(event.relatedTarget)));
  addEventListener('drop', event => {
    event.preventDefault();
    show(false);
    if (shown) history.back();
    take(sourcesOfDrop(event.dataTransfer));
  });
}

const most = Math.max(1, Math.min(navigator.hardwareConcurrency || 2, 4));
const seconds = Number(document.documentElement.dataset.secondsForAFile);
// What is done at the beginning, where nobody sees it.
let warmingUp;
const programs = new Pool(byId('program').textContent, most, seconds);
const painters = new Pool(byId('painter').textContent, Math.min(most, 2), seconds);

if (isTooOld()) {
  byId('too-old').hidden = false;
  byId('sheet').hidden = true;
} else {
  letChoose(byId('choose-files'), byId('files'));
  letChoose(byId('choose-folder'), byId('folder'));
  byId('choose-folder').hidden = !('webkitdirectory' in byId('folder'));
  byId('try').addEventListener('click', () => take(sourcesOfList([sampleFile()])));
  letDrop();
  warmingUp = warmUp();
}
// The looks of the sheet, which shows its controls where there are scripts.
document.documentElement.classList.add('script');

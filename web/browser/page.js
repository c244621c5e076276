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

function takeSample() {
  const sample = byId('sample');
  const bytes = Uint8Array.from(atob(sample.textContent.trim()), character => character.charCodeAt(0));
  const file = new File([bytes], sample.dataset.name);
  take([{ path: file.name, open: () => file }]);
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
const programs = new Pool(byId('program').textContent, most, seconds);
const painters = new Pool(byId('painter').textContent, Math.min(most, 2), seconds);

if (isTooOld()) {
  byId('too-old').hidden = false;
  byId('sheet').hidden = true;
} else {
  programs.warmUp();
  painters.warmUp();
  letChoose(byId('choose-files'), byId('files'));
  letChoose(byId('choose-folder'), byId('folder'));
  byId('choose-folder').hidden = !('webkitdirectory' in byId('folder'));
  byId('try').addEventListener('click', takeSample);
  letDrop();
}
// The looks of the sheet, which shows its controls where there are scripts.
document.documentElement.classList.add('script');

// One drawing: its replay, its facts, what can be done about damage, and what can be saved.

const kLargePage = 48 * 2 ** 20;

// The card that is shown, and what ends the work for it.
let shown;

function openDrawing(card) {
  if (shown) {
    leaveDrawing();
  } else {
    history.pushState({}, '');
  }
  shown = { card, controller: new AbortController(), scrolled: scrollY };
  byId('sheet').hidden = true;
  byId('drawing').hidden = false;
  document.title = nameOf(card.name);
  byId('name').textContent = card.name;
  scrollTo(0, 0);
  byId('name').focus();
  byId('damage').hidden = true;
  byId('saved').textContent = '';
  byId('facts').replaceChildren();
  byId('told').hidden = true;
  showOrigin(card.origin);
  replay(shown);
}

// Ends what is shown, but does not yet show anything else.
function leaveDrawing() {
  shown.controller.abort();
  byId('replay').querySelectorAll('iframe, :scope > button').forEach(one => one.remove());
}

function closeDrawing() {
  if (!shown) return;
  const { card, scrolled } = shown;
  leaveDrawing();
  shown = undefined;
  byId('drawing').hidden = true;
  byId('sheet').hidden = false;
  document.title = byId('sheet').querySelector('h1').textContent;
  scrollTo(0, scrolled);
  card.title.focus({ preventScroll: true });
}

// ---- the replay

function wait(words, { share, canCancel = false, isBad = false } = {}) {
  const [text, bar, cancel] = byId('wait').children;
  byId('wait').hidden = !words;
  text.textContent = words;
  text.className = isBad ? 'bad' : '';
  bar.hidden = cancel.hidden = !canCancel;
  if (share === undefined) bar.removeAttribute('value'); else bar.value = share;
}

async function replay(view) {
  const { card, controller: { signal } } = view;
  const isShown = () => shown === view;
  wait('The drawing is being made.');
  try {
    await visit(card.source, async at => {
      const page = await at.page().catch(failure => {
        if (!(failure instanceof Refusal)) throw failure;
        if (isShown()) wait(failure.message, { isBad: true });
      });
      if (page && isShown()) showPage(page, card);
      const facts = await at.facts();
      if (isShown()) showFacts(facts, card);
    }, {
      urgent: true, signal, progress: share => isShown() && wait('The drawing is being made.', { share, canCancel: true }),
    });
  } catch (failure) {
    if (isShown()) wait(failure.message, { isBad: true });
  }
}

function showPage(page, card) {
  if (page.length > kLargePage) {
    const show = element('button', { type: 'button', textContent: 'Show it all the same' });
    wait(`This drawing is very large, ${Math.round(page.length / 2 ** 20)} MB: showing it may take a minute.`);
    show.addEventListener('click', () => {
      show.remove();
      addFrame(page, card);
    });
    byId('replay').append(show);
  } else {
    addFrame(page, card);
  }
}

// Files that are dragged onto the replay are for the page around it.
const kGiveWay = `<script>
addEventListener('dragover', event => {
  if (event.dataTransfer.types.includes('Files')) parent.postMessage('files', '*');
});
<\/script>`;

function addFrame(page, card) {
  wait('');
  const srcdoc = new TextDecoder().decode(page) + kGiveWay;
  const frame = element('iframe', { title: `The drawing of ${card.name}`, srcdoc });
  frame.setAttribute('sandbox', 'allow-scripts allow-downloads');
  frame.setAttribute('allow', 'fullscreen');
  byId('replay').append(frame);
}

// ---- facts and damage

function showFacts(facts, card) {
  const rows = factRows(facts).map(([name, text]) => element('tr', {},
    element('th', { scope: 'row', textContent: name }), element('td', { textContent: text })));
  byId('facts').replaceChildren(...rows);
  byId('told').hidden = !rows.length;
  byId('damage').hidden = !facts.problem;
  byId('damage').firstElementChild.textContent = facts.problem;
  showSaves(card, facts.problem);
}

function showSaves(card, problem) {
  byId('save-recording').hidden = !problem && !card.origin;
  byId('save-recording').textContent = card.origin ? 'Recording' : 'Mended recording';
}

const stretchOf = ({ begin, end, reason }) => `bytes ${begin} to ${end - 1}: ${reason}`;

function showOrigin(origin) {
  byId('origin').hidden = !origin;
  byId('rescued').hidden = !origin || !origin.details.length;
  showSaves({ origin }, '');
  if (!origin) return;
  byId('origin').textContent = origin.words;
  byId('rescued').querySelector('summary').textContent = 'What was lost and put right';
  byId('rescued').querySelector('ul').replaceChildren(...origin.details.map(words => element('li', { textContent: words })));
}

// Makes a recording of what is left of the one that is shown, and shows it.
async function rescue() {
  const { card } = shown;
  if (card.rescued) return openDrawing(card.rescued);
  await act(card, async () => {
    const { bytes, told, sentence } = await visit(card.source, at => at.rescue(), { urgent: true });
    const ending = endingOf(card.source.path);
    const path = `${stemOf(card.source.path)}.rescued${ending}`;
    const file = new File([bytes], nameOf(path));
    [card.rescued] = addCards([{ path, open: () => file }], {
      words: `Saved from ${card.name}: ${sentence}`,
      details: told ? [...told.leftOut.map(stretchOf), ...told.repairs] : [],
    });
    lookAt([card.rescued]);
    if (shown && shown.card === card) openDrawing(card.rescued);
    return '';
  });
}

// ---- saving

// Does something that a button asked for and says what came of it: `work` gives the sentence.
async function act(card, work) {
  const buttons = [...byId('drawing').querySelectorAll('aside button')].filter(button => !button.disabled);
  const focused = document.activeElement;
  for (const button of buttons) button.disabled = true;
  byId('saved').textContent = 'One moment';
  const said = await work().catch(failure => failure.message);
  for (const button of buttons) button.disabled = false;
  if (document.activeElement === document.body && !focused.closest('[hidden]')) focused.focus();
  if (!shown || shown.card === card) byId('saved').textContent = said;
}

function save(form, look) {
  const { card } = shown;
  return act(card, async () => {
    const bytes = await visit(card.source, at => form.bytes(at, look), { urgent: true });
    const name = safePath(stemOf(nameOf(card.source.path))) + form.ending;
    download(new Blob([bytes], { type: form.type }), name);
    return `Saved as ${name}`;
  });
}

function savePng() {
  const width = byId('png-width');
  if (width.reportValidity()) save(saveForms.png, { width: width.valueAsNumber, paper: byId('png-paper').value });
}

function saveRecording() {
  const { card } = shown;
  const ending = endingOf(card.source.path);
  if (card.origin) return save({ bytes: () => bytesOf(card.source, () => {}), ending, type: '' });
  return save({ bytes: async at => (await at.rescue()).bytes, ending: `.rescued${ending}`, type: '' });
}

byId('back').addEventListener('click', () => history.back());
addEventListener('popstate', closeDrawing);
addEventListener('keydown', event => {
  if (event.key === 'Escape' && shown) history.back();
});
byId('wait').querySelector('button').addEventListener('click', () => shown.controller.abort());
byId('rescue').addEventListener('click', rescue);
byId('save-svg').addEventListener('click', () => save(saveForms.svg));
byId('save-inkml').addEventListener('click', () => save(saveForms.inkml));
byId('save-png').addEventListener('click', savePng);
byId('save-recording').addEventListener('click', saveRecording);

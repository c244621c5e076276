// The sheet: all cards, and how far they are.

const cards = [];
const list = byId('cards');
let looking = 0;
let lastSaid = 0;

// Tells those who listen, not more often than they can hear unless it matters.
function say(words, isImportant) {
  if (!isImportant && performance.now() - lastSaid < 10000) return;
  lastSaid = performance.now();
  byId('said').textContent = words;
}

function showCount() {
  const words = showFound(cards, byId('search').value);
  const rest = cards.filter(card => card.isWaiting).length;
  byId('count').textContent = rest ? `${words}, ${rest} not yet drawn` : words;
  showStop(rest, cards.filter(card => card.isCancelled).length);
}

// One button stops the drawing of `rest` recordings, and then draws those that were `cancelled`.
function showStop(rest, cancelled) {
  const stop = byId('stop');
  stop.textContent = rest ? 'Stop' : `Draw the cancelled ${cancelled === 1 ? 'one' : cancelled}`;
  if (!rest && !cancelled && document.activeElement === stop) byId('count').focus();
  stop.hidden = !rest && !cancelled;
}

function stopOrGoOn() {
  const waiting = cards.filter(card => card.isWaiting);
  for (const card of waiting) card.cancel();
  if (!waiting.length) lookAt(cards.filter(card => card.isCancelled));
}

function showChosen() {
  const count = cards.filter(card => card.box.checked).length;
  byId('save-chosen').disabled = count === 0;
  byId('save-chosen').textContent = count ? `Save ${count} as ZIP…` : 'Save as ZIP…';
  byId('choose-all').checked = count > 0 && count === cards.length;
  byId('choose-all').indeterminate = count > 0 && count < cards.length;
}

// Keeps the focus, which moving an element takes from it.
function arrange() {
  const focused = document.activeElement;
  sortCards(list, cards, byId('order').value);
  if (list.contains(focused)) focused.focus({ preventScroll: true });
}

async function lookAt(some) {
  looking += some.length;
  showCount();
  await Promise.all(some.map(async card => {
    await card.look();
    --looking;
    showCountSoon();
  }));
  if (looking) return;
  if (byId('order').value !== 'place') arrange();
  showCount();
  const bad = cards.filter(card => !card.bad).length;
  const cancelled = cards.filter(card => card.isCancelled).length;
  say(`${counted(cards.length, 'recording')}, ${bad || 'none'} with a problem${cancelled ? `, ${cancelled} cancelled` : ''}`, true);
}

let isCountDue = false;

function showCountSoon() {
  if (isCountDue) return;
  isCountDue = true;
  requestAnimationFrame(() => {
    isCountDue = false;
    showCount();
    say(byId('count').textContent);
  });
}

function showOthers(paths) {
  if (!paths.length) return;
  const others = byId('others');
  const names = others.querySelector('ul');
  names.append(...paths.map(path => element('li', { textContent: plainText(path) })));
  const count = names.children.length;
  const words = count === 1 ? '1 file is not a recording' : `${count} files are not recordings`;
  others.querySelector('summary').textContent = words;
  others.hidden = false;
  say(words, true);
}

function addCards(sources, origin) {
  const added = sources.map(source => new Card(source, cards.push(undefined) - 1, origin));
  for (const card of added) cards[card.place] = card;
  list.append(...added.map(card => card.item));
  byId('controls').hidden = cards.length === 0;
  document.documentElement.classList.toggle('filled', cards.length > 0);
  showChosen();
  return added;
}

// Takes what was dropped or chosen, card by card as it is found.
async function take(sources) {
  const others = [];
  const recordings = [];
  byId('note').textContent = '';
  try {
    for await (const source of sources) (isRecording(source.path) ? recordings : others).push(source);
  } catch {
    byId('note').textContent = 'A folder that was dropped cannot be read here. Use the button “Choose a folder”.';
  }
  const added = addCards(inOrder(recordings));
  showOthers(others.map(source => source.path));
  tellAdded(added.length);
  if (added.length) {
    say(`${counted(added.length, 'recording')} being drawn`, true);
    await lookAt(added);
  } else if (!others.length && !byId('note').textContent) {
    byId('note').textContent = 'There is no file in it.';
  }
}

byId('search').addEventListener('input', showCount);
byId('stop').addEventListener('click', stopOrGoOn);
byId('order').addEventListener('change', arrange);
byId('choose-all').addEventListener('change', event => {
  for (const card of cards) if (!card.item.hidden) card.box.checked = event.target.checked;
  showChosen();
});
list.addEventListener('change', showChosen);

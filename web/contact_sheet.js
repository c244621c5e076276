'use strict';
const list = document.getElementById('cards');
const cards = [...list.children].map((item, place) => ({
  item, place, words: item.textContent.toLowerCase(), name: item.dataset.name, date: item.dataset.date,
  strokes: Number(item.dataset.strokes), bad: item.dataset.bad === '1' ? 0 : 1,
}));
const search = document.getElementById('search');
const order = document.getElementById('order');
const count = document.getElementById('count');
const byText = key => (a, b) => a[key].localeCompare(b[key], undefined, { numeric: true });
const orders = {
  place: (a, b) => a.place - b.place,
  name: byText('name'),
  newest: (a, b) => b.date.localeCompare(a.date),
  strokes: (a, b) => b.strokes - a.strokes,
  problems: (a, b) => a.bad - b.bad,
};

function find() {
  const words = search.value.toLowerCase().split(/\s+/);
  let shown = 0;
  for (const card of cards) {
    card.item.hidden = !words.every(word => card.words.includes(word));
    if (!card.item.hidden) ++shown;
  }
  count.textContent = shown === cards.length ? `${shown} recordings` : `${shown} of ${cards.length} recordings`;
}

function sort() {
  const sorted = [...cards].sort((a, b) => orders[order.value](a, b) || a.place - b.place);
  list.append(...sorted.map(card => card.item));
}

search.addEventListener('input', find);
order.addEventListener('change', sort);
document.documentElement.classList.add('script');

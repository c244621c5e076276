'use strict';
// How the cards of a contact sheet are found and sorted. A card has its `item` on the page, its `place` in the folder,
// its `words` in small letters, its `name`, `date` and number of `strokes`, and `bad`: 0 where there is a problem, else 1.
const byText = key => (a, b) => a[key].localeCompare(b[key], undefined, { numeric: true });
const orders = {
  place: (a, b) => a.place - b.place,
  name: byText('name'),
  newest: (a, b) => b.date.localeCompare(a.date),
  strokes: (a, b) => b.strokes - a.strokes,
  problems: (a, b) => a.bad - b.bad,
};

const counted = (count, thing) => `${count} ${thing}${count === 1 ? '' : 's'}`;

// Shows the cards that have every word of `search`; gives how many they are, in words.
function showFound(cards, search) {
  const words = search.toLowerCase().split(/\s+/);
  let shown = 0;
  for (const card of cards) {
    card.item.hidden = !words.every(word => card.words.includes(word));
    if (!card.item.hidden) ++shown;
  }
  const all = counted(cards.length, 'recording');
  return shown === cards.length ? all : `${shown} of ${all}`;
}

function sortCards(list, cards, order) {
  const sorted = [...cards].sort((a, b) => orders[order](a, b) || a.place - b.place);
  list.append(...sorted.map(card => card.item));
}

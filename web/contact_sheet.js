const list = document.getElementById('cards');
const cards = [...list.children].map((item, place) => ({
  item, place, words: item.textContent.toLowerCase(), name: item.dataset.name, date: item.dataset.date,
  strokes: Number(item.dataset.strokes), bad: item.dataset.bad === '1' ? 0 : 1,
}));
const search = document.getElementById('search');
const order = document.getElementById('order');
search.addEventListener('input', () => {
  document.getElementById('count').textContent = showFound(cards, search.value);
});
order.addEventListener('change', () => sortCards(list, cards, order.value));
document.documentElement.classList.add('script');

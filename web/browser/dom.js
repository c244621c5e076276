// The elements of the page. Texts from files are set as text alone.

const byId = id => document.getElementById(id);

function element(name, properties = {}, ...children) {
  const made = Object.assign(document.createElement(name), properties);
  made.append(...children);
  return made;
}

// One recording on the sheet: its picture and its facts, or what became of it.

const kPictureSide = 420;

const dateOf = info => info && info.date ? info.date.slice(0, 16).replace('T', ' ') : '';

// The same words as below the pictures of `penwick sheet`.
function factLines({ info, problem }) {
  const lines = [];
  if (dateOf(info)) lines.push(dateOf(info));
  if (info && info.drawing) {
    lines.push(`${Math.round(info.drawing.width)} × ${Math.round(info.drawing.height)} mm, ` +
      `${counted(info.layers.length, 'layer')}, ${counted(info.strokes, 'stroke')}`);
  }
  return [...lines, problem || 'sound'];
}

class Card {
  // `origin` says where a recording comes from that was made on this page.
  constructor(source, place, origin) {
    Object.assign(this, { source, place, origin, name: plainText(source.path), date: '', strokes: 0, bad: 1 });
    this.isWaiting = true;
    this.box = element('input', { type: 'checkbox' });
    this.box.setAttribute('aria-label', `Choose ${this.name}`);
    this.paper = element('div', { className: 'paper' });
    this.title = element('button', { type: 'button', className: 'title', textContent: this.name });
    this.lines = element('div');
    this.item = element('li', {}, this.box, this.paper, element('div', { className: 'facts' }, this.title, this.lines));
    this.item.addEventListener('click', event => {
      if (!event.target.closest('button:not(.title), input')) openDrawing(this);
    });
    this.tell('waiting');
  }

  tell(...lines) {
    this.lines.replaceChildren(...lines.map(line => element('p', { textContent: line })));
    this.words = [this.name, ...lines].join(' ').toLowerCase();
  }

  // Looks at the recording in its turn, unless it is cancelled; never fails.
  async look() {
    this.controller = new AbortController();
    const { signal } = this.controller;
    this.isWaiting = true;
    this.isCancelled = false;
    this.bar = undefined;
    this.paper.replaceChildren();
    this.tell('waiting');
    let picture;
    try {
      const facts = await visit(this.source, async at => {
        this.tell('being drawn');
        const svg = await this.svgOf(at);
        // Painted while the program goes on.
        if (svg) {
          picture = this.setPicture(svg, signal);
          // What became of it is seen below.
          picture.catch(() => {});
        }
        return at.facts();
      }, { signal, progress: share => this.show(share) });
      this.setFacts(facts);
      if (picture) await picture; else this.paper.replaceChildren('no picture');
    } catch (failure) {
      await Promise.allSettled([picture]);
      this.fail(failure);
    }
    this.isWaiting = false;
  }

  cancel() {
    this.controller.abort();
  }

  // Undefined where the program says no: why it does is among the facts.
  async svgOf(at) {
    try {
      // At this size the hairlines of a recording without pressure could not be seen.
      return await at.svg('--pressure', '0.5');
    } catch (failure) {
      if (failure instanceof Refusal) return undefined;
      throw failure;
    }
  }

  setFacts(facts) {
    const lines = factLines(facts);
    this.tell(...lines);
    this.date = dateOf(facts.info);
    this.strokes = facts.info ? facts.info.strokes : 0;
    this.bad = facts.problem ? 0 : 1;
    if (facts.problem) this.lines.lastChild.className = 'bad';
  }

  async setPicture(svg, signal) {
    const side = { width: kPictureSide, height: kPictureSide, paper: 'white' };
    try {
      const { picture, width, height } = await painted(svg, side, { type: 'image/webp', signal });
      this.paper.replaceChildren(element('img', {
        alt: `the drawing of ${this.name}`, width: Math.ceil(width / 2), height: Math.ceil(height / 2), decoding: 'async',
        src: URL.createObjectURL(picture),
      }));
    } catch (failure) {
      if (failure instanceof Cancelled) throw failure;
      this.paper.replaceChildren(`no picture: ${failure.message}`);
    }
  }

  // How far a large recording is, with a button that gives it up.
  show(share) {
    if (!this.bar) {
      this.bar = element('progress', { max: 1 });
      this.bar.setAttribute('aria-label', `Progress of ${this.name}`);
      const cancel = element('button', { type: 'button', textContent: 'Cancel' });
      cancel.setAttribute('aria-label', `Cancel ${this.name}`);
      cancel.addEventListener('click', () => this.cancel());
      this.paper.replaceChildren(this.bar, cancel);
    }
    if (share === undefined) this.bar.removeAttribute('value'); else this.bar.value = share;
  }

  fail(failure) {
    this.isCancelled = failure instanceof Cancelled;
    this.tell(failure instanceof Failure ? failure.message : 'something went wrong in the page');
    if (!this.isCancelled) {
      this.bad = 0;
      this.lines.lastChild.className = 'bad';
    }
    const again = element('button', { type: 'button', textContent: 'Try again' });
    again.setAttribute('aria-label', `Try ${this.name} again`);
    again.addEventListener('click', () => {
      this.title.focus();
      lookAt([this]);
    });
    this.paper.replaceChildren(again);
    if (!(failure instanceof Failure)) console.error(failure);
  }
}

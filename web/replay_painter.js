// Paints the strokes. Finished ones are filled once on a canvas that is never cleared while the picture only grows; the
// one that is being drawn has a canvas of its own above. Where the picture changes otherwise, it is painted anew beside
// it, if need be over several frames, and then replaces it.
class Painter {
  constructor(box, drawing, paper, color) {
    Object.assign(this, { drawing, paper, color });
    const sheet = () => {
      const canvas = document.createElement('canvas');
      return { canvas, context: canvas.getContext('2d'), count: 0, version: -1 };
    };
    this.front = sheet();
    this.back = sheet();
    this.growing = sheet();
    box.append(this.front.canvas, this.growing.canvas);
    this.version = 0;
    this.copies = [];
    this.weight = drawing.strokes.reduce((sum, stroke) => sum + stroke.path.shape.length, 0);
  }

  // The size in CSS pixels, and how many pixels of the screen each has.
  resize(width, height, density) {
    Object.assign(this, { width, height, density });
    for (const { canvas } of [this.back, this.growing]) {
      canvas.width = Math.round(width * density);
      canvas.height = Math.round(height * density);
      canvas.style.width = `${width}px`;
      canvas.style.height = `${height}px`;
    }
    this.change();
  }

  // What is painted is no longer right.
  change() {
    ++this.version;
    this.copies = [];
    const bytes = this.back.canvas.width * this.back.canvas.height * 4;
    const most = Math.max(1, Math.min(16, Math.floor(1e8 / Math.max(bytes, 1))));
    // A drawing that is painted in no time needs no copies of how far it was.
    this.stretch = this.weight < 2e5 ? Infinity : this.weight / most;
  }

  // `view`: where the top left corner of the paper lies, in CSS pixels, and how many of them a unit has.
  look(view) {
    this.view = view;
    this.change();
    this.place();
  }

  // Until it is painted anew, the old picture is moved to where the new one will be.
  place() {
    const old = this.front.view;
    if (!old) return;
    const scale = this.view.scale / old.scale;
    const isThere = this.front.version === this.version;
    this.front.canvas.style.transform = isThere ? '' :
      `translate(${this.view.x - old.x * scale}px, ${this.view.y - old.y * scale}px) scale(${scale})`;
  }

  // Paints the first `count` strokes, for so many milliseconds; true where they are there.
  paint(count, budget) {
    const sheet = this.front.version === this.version && this.front.count <= count ? this.front : this.begin(count);
    const end = performance.now() + budget;
    this.prepare(sheet.context);
    while (sheet.count < count) {
      this.fill(sheet.context, this.drawing.strokes[sheet.count++]);
      this.keepCopy(sheet);
      if (performance.now() > end) break;
    }
    if (sheet.count < count) return false;
    if (sheet === this.back) this.show();
    return true;
  }

  // Begins a picture on the back sheet, or goes on with the one that is there.
  begin(count) {
    const back = this.back;
    if (back.version === this.version && back.count <= count) return back;
    const context = back.context;
    context.setTransform(1, 0, 0, 1, 0, 0);
    context.globalCompositeOperation = 'copy';
    const copy = this.copies.filter(old => old.count <= count).pop();
    if (copy) {
      context.drawImage(copy.canvas, 0, 0);
    } else {
      context.fillStyle = 'transparent';
      context.fillRect(0, 0, back.canvas.width, back.canvas.height);
      this.prepare(context);
      context.fillStyle = this.color;
      context.fillRect(0, 0, this.paper.width, this.paper.height);
    }
    back.count = copy ? copy.count : 0;
    back.weight = copy ? copy.weight : 0;
    back.version = this.version;
    return back;
  }

  prepare(context) {
    const { x, y, scale } = this.view;
    const density = this.density;
    context.setTransform(scale * density, 0, 0, scale * density, x * density, y * density);
    context.globalCompositeOperation = 'source-over';
    context.lineCap = context.lineJoin = 'round';
  }

  fill(context, stroke) {
    const path = stroke.path;
    if (!path.layer.isShown) return;
    path.outline ||= new Path2D(path.shape);
    if (path.isLine) {
      context.strokeStyle = path.color;
      context.lineWidth = 1;
      context.stroke(path.outline);
    } else {
      context.fillStyle = path.color;
      context.fill(path.outline);
    }
  }

  keepCopy(sheet) {
    sheet.weight += this.drawing.strokes[sheet.count - 1].path.shape.length;
    const last = this.copies.length ? this.copies[this.copies.length - 1].weight : 0;
    if (sheet.weight < last + this.stretch) return;
    const canvas = document.createElement('canvas');
    canvas.width = sheet.canvas.width;
    canvas.height = sheet.canvas.height;
    canvas.getContext('2d').drawImage(sheet.canvas, 0, 0);
    this.copies.push({ canvas, count: sheet.count, weight: sheet.weight });
  }

  show() {
    const { front, back } = this;
    if (front.canvas.width !== back.canvas.width || front.canvas.height !== back.canvas.height) {
      front.canvas.width = back.canvas.width;
      front.canvas.height = back.canvas.height;
    }
    front.canvas.style.width = back.canvas.style.width;
    front.canvas.style.height = back.canvas.style.height;
    front.context.setTransform(1, 0, 0, 1, 0, 0);
    front.context.globalCompositeOperation = 'copy';
    front.context.drawImage(back.canvas, 0, 0);
    Object.assign(front, { count: back.count, weight: back.weight, version: back.version, view: this.view });
    back.version = -1;
    this.place();
  }

  // Draws as much of a stroke as there is at this time; nothing where there is none.
  grow(stroke, time) {
    const { canvas, context } = this.growing;
    const last = this.grown;
    const goesOn = last && stroke === last.stroke && this.version === last.version && time >= last.time;
    if (!goesOn && last) {
      context.setTransform(1, 0, 0, 1, 0, 0);
      context.clearRect(0, 0, canvas.width, canvas.height);
      this.grown = null;
    }
    if (!stroke || !stroke.path.layer.isShown) return;
    const from = goesOn ? last.point : stroke.first;
    const path = stroke.path;
    context.save();
    this.prepare(context);
    path.outline ||= new Path2D(path.shape);
    if (!path.isLine) context.clip(path.outline);
    context.strokeStyle = path.color;
    context.lineWidth = path.isLine ? 1 : stroke.width;
    const point = this.trace(context, stroke, from, time);
    context.stroke();
    context.restore();
    this.grown = { stroke, time, point, version: this.version };
  }

  // The line from a point to where the pen is at this time; gives the last point before that.
  trace(context, stroke, from, time) {
    const { xs, ys, times } = this.drawing;
    context.beginPath();
    context.moveTo(xs[from], ys[from]);
    let point = from;
    while (point + 1 < stroke.end && times[point + 1] <= time) {
      ++point;
      context.lineTo(xs[point], ys[point]);
    }
    const next = point + 1;
    if (next < stroke.end) {
      const share = (time - times[point]) / (times[next] - times[point]);
      context.lineTo(xs[point] + (xs[next] - xs[point]) * share, ys[point] + (ys[next] - ys[point]) * share);
    } else {
      context.lineTo(xs[point], ys[point]);
    }
    return point;
  }
}

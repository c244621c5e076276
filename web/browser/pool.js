// Workers that do one job after the other. A job that crashes, takes too long or is cancelled costs its worker, which is
// ended and made anew, and nothing else.

// What went wrong, as a sentence for the person at the page.
class Failure extends Error {}

class Cancelled extends Failure {
  constructor() { super('cancelled'); }
}

// A worker that answers each message { id, ... } by one { id, ... }.
class AnsweringWorker {
  constructor(url) {
    this.worker = new Worker(url);
    this.waiting = new Map();
    this.lastId = 0;
    this.worker.addEventListener('message', ({ data }) => {
      const { resolve, reject } = this.waiting.get(data.id);
      this.waiting.delete(data.id);
      if (data.crashed) reject(new Failure(data.crashed)); else resolve(data);
    });
    this.worker.addEventListener('error', event => {
      event.preventDefault();
      this.fail(new Failure('the program stopped unexpectedly at this file'));
    });
  }

  ask(message, transferred = []) {
    if (this.failure) return Promise.reject(this.failure);
    const id = ++this.lastId;
    return new Promise((resolve, reject) => {
      this.waiting.set(id, { resolve, reject });
      this.worker.postMessage({ ...message, id }, transferred);
    });
  }

  fail(failure) {
    this.failure = failure;
    for (const { reject } of this.waiting.values()) reject(failure);
    this.waiting.clear();
  }

  end(failure) {
    this.worker.terminate();
    this.fail(failure);
  }
}

class Pool {
  constructor(script, most, seconds) {
    this.url = URL.createObjectURL(new Blob([script], { type: 'text/javascript' }));
    this.most = most;
    this.seconds = seconds;
    this.idle = [];
    this.busy = 0;
    this.queue = [];
  }

  // Runs `work(ask, retire)` with a worker of its own: `ask` sends a message and gives the answer; after `retire` the
  // worker is not used again. The time counts from the first message. Something urgent comes before the rest, and has one
  // more worker to itself.
  run(work, { urgent = false, signal } = {}) {
    return new Promise((resolve, reject) => {
      const job = { work, urgent, signal, resolve, reject };
      if (signal && signal.aborted) return reject(new Cancelled());
      if (signal) signal.addEventListener('abort', () => this.forget(job));
      if (urgent) this.queue.unshift(job); else this.queue.push(job);
      this.next();
    });
  }

  forget(job) {
    const place = this.queue.indexOf(job);
    if (place < 0) return;
    this.queue.splice(place, 1);
    job.reject(new Cancelled());
  }

  next() {
    while (this.queue.length && this.busy < this.most + Number(this.queue[0].urgent)) this.begin(this.queue.shift());
  }

  async begin(job) {
    ++this.busy;
    this.idle = this.idle.filter(worker => !worker.failure);
    const worker = this.idle.pop() || new AnsweringWorker(this.url);
    let clock, isRetired = false;
    const cancel = () => worker.end(new Cancelled());
    const ask = (message, transferred) => {
      clock = clock || setTimeout(() => worker.end(new Failure(
        `it took more than ${counted(this.seconds, 'second')} and was given up`)), this.seconds * 1000);
      return worker.ask(message, transferred);
    };
    if (job.signal) job.signal.addEventListener('abort', cancel);
    try {
      job.resolve(await job.work(ask, () => { isRetired = true; }));
    } catch (failure) {
      isRetired = true;
      job.reject(failure);
    }
    clearTimeout(clock);
    if (job.signal) job.signal.removeEventListener('abort', cancel);
    if (isRetired) worker.end(new Cancelled()); else this.idle.push(worker);
    --this.busy;
    this.next();
  }
}

// Edits go one request at a time, in their order; those made while one is under way go together in the next. Each
// request has a number, and only the answer to the newest is shown.

export class EditQueue {
    #waiting = [];
    #running = false;
    #asked = false;
    #newest = 0;
    #to;

    // to: send(items, sequence) -> promise of an answer; show(answer, isNewest); fail(error, items); busy(whether)
    constructor(to) {
        this.#to = to;
    }

    // Items are edits, or a single {step: "undo"} or {step: "redo"}. Without any, a result is asked for.
    add(...items) {
        ++this.#newest;
        this.#waiting.push(...items);
        this.#asked = true;
        this.#to.busy(true);
        this.#run();
    }

    get open() {
        return this.#running || this.#asked;
    }

    // When nothing is under way any more.
    async settled() {
        while (this.open) await new Promise((done) => setTimeout(done, 5));
    }

    // A step goes alone, edits go together.
    #next() {
        const step = this.#waiting.findIndex((item) => item.step);
        return this.#waiting.splice(0, step === 0 ? 1 : step < 0 ? this.#waiting.length : step);
    }

    async #run() {
        if (this.#running) return;
        this.#running = true;
        while (this.#asked) {
            const items = this.#next(), sequence = this.#newest;
            this.#asked = this.#waiting.length > 0;
            try {
                const answer = await this.#to.send(items, sequence);
                this.#to.show(answer, !this.#asked && sequence === this.#newest);
            } catch (error) {
                const lost = [...items, ...this.#waiting.splice(0)];
                this.#asked = false;
                this.#to.fail(error, lost);
            }
        }
        this.#running = false;
        this.#to.busy(false);
    }
}

// A typed text is a draft until Enter, until the field is left, or until a pause where it is a number. Escape brings
// back what was there when the field was entered.

import { isNumber, readTyped } from './values.js';

const PAUSE = 300; // ms

export class Draft {
    #input;
    #key;
    #commit; // (typed) => void
    #say;    // (reason or '') => void
    #commaIsPoint;
    #committed = '';
    #written = ''; // the same as the file has it: ".5" is 0.5 there
    #entered = '';
    #timer = 0;

    constructor(input, key, { commit, say, commaIsPoint }) {
        this.#input = input;
        this.#key = key;
        this.#commit = commit;
        this.#say = say;
        this.#commaIsPoint = commaIsPoint;
        input.addEventListener('focus', () => {
            this.#entered = this.#committed;
            input.select();
        });
        input.addEventListener('input', () => this.#typed());
        input.addEventListener('keydown', (event) => this.#pressed(event));
        input.addEventListener('blur', () => {
            this.take();
            if (!this.pending) this.#settle(this.#written);
        });
    }

    get pending() {
        return this.#input.value !== this.#committed;
    }

    // What the file has. A draft that is being typed stays.
    show(text) {
        const here = document.activeElement === this.#input, typing = here && this.pending;
        const same = here && isNumber(text) && Number(text) === Number(this.#committed);
        this.#written = text;
        if (typing) this.#committed = text;
        else if (!same) this.#settle(text);
    }

    #settle(text) {
        this.#committed = text;
        if (this.#input.value !== text) this.#input.value = text;
        this.#settled();
    }

    // Takes the draft, if it says something.
    take() {
        clearTimeout(this.#timer);
        if (!this.pending) {
            this.#settled();
            return;
        }
        const read = this.#read();
        if (read.reason) this.#say(read.reason);
        else this.#accept();
    }

    #read() {
        return readTyped(this.#key, this.#input.value, this.#commaIsPoint);
    }

    #settled() {
        this.#say('');
        this.#input.classList.remove('draft');
    }

    #accept() {
        this.#written = this.#committed = this.#input.value;
        this.#settled();
        this.#commit(this.#input.value.trim());
    }

    #typed() {
        clearTimeout(this.#timer);
        this.#input.classList.toggle('draft', this.pending);
        const read = this.#read();
        this.#say(read.state === 'wrong' ? read.reason : '');
        if (this.pending && read.plain) this.#timer = setTimeout(() => this.#accept(), PAUSE);
    }

    #pressed(event) {
        if (event.key === 'Enter') {
            event.preventDefault();
            this.take();
        } else if (event.key === 'Escape') {
            event.preventDefault();
            this.#input.value = this.#entered;
            this.take();
            this.#input.select();
        }
    }
}

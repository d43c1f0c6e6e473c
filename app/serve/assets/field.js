// One field of a form: label, entry, unit, where the value comes from, and what is wrong with it.

import { Draft } from './draft.js';
import { make, setText } from './dom.js';
import { fieldText, isNumber, isNumeric, splitUnit } from './values.js';
import { choiceName, choicesOf } from './vocabulary.js';

const isMissing = (reason) => reason.startsWith('missing');

// actions: commit(key, change), focused(key), pick(key). A change is what an edit says of its path: {typed}, {value} or
// {remove}.
export class Field {
    #actions;
    #draft = null;
    #units;
    #own = '';
    #faults = [];

    constructor(id, key, { units, checks, commaIsPoint, actions }) {
        this.key = key;
        this.#actions = actions;
        this.#units = units;
        this.about = make('p', { class: 'about', id: `${id}-about` });
        this.message = make('p', { class: 'message', id: `${id}-message`, role: 'alert' });
        const named = key.symbol && key.symbol !== key.label;
        const label = make(key.quantity === 'list of checks' ? 'span' : 'label', { for: id, title: key.meaning, class: 'label' },
            key.label, ...(named ? ['\u00a0', make('b', { class: 'symbol' }, key.symbol)] : []));
        const entry = make('div', { class: 'entry' });
        this.#build(entry, { id, 'aria-describedby': `${id}-about ${id}-message`, title: key.meaning }, checks, commaIsPoint);
        if (key.picker || key.link) {
            entry.append(make('button', {
                type: 'button', class: 'pick', 'aria-haspopup': 'dialog', title: 'Choose from a list',
                'aria-label': `Choose ${key.label.toLowerCase()} from a list`, onclick: () => actions.pick(key),
            }, '…'));
        }
        this.row = make('div', { class: 'field', 'data-key': key.name }, label, entry, this.about, this.message);
        this.row.addEventListener('focusin', () => actions.focused(key));
    }

    #build(entry, described, checks, commaIsPoint) {
        const key = this.key;
        if (key.quantity === 'choice' || key.quantity === 'flag') {
            this.input = make('select', described);
            this.input.addEventListener('change', () => this.#chosen());
            entry.append(this.input);
        } else if (key.quantity === 'list of checks') {
            this.#buildBoxes(entry, described, checks);
        } else {
            const numeric = isNumeric(key);
            this.input = make('input', {
                ...described, type: 'text', autocomplete: 'off', spellcheck: 'false', inputmode: numeric ? 'decimal' : null,
                class: numeric ? 'number' : null, maxlength: !numeric && key.width ? key.width : null,
            });
            this.#draft = new Draft(this.input, key, {
                commaIsPoint, commit: (typed) => this.#typed(typed), say: (reason) => this.#say(reason),
            });
            entry.append(this.input);
            this.#buildUnit(entry);
        }
    }

    #buildUnit(entry) {
        if (this.#units.length < 2) {
            if (this.#units.length > 0) entry.append(make('span', { class: 'unit' }, this.#units[0]));
            return;
        }
        this.unit = make('select', { class: 'unit', 'aria-label': `Unit of ${this.key.label.toLowerCase()}` },
            ...this.#units.map((unit) => make('option', { value: unit }, unit)));
        // The same number in another unit.
        this.unit.addEventListener('change', () => {
            const text = this.input.value.trim();
            if (isNumber(text) && !this.#draft.pending) this.#typed(text);
        });
        entry.append(this.unit);
    }

    #buildBoxes(entry, described, checks) {
        this.boxes = checks.map((check) => {
            const box = make('input', { type: 'checkbox', value: check.id });
            box.addEventListener('change', () => {
                const chosen = this.boxes.filter((other) => other.checked).map((other) => other.value);
                this.#actions.commit(this.key, chosen.length > 0 ? { value: chosen } : { remove: true });
            });
            return box;
        });
        this.input = make('div', { ...described, role: 'group', 'aria-label': this.key.label, class: 'boxes' },
            ...this.boxes.map((box, i) => make('label', {}, box, ` ${checks[i].label}`)));
        entry.append(this.input);
    }

    #chosen() {
        const text = this.input.value;
        const value = this.key.quantity === 'flag' ? text === 'yes' : text;
        this.#actions.commit(this.key, text === '' ? { remove: true } : { value });
    }

    #typed(text) {
        const other = this.unit && !this.unit.hidden && this.unit.value !== this.#units[0];
        this.#actions.commit(this.key, text === '' ? { remove: true }
            : { typed: other && isNumber(text) ? `${text} ${this.unit.value}` : text });
    }

    #say(reason) {
        this.#own = reason;
        this.#showMessage();
    }

    #showMessage() {
        const text = [this.#own, ...this.#faults].filter(Boolean).join(' ');
        setText(this.message, text);
        this.row.classList.toggle('wrong', text !== '');
        if (text !== '') this.input.setAttribute('aria-invalid', 'true');
        else this.input.removeAttribute('aria-invalid');
    }

    // given: what the component has in the file, or undefined; used: what it was calculated with, or undefined; shared:
    // {text, from} of [vessel]; unused: why it is not read, or ''.
    update({ given, used, shared, unused, faults }) {
        // What is missing is asked for; what is there and wrong has its message.
        this.needed = !given && faults.length > 0 && faults.every(isMissing);
        this.#faults = this.needed ? [] : faults;
        this.wrong = this.#faults.length > 0;
        for (const [name, on] of Object.entries({ unused: unused !== '', given: Boolean(given), needed: this.needed }))
            this.row.classList.toggle(name, on);
        setText(this.about, this.#aboutWords(given, used, shared, unused));
        this.#showMessage();
        const standing = unused !== '' ? '' : used ? this.#usedText(used) : shared?.text ?? '';
        if (this.boxes) this.#showBoxes(given);
        else if (this.input.localName === 'select') this.#showChoice(given, standing, used, shared);
        else this.#showText(given, standing);
    }

    // A key without a default is nought where nobody gives it: that is none.
    #usedText(used) {
        const none = used.from === 'default' && !this.key.default && isNumeric(this.key) && Number(used.shown.replace(',', '.')) === 0;
        return none ? 'none' : used.shown;
    }

    #aboutWords(given, used, shared, unused) {
        if (unused !== '') return `Not used: ${unused}`;
        if (this.needed) return 'Required';
        if (!used) return !given && shared ? shared.from : '';
        const liquid = used.from.startsWith('file, ') ? used.from.slice('file, '.length) : '';
        const amount = `${used.shown}${used.unit ? ` ${used.unit}` : ''}`;
        if (given) {
            const other = isNumeric(this.key) && (typeof given.value === 'string' || liquid !== '');
            return other ? `= ${amount}${liquid ? `, ${liquid}` : ''}` : '';
        }
        const from = used.from === 'file' || liquid ? shared?.from ?? 'from the file'
            : used.from === 'default' ? (this.key.default && used.shown ? 'default' : '') : `from ${used.from}`;
        return liquid ? `${from}, ${liquid}` : from;
    }

    #showChoice(given, standing, used, shared) {
        const flag = this.key.quantity === 'flag';
        const names = flag ? ['yes', 'no'] : choicesOf(this.key).map(({ name }) => name);
        const fallback = standing || (this.key.required ? '' : this.#defaultText());
        const empty = fallback === '' ? (this.key.required ? 'choose …' : '–')
            : !shared && (!used || used.from === 'default') ? `${fallback} (default)` : fallback;
        const text = given === undefined ? '' : flag ? fieldText(given)
            : choiceName(this.key, given.value) ?? fieldText(given);
        // What the file has and the list has not is shown as it is, its fault beside it.
        const options = text === '' || names.includes(text) ? names : [...names, text];
        const wanted = [empty, ...options].join('\n');
        if (this.input.dataset.listed !== wanted) {
            this.input.dataset.listed = wanted;
            this.input.replaceChildren(make('option', { value: '' }, empty),
                ...options.map((name) => make('option', { value: name }, name)));
        }
        if (this.input.value !== text) this.input.value = text;
        this.input.classList.toggle('standing', text === '');
    }

    #defaultText() {
        const text = this.key.default?.US ?? '';
        if (this.key.quantity === 'flag') return { true: 'yes', false: 'no' }[text] ?? text;
        return choiceName(this.key, text) ?? text;
    }

    #showBoxes(given) {
        const chosen = given === undefined ? [] : [given.value].flat();
        for (const box of this.boxes) box.checked = chosen.includes(box.value);
    }

    #showText(given, standing) {
        if (this.input.placeholder !== standing) this.input.placeholder = standing;
        const split = given && splitUnit(given.value, this.#units);
        this.#draft.show(split ? split.number : given ? fieldText(given) : '');
        if (!this.unit) return;
        // A text that has a unit of its own has no use for another.
        this.unit.hidden = typeof given?.value === 'string' && !split;
        if (given && document.activeElement !== this.unit) this.unit.value = split ? split.unit : this.#units[0];
    }

    take() {
        this.#draft?.take();
    }
    focus() {
        (this.boxes?.[0] ?? this.input).focus();
    }
}

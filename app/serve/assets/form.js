// The form of a component: the fields of its kind by sections. It is built when another component is chosen, and
// changed in place after each answer, so that focus and drafts stay.

import { Field } from './field.js';
import { make, setText } from './dom.js';
import { holds, numberOf } from './vocabulary.js';

// Worth showing at once although neither required nor with a symbol.
const SHOWN = new Set(['description', 'code', 'T', 'E', 'P_external', 'external', 'elevation', 'MDMT', 'curve']);
// Sections that begin closed unless something of them is given or missing.
const CLOSED = new Set(['Loads', 'Blind flange', 'Attached shell', 'Checks', 'Place in the vessel', 'Material files',
    'Openings', 'Heat treatment, exemptions', 'Impact tests']);
const NOT_READ = 'not read: ';

const opened = new Map(); // kind/section: whether the user opened or closed it

export class Form {
    #root;
    #help;
    #actions;
    #fields = new Map();
    #sections = [];
    #showUnused = false;
    #view = null;

    // actions: edit(path, change), pick(key), focused(key or null)
    constructor(root, help, actions) {
        this.#root = root;
        this.#help = help;
        this.#actions = actions;
        root.addEventListener('focusout', (event) => {
            if (!root.contains(event.relatedTarget)) this.#focused(null);
        });
    }

    // view: id (of what is shown: another one is built anew), path (what edits begin with), kind, given, inputs (or
    // null), shared(name) -> {text, value, from} or undefined, faults (name -> reasons), units(key), commaIsPoint
    show(view) {
        const built = view.id !== this.#view?.id;
        // Another form of the same component: who types goes on where he was.
        const inside = built && view.path === this.#view?.path ? document.activeElement.closest?.('.field')?.dataset.key : undefined;
        if (built) this.#build(view);
        this.#view = view;
        this.#update();
        if (inside) this.#fields.get(inside)?.focus();
    }

    clear(words) {
        this.#view = null;
        this.#fields.clear();
        this.#root.replaceChildren(make('p', { class: 'empty' }, words));
        setText(this.#help, '');
    }

    // What is being typed is taken, before something else happens.
    take() {
        for (const field of this.#fields.values()) field.take();
    }

    reveal(name) {
        const field = this.#fields.get(name);
        if (!field) return false;
        const section = this.#sections.find((one) => one.fields.includes(field));
        section.box.open = true;
        if (field.row.hidden) this.#setMore(section, true);
        if (field.row.hidden) this.#setUnused(true);
        field.focus();
        field.row.scrollIntoView({ block: 'nearest' });
        return true;
    }

    mark(names) {
        for (const [name, field] of this.#fields) field.row.classList.toggle('marked', names.includes(name));
    }

    isRead(name) {
        const used = this.#view?.inputs?.[name];
        return used ? used.read : true;
    }

    #build(view) {
        this.#fields.clear();
        this.#sections = [];
        this.unusedBox = make('input', { type: 'checkbox' });
        this.unusedBox.checked = this.#showUnused;
        this.unusedBox.addEventListener('change', () => this.#setUnused(this.unusedBox.checked));
        this.unusedLabel = make('span', {});
        const bySection = new Map();
        for (const key of view.kind.keys) {
            if (!bySection.has(key.section)) bySection.set(key.section, []);
            bySection.get(key.section).push(key);
        }
        this.unusedRow = make('p', { class: 'unused-choice' }, make('label', {}, this.unusedBox, ' ', this.unusedLabel));
        this.#root.replaceChildren(...inOrder(bySection).map(([title, keys]) => this.#buildSection(view, title, keys)),
            this.unusedRow);
        this.#root.scrollTop = 0;
    }

    #buildSection(view, title, keys) {
        // What a catalogue fills comes first: it fills the others.
        const ordered = [...keys.filter(({ picker }) => picker), ...keys.filter(({ picker }) => !picker)];
        const fields = ordered.map((key) => this.#buildField(view, key));
        const count = make('span', { class: 'count' });
        const box = make('details', { class: 'section' }, make('summary', {}, make('h3', {}, title), count));
        const more = make('button', { type: 'button', class: 'more', 'aria-expanded': 'false' });
        const section = { box, fields, more, count, showMore: false, name: `${view.kind.name}/${title}`, given: false };
        more.addEventListener('click', () => this.#setMore(section, !section.showMore));
        box.append(...fields.map((field) => field.row), more);
        box.open = opened.get(section.name) ?? !CLOSED.has(title);
        box.firstChild.addEventListener('click', () => opened.set(section.name, !box.open));
        this.#sections.push(section);
        return box;
    }

    #buildField(view, key) {
        const waivable = (view.kind.checks ?? []).filter((check) => check.waivable);
        const field = new Field(`field-${key.name.replace(/[^\w]+/g, '-')}`, key, {
            units: view.units(key),
            commaIsPoint: view.commaIsPoint,
            checks: waivable.filter(({ id }, i) => waivable.findIndex((other) => other.id === id) === i),
            actions: {
                commit: (of, change) => this.#actions.edit(`${this.#view.path}${of.name}`, change),
                focused: (of) => this.#focused(of),
                pick: (of) => this.#actions.pick(of),
            },
        });
        this.#fields.set(key.name, field);
        return field;
    }

    #setMore(section, show) {
        section.showMore = show;
        this.#update();
    }
    #setUnused(show) {
        this.unusedBox.checked = this.#showUnused = show;
        this.#update();
    }

    #focused(key) {
        this.#actions.focused(key);
        if (!key) return;
        const [unit] = this.#view.units(key);
        const words = [`${key.name}: ${key.meaning}${unit ? ` (${unit})` : ''}`];
        if (key.required?.words) words.push(`required where ${key.required.words}`);
        setText(this.#help, words.join('; '));
    }

    // What a condition asks of other keys: their own value, else what was calculated with, else that of the vessel.
    #number(name) {
        const { kind, given, inputs, shared } = this.#view;
        const key = kind.byName.get(name);
        if (!key) return undefined;
        if (given[name]) return numberOf(key, given[name].value);
        // A flag that goes with its keys: true where one of them is given.
        if (kind.keys.some((member) => member.group === name && given[member.name])) return 1;
        return numberOf(key, inputs?.[name]?.shown ?? shared(name)?.value ?? key.default?.US);
    }

    #isGiven(name) {
        const { given, inputs, shared } = this.#view;
        return Boolean(given[name] || shared(name)) ||
            (inputs?.[name] !== undefined && inputs[name].from !== 'default' && inputs[name].read);
    }

    #holds(condition) {
        return holds(condition, (name) => this.#number(name), (name) => this.#isGiven(name));
    }

    #whyUnused(key, used) {
        if (used?.from.startsWith(NOT_READ)) return used.from.slice(NOT_READ.length);
        if (used || this.#holds(key.read) !== false) return '';
        return `read only where ${key.read.words}`;
    }

    #update() {
        const { given, inputs, shared, faults } = this.#view;
        let unusedCount = 0;
        for (const section of this.#sections) {
            const minor = [], hidden = new Set();
            let visible = 0, missing = 0, wrong = 0, standing = 0;
            for (const field of section.fields) {
                const { key } = field;
                const used = inputs?.[key.name];
                const unused = this.#whyUnused(key, used);
                const reasons = faults.get(key.name) ?? [];
                field.update({
                    given: given[key.name], used, shared: shared(key.name), unused, faults: reasons,
                });
                const stays = given[key.name] || reasons.length > 0 || field.row.contains(document.activeElement);
                standing += given[key.name] ? 1 : 0;
                missing += field.needed ? 1 : 0;
                wrong += field.wrong ? 1 : 0;
                const asleep = unused !== '' && !stays;
                unusedCount += asleep ? 1 : 0;
                if (asleep && !this.#showUnused) {
                    hidden.add(field);
                    continue;
                }
                ++visible;
                if (!stays && !field.needed && isMinor(key)) minor.push(field);
            }
            this.#fold(section, minor, visible, hidden);
            setText(section.count, wrong > 0 ? `${wrong} wrong` : missing > 0 ? `${missing} required` : '');
            section.count.classList.toggle('bad', wrong > 0);
            const calls = missing > 0 || wrong > 0 || (standing > 0 && !section.given);
            if (calls && !opened.has(section.name)) section.box.open = true;
            section.given = standing > 0;
        }
        setText(this.unusedLabel, `Show fields that are not used here (${unusedCount})`);
        this.unusedRow.hidden = unusedCount === 0;
    }

    // Fields that few need are behind a button, unless the section has no others.
    #fold(section, minor, visible, hidden) {
        const folds = minor.length > 1 && minor.length < visible;
        if (folds && !section.showMore) minor.forEach((field) => hidden.add(field));
        // What stays as it is is not touched: each change is laid out again.
        for (const field of section.fields) {
            if (field.row.hidden !== hidden.has(field)) field.row.hidden = hidden.has(field);
        }
        section.more.hidden = !folds;
        setText(section.more, section.showMore ? 'Fewer fields' : `${minor.length} more fields`);
        section.more.setAttribute('aria-expanded', String(section.showMore));
        section.box.hidden = visible === 0;
    }
}

// A standard flange fills the sections after it.
function inOrder(bySection) {
    const sections = [...bySection], at = sections.findIndex(([title]) => title === 'Standard flange');
    if (at < 0) return sections;
    const [standard] = sections.splice(at, 1);
    sections.splice(2, 0, standard);
    return sections;
}

const isMinor = (key) => !key.required && !key.symbol && !key.picker && !key.link && !SHOWN.has(key.name);

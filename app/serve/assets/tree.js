// The components of the vessel, each with its verdict.

import { make, markOf } from './dom.js';

const TITLES = { shell: 'Shells and heads', flange: 'Flanges', external: 'External pressure', mdmt: 'Metal temperatures' };
const SINGULAR = { shell: 'Shell or head', flange: 'Flange', external: 'External pressure', mdmt: 'Metal temperature' };

export class Tree {
    #root;
    #adding;
    #actions;
    #shown = '';

    // actions: choose(path), add(kind), remove(component)
    constructor(root, adding, actions) {
        this.#root = root;
        this.#adding = adding;
        this.#actions = actions;
        root.addEventListener('keydown', (event) => this.#pressed(event));
    }

    offer(kinds) {
        this.#adding.replaceChildren(...kinds.map(({ name }) => make('button', {
            type: 'button', onclick: () => this.#actions.add(name),
        }, `+ ${SINGULAR[name] ?? name}`)));
    }

    // rows: {path, kind, name, verdict, ratio, implied, wrong}; `stale`: the verdicts are of the values before
    show(rows, chosen, stale) {
        const next = JSON.stringify([rows, chosen]);
        this.#root.classList.toggle('stale', stale);
        if (next === this.#shown) return;
        this.#shown = next;
        const focused = this.#root.contains(document.activeElement) ? document.activeElement.dataset.path : undefined;
        const parts = [];
        let kind = null, list = null;
        for (const row of rows) {
            if (row.kind !== kind) {
                kind = row.kind;
                list = make('ul', {});
                if (TITLES[kind]) parts.push(make('h3', {}, TITLES[kind]));
                parts.push(list);
            }
            list.append(this.#row(row, chosen));
        }
        this.#root.replaceChildren(...parts);
        if (focused !== undefined) this.#root.querySelector(`button[data-path="${CSS.escape(focused)}"]`)?.focus();
    }

    #row(row, chosen) {
        const button = make('button', {
            type: 'button', class: 'node', 'data-path': row.path, 'aria-current': row.path === chosen ? 'true' : null,
            onclick: () => this.#actions.choose(row.path),
        }, row.verdict ? markOf(row.verdict) : make('span', { class: 'mark none', 'aria-hidden': 'true' }, '·'),
        make('span', { class: 'title' }, row.name));
        if (row.implied) button.append(make('span', { class: 'tag', title: 'Asked for by MDMT of the vessel' }, 'vessel'));
        else if (typeof row.ratio === 'number') button.append(make('span', { class: 'ratio' }, row.ratio.toFixed(2)));
        const removable = row.removable && row.path === chosen;
        return make('li', {}, button, removable ? make('button', {
            type: 'button', class: 'remove', 'aria-label': `Remove ${row.name}`, title: 'Remove this component',
            onclick: () => this.#actions.remove(row),
        }, '×') : null);
    }

    // The arrows go through the components.
    #pressed(event) {
        const step = { ArrowDown: 1, ArrowUp: -1 }[event.key];
        if (!step) return;
        const nodes = [...this.#root.querySelectorAll('.node')];
        const next = nodes[nodes.indexOf(document.activeElement) + step];
        if (!next) return;
        event.preventDefault();
        next.focus();
    }
}

// The components of the vessel, each with its verdict.

import { make, markOf, setText } from './dom.js';

const TITLES = { shell: 'Shells and heads', flange: 'Flanges', external: 'External pressure', mdmt: 'Metal temperatures' };
const SINGULAR = { shell: 'Shell or head', flange: 'Flange', external: 'External pressure', mdmt: 'Metal temperature' };

export class Tree {
    #root;
    #adding;
    #actions;
    #shape = '';
    #nodes = new Map(); // path: what is judged

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

    // rows: {path, kind, name, verdict, ratio, implied, removable}; `stale`: the verdicts are of the values before
    show(rows, chosen, stale) {
        this.#root.classList.toggle('stale', stale);
        const shape = JSON.stringify([chosen, rows.map(({ path, name, implied }) => [path, name, implied])]);
        if (shape !== this.#shape) this.#build(rows, chosen);
        this.#shape = shape;
        for (const row of rows) this.#judge(this.#nodes.get(row.path), row);
    }

    #build(rows, chosen) {
        const focused = this.#root.contains(document.activeElement) ? document.activeElement.dataset.path : undefined;
        const parts = [];
        let kind = null, list = null;
        this.#nodes.clear();
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
        this.#root.querySelector('[aria-current]')?.scrollIntoView({ block: 'nearest' });
        if (focused !== undefined) this.#root.querySelector(`button[data-path="${CSS.escape(focused)}"]`)?.focus();
    }

    #row(row, chosen) {
        const place = make('span', {}), ratio = make('span', row.implied
            ? { class: 'tag', title: 'Asked for by MDMT of the vessel' } : { class: 'ratio' });
        this.#nodes.set(row.path, { place, ratio, verdict: null });
        const button = make('button', {
            type: 'button', class: 'node', 'data-path': row.path, 'aria-current': row.path === chosen ? 'true' : null,
            onclick: () => this.#actions.choose(row.path),
        }, place, make('span', { class: 'title' }, row.name), ratio);
        const removable = row.removable && row.path === chosen;
        return make('li', {}, button, removable ? make('button', {
            type: 'button', class: 'remove', 'aria-label': `Remove ${row.name}`, title: 'Remove this component',
            onclick: () => this.#actions.remove(row),
        }, '×') : null);
    }

    // Verdict and ratio, where they differ from those that are shown.
    #judge(node, row) {
        const verdict = row.verdict ?? '';
        if (node.verdict !== verdict) {
            node.verdict = verdict;
            node.place.replaceChildren(verdict ? markOf(verdict) : make('span', { class: 'mark none', 'aria-hidden': 'true' }, '·'));
        }
        setText(node.ratio, row.implied ? 'vessel' : typeof row.ratio === 'number' ? row.ratio.toFixed(2) : '');
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

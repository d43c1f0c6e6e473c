// Drawings, whose dimensions belong to fields.

import { copiedDrawing } from './copy.js';
import { make } from './dom.js';

const SVG = 'http://www.w3.org/2000/svg';
const FURTHER = { Lt: 'tangent_length' }; // symbols of a drawing alone

// The keys that the label of a dimension names: "B, Fid = Ø5.761".
export function keysOfLabel(label, kind, isRead) {
    const said = /^([A-Za-z][\w']*(?:, [A-Za-z][\w']*)*) = /.exec(label);
    if (!said) return [];
    const names = said[1].split(', ').map((name) => {
        const named = kind.keys.filter((key) => [key.name, key.symbol].includes(name) || key.name === FURTHER[name]);
        return (named.find((key) => isRead(key.name)) ?? named[0])?.name;
    });
    return names.filter(Boolean);
}

// By what the label says of itself: to ask the browser would lay out the page once more.
function boxAround(label) {
    const ROOM = 0.9; // mm
    const [x, y, length] = ['x', 'y', 'textLength'].map((name) => Number(label.getAttribute(name)));
    const size = Number(label.closest('[font-size]')?.getAttribute('font-size') ?? 3.4);
    const width = length || 0.6 * size * label.textContent.length;
    const before = { middle: width / 2, end: width }[label.getAttribute('text-anchor')] ?? 0;
    return { x: x - before - ROOM, y: y - 0.8 * size - ROOM / 2, width: width + 2 * ROOM, height: size + ROOM };
}

export class Drawing {
    #root;
    #chosen;
    #hovered;
    #none;
    #text;
    #dimensions = [];

    // chosen(names) and hovered(names): what is done with a dimension, and the fields that it shows
    constructor(root, none, chosen = () => {}, hovered = () => {}) {
        this.#root = root;
        this.#none = none;
        this.#chosen = chosen;
        this.#hovered = hovered;
    }

    // drawing: {svg} or null; its frame lists the dimensions without room. Says whether another one is shown now.
    show(drawing, kind, isRead) {
        const text = drawing?.svg ?? null;
        if (text === this.#text) return false;
        this.#text = text;
        this.#dimensions = [];
        const copied = text === null ? null : copiedDrawing(text);
        if (!copied) {
            this.#root.replaceChildren(make('p', { class: 'empty' }, text === null ? this.#none : 'The drawing can’t be read.'));
            return true;
        }
        this.#root.replaceChildren(copied);
        if (kind) this.#mark(copied, kind, isRead);
        return true;
    }

    #mark(drawing, kind, isRead) {
        const found = [...drawing.querySelectorAll('text')]
            .map((label) => ({ label, keys: label.dataset.field?.split(' ') ?? keysOfLabel(label.textContent, kind, isRead) }))
            .filter(({ keys }) => keys.length > 0);
        if (found.length === 0) return;
        // An image has no parts for those who listen; a group has.
        drawing.setAttribute('role', 'group');
        for (const { label, keys } of found) this.#makeDimension(label, keys);
    }

    #makeDimension(label, keys) {
        const around = document.createElementNS(SVG, 'rect');
        const place = { ...boxAround(label), rx: 1, class: 'around', transform: label.getAttribute('transform') ?? '' };
        for (const [name, value] of Object.entries(place)) around.setAttribute(name, value);
        const group = document.createElementNS(SVG, 'g');
        const as = { class: 'dimension', tabindex: '0', role: 'button', 'aria-label': `${label.textContent}: go to its field` };
        for (const [name, value] of Object.entries(as)) group.setAttribute(name, value);
        label.replaceWith(group);
        group.append(around, label);
        group.addEventListener('click', () => this.#chosen(keys));
        group.addEventListener('keydown', (event) => {
            if (event.key !== 'Enter' && event.key !== ' ') return;
            event.preventDefault();
            this.#chosen(keys);
        });
        for (const name of ['mouseenter', 'focus']) group.addEventListener(name, () => this.#hovered(keys));
        for (const name of ['mouseleave', 'blur']) group.addEventListener(name, () => this.#hovered([]));
        this.#dimensions.push({ keys, group });
    }

    // The dimension of a field, or none.
    highlight(name) {
        for (const { keys, group } of this.#dimensions) group.classList.toggle('marked', keys.includes(name));
    }
}

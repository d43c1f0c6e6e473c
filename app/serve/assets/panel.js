// The results at the right. What one looks at while typing is shown at once: verdicts, faults, drawing, checks. The
// rest follows when the browser has time, and is grey until then.

import { byId, make, setText } from './dom.js';
import { Drawing } from './drawing.js';
import { openPoints, showCalculation, showChecks, showNotes, showSummary, showValues, showVerdict } from './results.js';
import { placeOf } from './views.js';

const whenIdle = globalThis.requestIdleCallback ?? ((run) => setTimeout(run, 30));
const SOON = 250; // ms, at the latest
const BLINK = 100; // ms; an answer within it comes before all is grey: the verdict is at once

const ofFaulty = ({ verdict }) => verdict === 'faulty' || verdict === 'stopped';
const faultWords = (number) => `${number === 1 ? 'One value is' : `${number} values are`} missing or wrong; nothing was calculated`;

export class Panel {
    #root = byId('results');
    #actions;
    #section;
    #chart = new Drawing(byId('chart'), 'There is no chart.');
    #outline = new Drawing(byId('outline'), 'A drawing of the whole vessel needs two components with an elevation.');
    #shown = null;     // what was calculated last
    #name = '';        // of the component in it
    #late = new Set(); // parts that are not shown yet
    #asked = false;
    #greying = 0;

    // actions: choose(path, key), dimension(names), hovered(names)
    constructor(actions) {
        this.#actions = actions;
        this.#section = new Drawing(byId('drawing'), 'There is no drawing of this component.', actions.dimension, actions.hovered);
        for (const part of this.#root.querySelectorAll('.part'))
            part.addEventListener('toggle', () => this.#catchUp());
    }

    highlight(name) {
        this.#section.highlight(name);
    }

    // Before the first file.
    welcome() {
        showVerdict(byId('verdict'), { says: 'Open a file, or begin a new one.' });
        byId('component-verdict').hidden = true;
        for (const part of this.#root.querySelectorAll('.part')) part.hidden = true;
    }

    // An answer is awaited; what is shown is of the values before.
    wait(awaited, faulty) {
        this.#root.setAttribute('aria-busy', String(awaited));
        this.#root.classList.toggle('stale', awaited || faulty);
        byId('verdict').classList.toggle('stale', awaited);
        clearTimeout(this.#greying);
        if (awaited && !faulty) this.#greying = setTimeout(() => this.#root.classList.add('grey'), BLINK);
        else this.#root.classList.toggle('grey', faulty);
    }

    // Answers with the verdict in words.
    show(result, { state, vocabulary, chosen, sequence, focused }) {
        const faulty = ofFaulty(result);
        this.wait(false, faulty);
        const says = faulty && result.faults.length > 0 ? faultWords(result.faults.length) : result.says;
        showVerdict(byId('verdict'), { verdict: result.verdict, says, open: openOfVessel(result) });
        if (!faulty) this.#showComponent(result, vocabulary, chosen, focused);
        this.#showFaults(result, state, vocabulary);
        if (sequence !== undefined) this.#root.dataset.sequence = sequence;
        return `${byId('verdict').querySelector('strong').textContent.trim()}. ${says}`;
    }

    #showComponent(result, vocabulary, chosen, focused) {
        const { component } = result;
        this.#shown = result;
        this.#name = component?.name ?? '';
        setText(byId('results-title'), this.#name || 'Results');
        byId('component-verdict').hidden = !component;
        for (const part of ['drawing', 'checks', 'values', 'calculation']) byId(`${part}-part`).hidden = !component;
        byId('chart-part').hidden = !component?.chart;
        byId('outline-part').hidden = false;
        this.#showOutlineFirst(chosen === 'vessel');
        if (component) {
            showVerdict(byId('component-verdict'), { ...component, open: openPoints(component.checks) });
            const kind = vocabulary.kind(component.path.split('[')[0]);
            this.#section.show(component.drawing, kind, (name) => component.inputs[name]?.read ?? true);
            this.#section.highlight(focused);
            showChecks(byId('checks'), component.checks);
        }
        showNotes(byId('notes'), component?.notes ?? [], component?.messages ?? []);
        for (const part of ['chart', 'values', 'calculation', 'outline']) {
            this.#late.add(part);
            byId(`${part}-part`).classList.add('late');
        }
        if (this.#asked) return;
        this.#asked = true;
        setTimeout(() => this.#root.querySelectorAll('.part.late').forEach((part) => part.classList.add('grey')), BLINK);
        whenIdle(() => {
            this.#asked = false;
            this.#catchUp();
        }, { timeout: SOON });
    }

    // The parts that are open and not shown yet.
    #catchUp() {
        const { component } = this.#shown ?? {};
        for (const part of this.#late) {
            const box = byId(`${part}-part`);
            if (!box.open) continue;
            this.#late.delete(part);
            if (part === 'outline') this.#showWhole();
            else if (part === 'chart') this.#chart.show(component?.chart ?? null);
            else if (part === 'values') showValues(byId('values'), component?.results ?? []);
            else showCalculation(byId('calculation'), component?.calculation ?? '');
            box.classList.remove('late', 'grey');
        }
        if (this.#root.dataset.sequence) this.#root.dataset.whole = this.#root.dataset.sequence;
    }

    #showWhole() {
        const result = this.#shown;
        this.#outline.show(result.outline);
        const names = new Map(result.components.map(({ path, name }) => [path, name]));
        showSummary(byId('summary'), result, (path) => names.get(path) ?? path, (path) => this.#actions.choose(path));
    }

    // The whole vessel is at the end, and comes first where it is what was chosen.
    #showOutlineFirst(first) {
        const part = byId('outline-part');
        if ((this.#root.firstElementChild === part) === first) return;
        if (first) part.open = true;
        if (first) this.#root.prepend(part);
        else this.#root.append(part);
    }

    // What is missing in a component is one line; what is wrong has a line of its own.
    #showFaults(result, state, vocabulary) {
        const link = (place, words) => make('button', {
            type: 'button', class: 'link', onclick: () => this.#actions.choose(place.chosen, place.key),
        }, words);
        const missing = new Map(), rows = (result.problems ?? []).map((words) => make('li', {}, words));
        for (const fault of result.faults) {
            const place = placeOf(fault, vocabulary);
            if (fault.reason.startsWith('missing') && fault.key) {
                missing.set(place.chosen, [...(missing.get(place.chosen) ?? []), place]);
                continue;
            }
            const line = fault.line > 0 ? ` (line ${fault.line})` : '';
            rows.push(make('li', {}, link(place, (fault.path || 'the file') + line), `: ${fault.reason}`));
        }
        for (const [of, places] of missing) {
            const name = state.components.find(({ path }) => path === of)?.description || of;
            const links = places.flatMap((place, i) => [i > 0 ? ', ' : '', link(place, place.key)]);
            rows.push(make('li', {}, `${name} still needs `, ...links));
        }
        const title = make('h3', {}, 'What is missing or wrong');
        byId('faults').replaceChildren(...(rows.length > 0 ? [title, make('ul', {}, ...rows)] : []));
        if (rows.length > 0) setText(byId('results-title'), this.#name === '' ? 'Results' : `${this.#name}, before the change`);
    }
}

// Beside the verdict of the vessel: components without one, and what is open where there is one component alone.
function openOfVessel(result) {
    const number = result.components.filter(({ verdict }) => verdict === 'not made').length;
    const parts = number > 0 ? [{ state: 'not made', words: `not made: ${number} component${number === 1 ? '' : 's'}` }] : [];
    return result.components.length === 1 ? [...parts, ...openPoints(result.component?.checks)] : parts;
}

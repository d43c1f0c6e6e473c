// Verdict, checks, values, calculation, summary: what the library says, in its words.

import { copiedText } from './copy.js';
import { make, markOf, setText, states } from './dom.js';

export const count = (number, word) => `${number} ${word}${number === 1 ? '' : 's'}`;

const VERDICTS = { pass: 'PASS', fail: 'FAIL', 'not made': 'NOT MADE', faulty: 'INPUT AT FAULT', stopped: 'STOPPED' };

// PASS is what the library calls "pass", and nothing else. `open`: further words, such as checks that are not made.
export function showVerdict(root, { verdict, says, open = [], stale = false }) {
    const known = Object.hasOwn(VERDICTS, verdict ?? '') ? verdict : 'unknown';
    root.className = `verdict ${known.replace(' ', '-')}`;
    root.classList.toggle('stale', stale);
    root.replaceChildren(
        make('strong', {}, make('span', { 'aria-hidden': 'true' }, `${(states[known] ?? states.unknown).mark} `),
            VERDICTS[known] ?? 'NO RESULT'),
        make('span', { class: 'says' }, says ?? ''),
        ...open.map(({ state, words }) => make('span', { class: `open ${state.replace(' ', '-')}` }, words)));
}

// Checks that were not made or that were waived belong beside each verdict.
export function openPoints(checks) {
    return ['not made', 'waived']
        .map((state) => ({ state, number: (checks ?? []).filter((check) => check.state === state).length }))
        .filter(({ number }) => number > 0)
        .map(({ state, number }) => ({ state, words: `${count(number, 'check')} ${state}` }));
}

const WHOLE_BAR = 1.5; // ratio at the end of a bar

// By the object model: the content security policy takes no style of an attribute.
function setBar(box, ratio) {
    box.firstChild.style.width = `${Math.max(0, Math.min(ratio / WHOLE_BAR, 1)) * 100}%`;
    box.classList.toggle('beyond', ratio > WHOLE_BAR);
}

function bar(ratio) {
    const limit = make('span', { class: 'limit' });
    limit.style.left = `${100 / WHOLE_BAR}%`;
    const box = make('span', { class: 'bar', 'aria-hidden': 'true' }, make('span', { class: 'fill' }), limit);
    setBar(box, ratio);
    return box;
}

const figuresOf = ({ demand, relation, limit, unit }) => `${demand} ${relation === '>=' ? '≥' : '≤'} ${limit} ${unit}`.trim();

function checkRow(check) {
    const title = make('span', { class: 'name' }, check.label.charAt(0).toUpperCase() + check.label.slice(1));
    if (check.case) title.append(make('span', { class: 'case' }, `, ${check.case}`));
    const row = make('li', { class: `check ${check.state.replace(' ', '-')} ${check.tone}`, 'data-check': check.id },
        make('div', { class: 'check-head' }, title, make('span', { class: 'paragraph' }, check.paragraph),
            markOf(check.state, true)));
    if (check.demand || check.ratio !== null) {
        const line = make('div', { class: 'check-line' });
        if (check.ratio !== null) line.append(bar(check.ratio), make('span', { class: 'ratio' }, check.shown_ratio));
        if (check.demand) line.append(make('span', { class: 'figures' }, figuresOf(check)));
        row.append(line);
    }
    if (check.remark) row.append(make('p', { class: 'why' }, check.remark));
    return row;
}

// What a row is made of, but for its figures; and those.
const shapeOf = ({ id, label, case: load, paragraph, state, tone, force, ratio, demand, remark }) =>
    [id, label, load, paragraph, state, tone, force, ratio === null, Boolean(demand), Boolean(remark)];

function setFigures(row, check) {
    if (check.ratio !== null) {
        setBar(row.querySelector('.bar'), check.ratio);
        setText(row.querySelector('.ratio'), check.shown_ratio);
    }
    if (check.demand) setText(row.querySelector('.figures'), figuresOf(check));
    if (check.remark) setText(row.querySelector('.why'), check.remark);
}

const checkList = (checks) => make('ol', { class: 'checks' }, ...checks.map(checkRow));
const folds = new Set(); // titles that the user opened

function fold(title, checks) {
    const failed = checks.some(({ state }) => state === 'fail');
    const box = make('details', { class: 'fold', open: failed || folds.has(title) },
        make('summary', {}, `${title} (${checks.length})`), checkList(checks));
    box.firstChild.addEventListener('click', () => (box.open ? folds.delete(title) : folds.add(title)));
    return box;
}

// In the order of the library, worst first. What was not made comes first of all, what has no figure or does not
// decide comes last.
let shape = '';
export function showChecks(root, checks) {
    const asked = checks.filter(({ state }) => state !== 'not asked');
    const open = asked.filter(({ state }) => state === 'not made' || state === 'waived');
    const judged = asked.filter((check) => !open.includes(check));
    const first = judged.filter((check) => check.force === 'decides' && (check.ratio !== null || check.state === 'fail'));
    const plain = judged.filter((check) => check.force === 'decides' && !first.includes(check));
    const others = judged.filter((check) => check.force !== 'decides');
    // The same rows with other figures, as mostly while one types.
    const next = JSON.stringify([checks.length, asked.map(shapeOf)]);
    if (next === shape) {
        const rows = root.querySelectorAll('.check');
        [...open, ...first, ...plain, ...others].forEach((check, i) => setFigures(rows[i], check));
        return;
    }
    shape = next;
    const parts = [];
    if (open.length > 0) parts.push(make('h4', {}, 'Not made, waived'), checkList(open));
    if (first.length > 0) parts.push(checkList(first));
    if (plain.length > 0) parts.push(fold('Met, without a figure', plain));
    if (others.length > 0) parts.push(fold('Warnings and advice', others));
    if (asked.length === 0) parts.push(make('p', { class: 'empty' }, 'No check was required of this component.'));
    if (asked.length < checks.length)
        parts.push(make('p', { class: 'remark' }, `${count(checks.length - asked.length, 'check')} not asked of this component`));
    root.replaceChildren(...parts);
}

export function showCalculation(root, html) {
    const copied = copiedText(html);
    root.replaceChildren(copied.childElementCount > 0 ? copied : make('p', { class: 'empty' }, 'There is no calculation.'));
}

export function showValues(root, results) {
    const rows = results.filter(({ shown }) => shown !== '').map((value) => make('tr', {},
        make('th', { scope: 'row' }, value.label), make('td', { class: 'symbol' }, value.symbol ?? ''),
        make('td', { class: 'number' }, value.shown), make('td', {}, value.unit ?? '')));
    root.replaceChildren(rows.length > 0 ? make('table', { class: 'values' }, make('tbody', {}, ...rows))
        : make('p', { class: 'empty' }, 'There are no values.'));
}

export function showNotes(root, ...lists) {
    root.replaceChildren(...lists.flat().map((text) => make('p', { class: 'note' }, text)));
}

// The table of the whole vessel, and what nobody has checked.
export function showSummary(root, result, nameOf, choose) {
    const rows = result.summary.map((row) => make('tr', {},
        make('th', { scope: 'row' }, row.label), make('td', { class: 'number' }, row.shown), make('td', {}, row.unit),
        make('td', {}, row.component
            ? make('button', { type: 'button', class: 'link', onclick: () => choose(row.component) }, nameOf(row.component))
            : ''),
        make('td', { class: 'remark' }, row.note)));
    const parts = [];
    if (rows.length > 0) {
        const heads = ['', 'Value', 'Unit', 'Governed by', 'Remark'].map((text) => make('th', { scope: 'col' }, text));
        parts.push(make('div', { class: 'wide', tabindex: '0', role: 'region', 'aria-label': 'Summary of the vessel' },
            make('table', { class: 'values' }, make('thead', {}, make('tr', {}, ...heads)), make('tbody', {}, ...rows))));
    }
    const lists = [['Not checked by this program', result.not_covered], ['Approximate figures', result.approximate]];
    for (const [title, words] of lists) {
        if (words?.length > 0)
            parts.push(make('h4', {}, title), make('ul', {}, ...words.map((text) => make('li', {}, text))));
    }
    root.replaceChildren(...parts);
}

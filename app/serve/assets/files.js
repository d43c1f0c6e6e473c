// Files of the folder: open, new, save, what changed, downloads.

import { download, get, post } from './api.js';
import { ask, buttonRow, choose, pick } from './dialogs.js';
import { make, markOf } from './dom.js';

const TEMPLATES = { empty: 'An empty file', flange: 'A bolted flange', heads: 'A shell with two heads', drum: 'A whole drum with nozzles' };

// State of the file that was chosen, or null.
export async function openFile() {
    const { folder } = await get('/api/files');
    const chosen = await pick(`Open a file of ${folder}`, 'Name of the file', async (words) => {
        const { files } = await get('/api/files');
        const wanted = words.trim().toLowerCase();
        return {
            more: 0,
            rows: files.filter(({ name }) => name.toLowerCase().includes(wanted)).map((file) => ({
                title: file.name, detail: new Date(file.modified).toLocaleString(), value: file.handle,
            })),
        };
    });
    return chosen ? post('/api/open', { handle: chosen.value }) : null;
}

export async function newFile(templates) {
    const chosen = await ask('New file', (close) => {
        const units = make('select', { id: 'new-units' }, make('option', { value: 'US' }, 'US: in., psi, °F'),
            make('option', { value: 'SI' }, 'SI: mm, MPa, °C'));
        return [
            make('p', {}, make('label', { for: 'new-units' }, 'Units '), units),
            make('ul', { class: 'choices' }, ...templates.map((kind) => make('li', {}, make('button', {
                type: 'button', 'data-kind': kind, onclick: () => close({ kind, units: units.value }),
            }, make('span', { class: 'choice-title' }, TEMPLATES[kind] ?? kind))))),
        ];
    });
    return chosen ? post('/api/new', chosen) : null;
}

async function askName(name) {
    return ask('Save as', (close) => {
        const entry = make('input', { id: 'file-name', type: 'text', autocomplete: 'off', spellcheck: 'false', maxlength: '100', autofocus: true });
        entry.value = name ?? 'vessel.toml';
        const words = make('p', { class: 'message', role: 'alert', id: 'file-name-message' });
        entry.setAttribute('aria-describedby', 'file-name-message');
        const save = () => {
            const text = entry.value.trim();
            const whole = text.endsWith('.toml') ? text : `${text}.toml`;
            if (/^[A-Za-z0-9][-A-Za-z0-9 _.]*$/.test(text)) close(whole);
            else words.textContent = 'A name is letters, digits, blanks, - _ and points, and begins with a letter or digit.';
        };
        entry.addEventListener('keydown', (event) => {
            if (event.key !== 'Enter') return;
            event.preventDefault();
            save();
        });
        return [make('p', {}, make('label', { for: 'file-name' }, 'Name of the file, in the folder that was opened')), entry, words,
            buttonRow([make('button', { type: 'button', class: 'main', onclick: save }, 'Save'),
                make('button', { type: 'button', onclick: () => close() }, 'Cancel')])];
    });
}

// The state after saving, or null where the user thinks better of it.
export async function saveFile(state, asNewName) {
    const name = asNewName || state.name === null ? await askName(state.name) : undefined;
    if (name === null) return null;
    const request = name === undefined ? { document: state.document } : { document: state.document, name };
    try {
        return await post('/api/save', request);
    } catch (error) {
        if (error.status !== 409 || !error.body.conflict) throw error;
        return resolve(error, request);
    }
}

async function resolve(error, request) {
    const exists = error.body.conflict === 'exists';
    const said = await choose(exists ? 'A file of this name is there' : 'The file changed on disk', error.message, [
        ['force', exists ? 'Replace that file' : 'Save over it'],
        ...(exists ? [] : [['reload', 'Take the file on disk']]),
        [null, 'Cancel', 'main'],
    ]);
    if (said === 'force') return post('/api/save', { ...request, force: true });
    if (said === 'reload') return post('/api/reload', { document: request.document });
    return null;
}

export async function downloadAs(state) {
    const format = await choose('Download', 'Made from what is on the page now, saved or not.', [
        ['html', 'Document (HTML)', 'main'], ['pdf', 'Document (PDF)'], ['json', 'Results (JSON)'],
        ['csv', 'Checks and results (CSV)'], ['toml', 'Input file (TOML)'],
    ]);
    if (format) await download(format, state.document);
    return format;
}

const before = (text) => text ?? '–';

function differences(title, rows) {
    if (rows.length === 0) return [];
    const cells = (row) => [
        make('td', {}, row.component), make('th', { scope: 'row' }, row.label),
        make('td', { class: 'number' }, before(row.before)), make('td', { class: 'number' }, before(row.after)),
        make('td', {}, row.unit ?? ''),
        make('td', { class: 'number' }, typeof row.percent === 'number' ? `${row.percent.toFixed(2)} %` : ''),
    ];
    return [make('h3', {}, title), make('table', { class: 'values' },
        make('thead', {}, make('tr', {}, ...['Component', '', 'On disk', 'Now', 'Unit', 'Change'].map((text) =>
            make('th', { scope: 'col' }, text)))),
        make('tbody', {}, ...rows.map((row) => make('tr', {}, ...cells(row)))))];
}

// What did I change? Against the file as it is on disk.
export async function showChanges(state) {
    const changes = await get(`/api/compare?document=${encodeURIComponent(state.document)}`);
    const verdicts = changes.verdicts ?? [];
    await ask('What did I change?', (close) => [
        make('p', { class: 'says' }, changes.same ? changes.says || 'Nothing: the file on disk says the same.' : changes.says),
        make('div', { class: 'changes', tabindex: '0' },
            ...(verdicts.length > 0 ? [make('h3', {}, 'Verdicts'), make('ul', {}, ...verdicts.map((row) =>
                make('li', { class: row.turn }, `${row.component}, ${row.label}: `, markOf(row.before, true), ' → ', markOf(row.after, true))))] : []),
            ...differences('Inputs', changes.inputs ?? []),
            ...(changes.unmatched ?? []).map((row) => make('p', {}, `${row.component} is ${row.side === 'before' ? 'on disk' : 'here'} alone.`)),
            ...((changes.lines ?? []).length > 0 ? [make('h3', {}, 'Lines of the file'), make('pre', { class: 'lines' },
                ...changes.lines.map(({ sign, text }) => make('span', {
                    class: { '-': 'line-before', '+': 'line-after' }[sign] ?? '',
                }, `${sign} ${text}\n`)))] : []),
            ...differences('Results', changes.results ?? [])),
        buttonRow([make('button', { type: 'button', class: 'main', onclick: () => close() }, 'Close')]),
    ]);
}
